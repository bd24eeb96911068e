#include "cls_BlobReader.h"

#include "cls_AgentBlob.h"
#include "cls_ReadVisitor.h"

cls_BlobReader::cls_BlobReader(const cls_ReadVisitor& visitor, const cls_FieldHandle& field,
                               cls_Uid& uid)
    : m_Memento(visitor.MakeReadObj(field)) {
  if (m_Memento == nullptr) return;
  try {
    m_Agent = m_Memento->MakeAgentBlob();
    uid = m_Memento->GetUid();
  } catch (...) {
    Release();  // the store's exception passes; what was made goes with it
    throw;
  }
}

cls_BlobReader::~cls_BlobReader() {
  Release();
}

void cls_BlobReader::Release() {
  if (m_Agent != nullptr && m_Agent->NeedsDeletion()) delete m_Agent;
  if (m_Memento != nullptr && m_Memento->NeedsDeletion()) delete m_Memento;
}
