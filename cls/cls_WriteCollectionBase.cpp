#include "cls_WriteCollectionBase.h"

cls_WriteCollectionBase::~cls_WriteCollectionBase() = default;

bool cls_WriteCollectionBase::NeedsDeletion() const {
  return true;
}

cls_WriteIntTableInt::~cls_WriteIntTableInt() = default;

template class cls_WriteListPrim<bool>;
template class cls_WriteListPrim<int>;
template class cls_WriteListPrim<unsigned>;
template class cls_WriteListPrim<float>;
template class cls_WriteListPrim<double>;
template class cls_WriteListPrim<cow_String>;
template class cls_WriteMapInt2Prim<int>;
template class cls_WriteMapInt2Prim<unsigned>;
template class cls_WriteMapInt2Prim<float>;
template class cls_WriteMapInt2Prim<double>;
template class cls_WriteMapInt2Prim<cow_String>;
template class cls_WriteMapString2Prim<int>;
template class cls_WriteMapString2Prim<unsigned>;
template class cls_WriteMapString2Prim<float>;
template class cls_WriteMapString2Prim<double>;
template class cls_WriteMapString2Prim<cow_String>;
