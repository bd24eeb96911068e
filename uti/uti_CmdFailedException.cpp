#include "uti_CmdFailedException.h"

#include "cls_ClassMetadata.h"
#include "cls_ClassRegistrar.h"
#include "cls_ReadVisitor.h"

namespace {

cls_FieldHandle CommandField() {
  return cls_FieldHandle(0, "m_Command");
}
cls_FieldHandle StatusField() {
  return cls_FieldHandle(1, "m_Status");
}

}  // namespace

uti_CmdFailedException::uti_CmdFailedException(const cow_String& command, int status)
    : m_Command(command), m_Status(status) {}

uti_CmdFailedException::uti_CmdFailedException(const cls_ReadVisitor& visitor)
    : nex_ConcreteException(cls_ReadVisitor(visitor)),
      m_Command(visitor.Read(CommandField(), cow_String())),
      m_Status(visitor.Read(StatusField(), 0)),
      m_Uid(visitor.GetUid()) {}

uti_CmdFailedException::~uti_CmdFailedException() = default;

atr_String uti_CmdFailedException::AsString() const {
  return nex_Translate("uti_CmdFailed: %s returned %d", m_Command, m_Status);
}

void uti_CmdFailedException::DBWrite(const cls_WriteVisitor& visitor) const {
  if (!StartLevel<nex_Exception>(*this, visitor, TypeId(), m_Uid)) return;
  visitor.Write(CommandField(), m_Command);
  visitor.Write(StatusField(), m_Status);
}

void uti_CmdFailedException::InitializeMetadata(cls_ClassRegistrar& registrar) {
  registrar
      .AddClassMD(new cls_TypeAdapter<uti_CmdFailedException>("uti_CmdFailedException", TypeId(),
                                                              800, nex_Exception::TypeId()))
      .AddAttribute(CommandField(), cls_AttrString, 1, cls_CollNone)
      .AddAttribute(StatusField(), cls_AttrInt, 1, cls_CollNone);
}
