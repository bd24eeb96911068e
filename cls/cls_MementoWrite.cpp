#include "cls_MementoWrite.h"

cls_MementoWrite::~cls_MementoWrite() = default;

bool cls_MementoWrite::NeedsDeletion() const {
  return true;
}

bool cls_MementoWrite::CopyBranch(cls_AgentProxy*, const cls_FieldHandle&) {
  return false;
}

void cls_MementoWrite::StartSharedPtrOutput() {}

void cls_MementoWrite::EndSharedPtrOutput() {}

cls_AgentListObj* cls_MementoWrite::MakeAgentListObj() {
  return nullptr;
}

cls_AgentMapKey2Obj<int>* cls_MementoWrite::MakeAgentMapKey2Obj(const int&) {
  return nullptr;
}

cls_AgentMapKey2Obj<cow_String>* cls_MementoWrite::MakeAgentMapKey2Obj(const cow_String&) {
  return nullptr;
}
