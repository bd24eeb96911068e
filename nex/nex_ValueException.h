// The shape shared by the exception classes that hold one value, "m_Value": the text of
// nex_TextException, nex_BadCastException and nex_InvalidObjException, and the condition of
// nex_AssertException. Each such class derives from this template with itself as `Self`, so
// that a raise, a copy and a stored record keep its exact class. The persistent parent of
// these classes is nex_Exception: the template adds no level of its own.
#ifndef NEX_VALUEEXCEPTION_H
#define NEX_VALUEEXCEPTION_H

#include "VRKBasExport.h"
#include "atr_String.h"
#include "cls_AttributeMetadata.h"
#include "cls_ClassRegistrar.h"
#include "cls_ReadVisitor.h"
#include "cow_String.h"
#include "nex_Exception.h"

// The message of a stored value: user text as it stands, plain text through "%s".
inline atr_String nex_ValueText(const atr_String& value) {
  return value;
}
inline atr_String nex_ValueText(const cow_String& value) {
  return nex_Translate("%s", value);
}
inline cls_AttributeType nex_ValueAttribute(const atr_String*) {
  return cls_AttrTrString;
}
inline cls_AttributeType nex_ValueAttribute(const cow_String*) {
  return cls_AttrString;
}

template <class Self, unsigned kTypeId, class Value>
class nex_ValueException : public nex_ConcreteException<Self, kTypeId> {
 public:
  explicit nex_ValueException(const Value& value) : m_Value(value) {}
  // The base level, then "m_Value" (the store must deliver user text), then the identity.
  explicit nex_ValueException(const cls_ReadVisitor& visitor)
      : nex_ConcreteException<Self, kTypeId>(cls_ReadVisitor(visitor)),
        m_Value(visitor.Read(Field(), Value())),
        m_Uid(visitor.GetUid()) {}

  atr_String AsString() const override { return nex_ValueText(m_Value); }
  // The base level, then "m_Value".
  void DBWrite(const cls_WriteVisitor& visitor) const override {
    if (!nex_Exception::StartLevel<nex_Exception>(*this, visitor, kTypeId, m_Uid)) return;
    visitor.Write(Field(), m_Value);
  }

  // Declares the class (concrete, version 800, parent nex_Exception) with its field, under
  // the name that Self gives as kClassName.
  static void InitializeMetadata(cls_ClassRegistrar& registrar) {
    registrar
        .AddClassMD(
            new cls_TypeAdapter<Self>(Self::kClassName, kTypeId, 800, nex_Exception::TypeId()))
        .AddAttribute(Field(), nex_ValueAttribute(static_cast<Value*>(nullptr)), 1, cls_CollNone);
  }

  const Value& GetValue() const { return m_Value; }

 private:
  static cls_FieldHandle Field() { return cls_FieldHandle(0, "m_Value"); }

  Value m_Value;
  cls_Uid m_Uid;
};

#endif  // NEX_VALUEEXCEPTION_H
