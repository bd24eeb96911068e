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
