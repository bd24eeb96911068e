// The ready instantiations of the container templates that the base library exports, so
// that their users call them here and don't each compile their own copy. Code that uses one
// of these types includes this header rather than the template's own.
//
//   #include "VRKBasSharedContainers.h"
//   cow_List<cow_String> names;  // the library's copy of cow_List<cow_String>
#ifndef VRKBASSHAREDCONTAINERS_H
#define VRKBASSHAREDCONTAINERS_H

#include "VRKBasExport.h"
#include "VRKBasUtlNumFormat.h"
#include "cow_2DArray.h"
#include "cow_Btree.h"
#include "cow_ConstMapIterator.h"
#include "cow_List.h"
#include "cow_ListIter.h"
#include "cow_Map.h"
#include "cow_String.h"

extern template class VRKLNU_EXPORT cow_List<int>;
extern template class VRKLNU_EXPORT cow_List<unsigned>;
extern template class VRKLNU_EXPORT cow_List<float>;
extern template class VRKLNU_EXPORT cow_List<double>;
extern template class VRKLNU_EXPORT cow_List<bool>;
extern template class VRKLNU_EXPORT cow_List<cow_String>;

extern template class VRKLNU_EXPORT cow_ListIter<int>;
extern template class VRKLNU_EXPORT cow_ListIter<float>;
extern template class VRKLNU_EXPORT cow_ListIter<cow_String>;

extern template class VRKLNU_EXPORT cow_Map<int, int>;
extern template class VRKLNU_EXPORT cow_Map<cow_String, float>;
extern template class VRKLNU_EXPORT cow_Map<cow_String, cow_String>;
extern template class VRKLNU_EXPORT cow_Map<cow_String, VRKBasUtlNumFormat>;

extern template class VRKLNU_EXPORT cow_ConstMapIterator<int, int>;
extern template class VRKLNU_EXPORT cow_ConstMapIterator<unsigned, atr_String>;
extern template class VRKLNU_EXPORT cow_ConstMapIterator<unsigned, cow_String>;
extern template class VRKLNU_EXPORT cow_ConstMapIterator<cow_String, float>;
extern template class VRKLNU_EXPORT cow_ConstMapIterator<cow_String, cow_String>;
extern template class VRKLNU_EXPORT cow_ConstMapSortedIt<cow_String, cow_String>;

// The holders first, so that they are declared before the arrays use them.
extern template class VRKLNU_EXPORT cow_CountedHld<cow_2DArrayRep<int>>;
extern template class VRKLNU_EXPORT cow_CountedHld<cow_2DArrayRep<float>>;
extern template class VRKLNU_EXPORT cow_CountedHld<cow_2DArrayRep<double>>;
extern template class VRKLNU_EXPORT cow_COW<cow_2DArrayRep<int>>;
extern template class VRKLNU_EXPORT cow_COW<cow_2DArrayRep<float>>;
extern template class VRKLNU_EXPORT cow_COW<cow_2DArrayRep<double>>;
extern template class VRKLNU_EXPORT cow_2DArray<int>;
extern template class VRKLNU_EXPORT cow_2DArray<float>;
extern template class VRKLNU_EXPORT cow_2DArray<double>;

extern template class VRKLNU_EXPORT cow_Btree<cow_String, int>;
extern template class VRKLNU_EXPORT cow_Btree<cow_String, unsigned>;
extern template class VRKLNU_EXPORT cow_BtreeIterator<cow_String, unsigned>;

#endif  // VRKBASSHAREDCONTAINERS_H
