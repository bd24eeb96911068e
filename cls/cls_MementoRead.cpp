#include "cls_MementoRead.h"

cls_MementoRead::~cls_MementoRead() = default;

bool cls_MementoRead::NeedsDeletion() const {
  return true;
}

cls_AgentListObj* cls_MementoRead::MakeAgentListObj() {
  return nullptr;
}

cls_AgentMapKey2Obj<int>* cls_MementoRead::MakeAgentMapKey2Obj(const int&) {
  return nullptr;
}

cls_AgentMapKey2Obj<cow_String>* cls_MementoRead::MakeAgentMapKey2Obj(const cow_String&) {
  return nullptr;
}
