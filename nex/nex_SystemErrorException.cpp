#include "nex_SystemErrorException.h"

#include "cls_ReadVisitor.h"
#include "internal/nex_Metadata.h"

namespace {

cls_FieldHandle NativeField() {
  return cls_FieldHandle(0, "m_Value.m_NativeErrorCode");
}
cls_FieldHandle RuntimeField() {
  return cls_FieldHandle(1, "m_Value.m_CRTErrorCode");
}

}  // namespace

nex_SystemErrorException::nex_SystemErrorException(const omi_SystemErrorCode& error)
    : m_Value(error) {}

nex_SystemErrorException::nex_SystemErrorException(const cls_ReadVisitor& visitor)
    : nex_ConcreteException(cls_ReadVisitor(visitor)), m_Value(0), m_Uid(visitor.GetUid()) {
  m_Value.m_NativeErrorCode = visitor.Read(NativeField(), static_cast<unsigned>(-1));
  m_Value.m_CRTErrorCode = visitor.Read(RuntimeField(), -1);
}

nex_SystemErrorException::~nex_SystemErrorException() = default;

atr_String nex_SystemErrorException::AsString() const {
  return nex_Translate("%s", m_Value.GetText());
}

void nex_SystemErrorException::DBWrite(const cls_WriteVisitor& visitor) const {
  if (!StartLevel<nex_Exception>(*this, visitor, TypeId(), m_Uid)) return;
  visitor.Write(NativeField(), m_Value.m_NativeErrorCode);
  visitor.Write(RuntimeField(), static_cast<unsigned>(m_Value.m_CRTErrorCode));
}

void nex_SystemErrorException::InitializeMetadata(cls_ClassRegistrar& registrar) {
  // The runtime's code is declared as int although it is written unsigned; declarations and
  // writers are matched by name only.
  nex_DeclareConcrete<nex_SystemErrorException>(registrar, "nex_SystemErrorException",
                                                nex_Exception::TypeId())
      .AddAttribute(NativeField(), cls_AttrUInt, 1, cls_CollNone)
      .AddAttribute(RuntimeField(), cls_AttrInt, 1, cls_CollNone);
}
