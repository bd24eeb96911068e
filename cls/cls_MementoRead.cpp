#include "cls_MementoRead.h"

cls_MementoRead::~cls_MementoRead() = default;

bool cls_MementoRead::NeedsDeletion() const {
  return true;
}

void* cls_MementoRead::Spare1() {
  return nullptr;
}

void* cls_MementoRead::Spare2() {
  return nullptr;
}

void* cls_MementoRead::Spare3() {
  return nullptr;
}

void* cls_MementoRead::Spare4() {
  return nullptr;
}

void* cls_MementoRead::Spare5() {
  return nullptr;
}

void* cls_MementoRead::Spare6() {
  return nullptr;
}

void* cls_MementoRead::Spare7() {
  return nullptr;
}

void* cls_MementoRead::Spare8() {
  return nullptr;
}

void* cls_MementoRead::Spare9() {
  return nullptr;
}

void* cls_MementoRead::Spare10() {
  return nullptr;
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
