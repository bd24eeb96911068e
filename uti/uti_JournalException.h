// The shape of the command errors of package uti that carry one message for the job's journal,
// uti_OdmException and uti_XypException: the message is JournalMessage, and the class names
// its kind (PythonType) and its persistent name:
//
//   NEX_THROW(uti_OdmException(nex_Translate("no output database %s", name)));
//   // UserReport: "OdmError: no output database job.odb"
//
// Each such class derives from this template with itself as `Self`, so that a raise, a copy
// and a stored record keep its exact class.
#ifndef UTI_JOURNALEXCEPTION_H
#define UTI_JOURNALEXCEPTION_H

#include "atr_String.h"
#include "cls_AttributeMetadata.h"
#include "cls_ClassMetadata.h"
#include "cls_ClassRegistrar.h"
#include "cls_ReadVisitor.h"
#include "nex_CommandException.h"

template <class Self, unsigned kTypeId>
class uti_JournalException : public nex_ConcreteException<Self, kTypeId, nex_CommandException> {
 public:
  explicit uti_JournalException(const atr_String& message) : m_Message(message) {}
  // The base level, then "m_Message", then the identity.
  explicit uti_JournalException(const cls_ReadVisitor& visitor)
      : nex_ConcreteException<Self, kTypeId, nex_CommandException>(cls_ReadVisitor(visitor)),
        m_Message(visitor.Read(Field(), atr_String())),
        m_Uid(visitor.GetUid()) {}

  atr_String JournalMessage() const override { return m_Message; }
  cow_String PythonType() const override { return Self::kPythonType; }
  void DBWrite(const cls_WriteVisitor& visitor) const override {
    if (!nex_Exception::StartLevel<nex_CommandException>(*this, visitor, kTypeId, m_Uid)) return;
    visitor.Write(Field(), m_Message);
  }

  // Declares the class (concrete, version 800, parent nex_CommandException) with its field,
  // under the name that Self gives as kClassName.
  static void InitializeMetadata(cls_ClassRegistrar& registrar) {
    registrar
        .AddClassMD(new cls_TypeAdapter<Self>(Self::kClassName, kTypeId, 800,
                                              nex_CommandException::TypeId()))
        .AddAttribute(Field(), cls_AttrTrString, 1, cls_CollNone);
  }

 private:
  static cls_FieldHandle Field() { return cls_FieldHandle(0, "m_Message"); }

  atr_String m_Message;
  cls_Uid m_Uid;
};

#endif  // UTI_JOURNALEXCEPTION_H
