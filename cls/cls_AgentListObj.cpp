#include "cls_AgentListObj.h"

cls_AgentListObj::~cls_AgentListObj() = default;

template class cls_AgentMapKey2Obj<int>;
template class cls_AgentMapKey2Obj<cow_String>;
