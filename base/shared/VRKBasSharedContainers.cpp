#include "VRKBasSharedContainers.h"

template class cow_List<int>;
template class cow_List<unsigned>;
template class cow_List<float>;
template class cow_List<double>;
template class cow_List<bool>;
template class cow_List<cow_String>;

template class cow_ListIter<int>;
template class cow_ListIter<float>;
template class cow_ListIter<cow_String>;

template class cow_Map<int, int>;
template class cow_Map<cow_String, float>;
template class cow_Map<cow_String, cow_String>;
template class cow_Map<cow_String, VRKBasUtlNumFormat>;

template class cow_ConstMapIterator<int, int>;
template class cow_ConstMapIterator<unsigned, atr_String>;
template class cow_ConstMapIterator<unsigned, cow_String>;
template class cow_ConstMapIterator<cow_String, float>;
template class cow_ConstMapIterator<cow_String, cow_String>;
template class cow_ConstMapSortedIt<cow_String, cow_String>;

template class cow_CountedHld<cow_2DArrayRep<int>>;
template class cow_CountedHld<cow_2DArrayRep<float>>;
template class cow_CountedHld<cow_2DArrayRep<double>>;
template class cow_COW<cow_2DArrayRep<int>>;
template class cow_COW<cow_2DArrayRep<float>>;
template class cow_COW<cow_2DArrayRep<double>>;
template class cow_2DArray<int>;
template class cow_2DArray<float>;
template class cow_2DArray<double>;

template class cow_Btree<cow_String, int>;
template class cow_Btree<cow_String, unsigned>;
template class cow_BtreeIterator<cow_String, unsigned>;
