#include "cls_MementoRead.h"

cls_MementoRead::~cls_MementoRead() = default;

bool cls_MementoRead::NeedsDeletion() const {
  return true;
}
