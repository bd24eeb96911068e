#include "cls_ReadCollectionBase.h"

cls_ReadCollectionBase::~cls_ReadCollectionBase() = default;

bool cls_ReadCollectionBase::NeedsDeletion() const {
  return true;
}

void* cls_ReadMapInt2Obj::Spare1() {
  return nullptr;
}

void* cls_ReadMapInt2Obj::Spare2() {
  return nullptr;
}

void* cls_ReadMapString2Obj::Spare() {
  return nullptr;
}

cls_ReadIntTableInt::~cls_ReadIntTableInt() = default;

template class cls_ReadListPrimBase<bool>;
template class cls_ReadListPrimBase<int>;
template class cls_ReadListPrimBase<unsigned>;
template class cls_ReadListPrimBase<float>;
template class cls_ReadListPrimBase<double>;
template class cls_ReadListPrimBase<cow_String>;
template class cls_ReadListPrim<bool>;
template class cls_ReadListPrim<int>;
template class cls_ReadListPrim<unsigned>;
template class cls_ReadListPrim<float>;
template class cls_ReadListPrim<double>;
template class cls_ReadMapInt2Prim<int>;
template class cls_ReadMapInt2Prim<unsigned>;
template class cls_ReadMapInt2Prim<float>;
template class cls_ReadMapInt2Prim<double>;
template class cls_ReadMapInt2Prim<cow_String>;
template class cls_ReadMapString2Prim<int>;
template class cls_ReadMapString2Prim<unsigned>;
template class cls_ReadMapString2Prim<float>;
template class cls_ReadMapString2Prim<double>;
template class cls_ReadMapString2Prim<cow_String>;
