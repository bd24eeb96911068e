// The ready instantiations of the container templates that the base library exports, so
// that their users call them here and don't each compile their own copy.
#include "cow_List.h"
#include "cow_ListIter.h"

template class cow_List<int>;
template class cow_List<unsigned>;
template class cow_List<float>;
template class cow_List<double>;
template class cow_List<bool>;
template class cow_List<cow_String>;

template class cow_ListIter<int>;
template class cow_ListIter<float>;
template class cow_ListIter<cow_String>;
