#include "cls_ReadVisitor.h"

#include "atr_translate.h"

cls_ReadVisitor::cls_ReadVisitor(const cls_ReadVisitor& parent, const cls_FieldHandle& field)
    : m_Memento(parent.MakeReadObj(field)) {}

cls_ReadVisitor::cls_ReadVisitor(const cls_ReadVisitor& derived)
    : m_Memento(derived.MakeBaseReadObj()) {}

cls_ReadVisitor::~cls_ReadVisitor() {
  if (m_Memento != nullptr && m_Memento->NeedsDeletion()) delete m_Memento;
}

cow_String cls_ReadVisitor::DbId() const {
  return m_Memento ? m_Memento->DbId() : cow_String();
}

cls_Uid cls_ReadVisitor::GetUid() const {
  return m_Memento ? m_Memento->GetUid() : cls_Uid();
}

int cls_ReadVisitor::FieldIsPresent(const cls_FieldHandle& field) const {
  return m_Memento ? m_Memento->FieldIsPresent(field) : 0;
}

int cls_ReadVisitor::DataIsPresent(const cls_FieldHandle& field) const {
  return m_Memento ? m_Memento->DataIsPresent(field) : 0;
}

cls_MementoRead* cls_ReadVisitor::MakeReadObj(const cls_FieldHandle& field) const {
  return m_Memento ? m_Memento->MakeReadObj(field) : nullptr;
}

cls_MementoRead* cls_ReadVisitor::MakeBaseReadObj() const {
  return m_Memento ? m_Memento->MakeBaseReadObj() : nullptr;
}

atr_String cls_ReadVisitor::Read(const cls_FieldHandle& field, const atr_String&) const {
  atr_String result;
  const cow_String text = Read(field, cow_String(result));
  atr_translate format("%s");
  atr_SubstituteFormat(format, 1, text);
  return format.Result();
}
