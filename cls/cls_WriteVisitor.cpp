#include "cls_WriteVisitor.h"

#include "cls_AgentRequest.h"

namespace {
constexpr unsigned kNoBaseClass = 1;
}

cls_WriteVisitor::cls_WriteVisitor(cls_MementoWrite* memento) : m_Memento(memento) {}

cls_WriteVisitor::cls_WriteVisitor(const cls_WriteVisitor& parent, const cls_FieldHandle& field,
                                   const cow_COW<int, cow_Direct<int>>* cow, const void* object)
    : m_Parent(&parent), m_Field(field), m_Cow(cow), m_Object(object) {}

cls_WriteVisitor::cls_WriteVisitor(const cls_WriteVisitor& parent, unsigned baseClassId)
    : m_Parent(&parent), m_BaseClassId(baseClassId) {}

cls_WriteVisitor::cls_WriteVisitor(const cls_AgentRequest& request, const void* object)
    : m_Object(object), m_Request(&request) {}

cls_WriteVisitor::~cls_WriteVisitor() {
  if (m_Memento == nullptr) return;
  if (m_Shared) m_Memento->EndSharedPtrOutput();
  if (m_Memento->NeedsDeletion()) delete m_Memento;
}

bool cls_WriteVisitor::StartWrite(unsigned classId, const cls_Uid& uid) const {
  if (m_Memento != nullptr) return true;
  m_Memento = ObtainMemento(classId, uid);
  if (m_Memento != nullptr && m_Shared) m_Memento->StartSharedPtrOutput();
  return m_Memento != nullptr;
}

cls_MementoWrite* cls_WriteVisitor::ObtainMemento(unsigned classId, const cls_Uid& uid) const {
  if (m_Request != nullptr) return m_Request->MakeWriteObjWithPtr(classId, uid, m_Object);
  if (m_Parent == nullptr || m_Parent->m_Memento == nullptr) return nullptr;
  if (m_BaseClassId != kNoBaseClass) return m_Parent->MakeBaseWriteObj(m_BaseClassId, uid);
  if (m_Cow != nullptr) return m_Parent->MakeWriteObj(m_Field, classId, uid, m_Cow);
  return m_Parent->MakeWriteObjWithPtr(m_Field, classId, uid, m_Object);
}

void cls_WriteVisitor::Write(const cls_FieldHandle& field, const atr_String& value) const {
  m_Memento->Write(field, cow_String(value));
}

int cls_WriteVisitor::FieldIsPresent(const cls_FieldHandle& field) const {
  return m_Memento ? m_Memento->FieldIsPresent(field) : 0;
}

void cls_WriteVisitor::CheckCollectionType(cls_CollectionType tag) const {
  if (m_Parent == nullptr || m_Parent->m_Memento == nullptr || m_Field.Name().IsEmpty()) return;
  m_Parent->m_Memento->CheckCollectionType(tag, m_Field.Name());
}

cls_MementoWrite* cls_WriteVisitor::MakeWriteObj(const cls_FieldHandle& field, unsigned classId,
                                                 const cls_Uid& uid,
                                                 const cow_COW<int, cow_Direct<int>>* cow) const {
  return m_Memento->MakeWriteObj(field, classId, uid, cow);
}

cls_MementoWrite* cls_WriteVisitor::MakeWriteObjWithPtr(const cls_FieldHandle& field,
                                                        unsigned classId, const cls_Uid& uid,
                                                        const void* object) const {
  return m_Memento->MakeWriteObjWithPtr(field, classId, uid, object);
}

cls_MementoWrite* cls_WriteVisitor::MakeBaseWriteObj(unsigned classId, const cls_Uid& uid) const {
  return m_Memento->MakeBaseWriteObj(classId, uid);
}
