#include "nex_ExitException.h"

#include "cls_ReadVisitor.h"
#include "internal/nex_Metadata.h"

namespace {

cls_FieldHandle MessageField() {
  return cls_FieldHandle(0, "m_Value.m_Msg");
}
cls_FieldHandle CodeField() {
  return cls_FieldHandle(1, "m_Value.m_Err");
}

}  // namespace

nex_ExitException::nex_ExitException(const atr_String& message, int code)
    : m_Value{message, code} {}

nex_ExitException::nex_ExitException(const cls_ReadVisitor& visitor)
    : nex_ConcreteException(cls_ReadVisitor(visitor)),
      m_Value{atr_String(), 0},
      m_Uid(visitor.GetUid()) {
  m_Value.m_Msg = visitor.Read(MessageField(), atr_String());
  m_Value.m_Err = visitor.Read(CodeField(), 0);
}

nex_ExitException::~nex_ExitException() = default;

atr_String nex_ExitException::AsString() const {
  if (!m_Value.m_Msg.IsEmpty()) return m_Value.m_Msg;
  atr_String text = nex_Translate("Exit code: ");
  text += cow_String(m_Value.m_Err).c_str();
  return text;
}

void nex_ExitException::DBWrite(const cls_WriteVisitor& visitor) const {
  if (!StartLevel<nex_Exception>(*this, visitor, TypeId(), m_Uid)) return;
  visitor.Write(MessageField(), m_Value.m_Msg);
  visitor.Write(CodeField(), m_Value.m_Err);
}

void nex_ExitException::InitializeMetadata(cls_ClassRegistrar& registrar) {
  nex_DeclareConcrete<nex_ExitException>(registrar, "nex_ExitException", nex_Exception::TypeId())
      .AddAttribute(MessageField(), cls_AttrTrString, 1, cls_CollNone)
      .AddAttribute(CodeField(), cls_AttrInt, 1, cls_CollNone);
}
