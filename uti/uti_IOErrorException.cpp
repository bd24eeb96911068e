#include "uti_IOErrorException.h"

#include <cstring>

#include "cls_ClassMetadata.h"
#include "cls_ClassRegistrar.h"
#include "cls_ReadVisitor.h"

namespace {

cls_FieldHandle FunctionField() {
  return cls_FieldHandle(0, "m_Function");
}
cls_FieldHandle CodeField() {
  return cls_FieldHandle(1, "m_Code");
}
cls_FieldHandle SubjectField() {
  return cls_FieldHandle(2, "m_Subject");
}

}  // namespace

uti_IOErrorException::uti_IOErrorException(const cow_String& function, int code,
                                           const cow_String& subject)
    : m_Function(function), m_Code(code), m_Subject(subject) {}

uti_IOErrorException::uti_IOErrorException(const cls_ReadVisitor& visitor)
    : nex_ConcreteException(cls_ReadVisitor(visitor)),
      m_Function(visitor.Read(FunctionField(), cow_String())),
      m_Code(visitor.Read(CodeField(), 0)),
      m_Subject(visitor.Read(SubjectField(), cow_String())),
      m_Uid(visitor.GetUid()) {}

uti_IOErrorException::~uti_IOErrorException() = default;

atr_String uti_IOErrorException::JournalMessage() const {
  const char* text = std::strerror(m_Code);
  if (m_Subject.IsEmpty()) return nex_Translate("%s failed: %s", m_Function, text);
  return nex_Translate("%s failed for %s: %s", m_Function, m_Subject, text);
}

cow_String uti_IOErrorException::PythonType() const {
  return "IOError";
}

void uti_IOErrorException::DBWrite(const cls_WriteVisitor& visitor) const {
  if (!StartLevel<nex_CommandException>(*this, visitor, TypeId(), m_Uid)) return;
  visitor.Write(FunctionField(), m_Function);
  visitor.Write(CodeField(), m_Code);
  visitor.Write(SubjectField(), m_Subject);
}

void uti_IOErrorException::InitializeMetadata(cls_ClassRegistrar& registrar) {
  registrar
      .AddClassMD(new cls_TypeAdapter<uti_IOErrorException>("uti_IOErrorException", TypeId(), 800,
                                                            nex_CommandException::TypeId()))
      .AddAttribute(FunctionField(), cls_AttrString, 1, cls_CollNone)
      .AddAttribute(CodeField(), cls_AttrInt, 1, cls_CollNone)
      .AddAttribute(SubjectField(), cls_AttrString, 1, cls_CollNone);
}
