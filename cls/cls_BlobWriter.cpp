#include "cls_BlobWriter.h"

#include "cls_AgentBlob.h"
#include "cls_WriteVisitor.h"

cls_BlobWriter::cls_BlobWriter(const cls_WriteVisitor& visitor, const cls_FieldHandle& field,
                               const cls_Uid& uid) {
  cls_MementoWrite* nested = visitor.MakeWriteObj(field, kBlobClassId, uid, nullptr);
  if (nested == nullptr) return;
  m_Agent = nested->MakeAgentBlob();
  if (nested->NeedsDeletion()) delete nested;
}

cls_BlobWriter::~cls_BlobWriter() {
  if (m_Agent != nullptr && m_Agent->NeedsDeletion()) delete m_Agent;
}
