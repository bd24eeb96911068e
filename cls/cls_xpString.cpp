#include "cls_xpString.h"

#include "cls_ClassRegistrar.h"
#include "cls_ReadVisitor.h"
#include "cls_WriteVisitor.h"

namespace {
constexpr int kVersion = 800;
constexpr unsigned kNoBaseClass = 1;

template <class Traits>
cls_FieldHandle Field() {
  return cls_FieldHandle(-1, Traits::kField);
}
}  // namespace

template <class Traits>
cls_xpStringValue<Traits>::cls_xpStringValue(const cls_ReadVisitor& visitor)
    : m_Uid(visitor.GetUid()) {
  Text::operator=(visitor.Read(Field<Traits>(), static_cast<const Text&>(*this)));
}

template <class Traits>
void cls_xpStringValue<Traits>::DBWrite(const cls_WriteVisitor& visitor) const {
  visitor.Write(Field<Traits>(), static_cast<const Text&>(*this));
}

template <class Traits>
void cls_xpStringValue<Traits>::InitializeMetadata(cls_ClassRegistrar& registrar) {
  registrar.AddClassMD(new cls_TypeAdapter<cls_xpStringValue>(Traits::kClassName, Traits::kClassId,
                                                              kVersion, kNoBaseClass));
}

template class cls_xpStringValue<cls_xpStringTraits>;
template class cls_xpStringValue<cls_xpTrStringTraits>;
