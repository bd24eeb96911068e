#include "cls_2dArrayPrim.h"

template <class T>
void cls_2dArrayPrim<T>::DBWrite(const cls_WriteVisitor& visitor) const {
  this->WriteAs(visitor, cls_Coll2DArray);
}

template <class T>
const cls_ArrayPrimMessages& cls_2dArrayPrim<T>::Messages() const {
  static constexpr cls_ArrayPrimMessages kMessages = {
      "cls_2dArrayPrim::AppendBlock: Collection must be associated with a database for this "
      "method.",
      "In cls_2dArrayPrim::GetBuffer() Missing agent.",
      "In cls_2dArrayPrim::ConstGet() Index out of range.",
      "In cls_2dArrayPrim::Get() Index out of range.",
  };
  return kMessages;
}

template class cls_2dArrayPrim<float>;
template class cls_2dArrayPrim<double>;
