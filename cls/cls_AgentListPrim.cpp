#include "cls_AgentListPrim.h"

template class cls_AgentListPrim<bool>;
template class cls_AgentListPrim<int>;
template class cls_AgentListPrim<unsigned>;
template class cls_AgentListPrim<float>;
template class cls_AgentListPrim<double>;
template class cls_AgentListPrim<cow_String>;
