#include "cls_BlobWriter.h"

#include "cls_AgentBlob.h"
#include "cls_WriteVisitor.h"

cls_BlobWriter::cls_BlobWriter(const cls_WriteVisitor& visitor, const cls_FieldHandle& field,
                               const cls_Uid& uid) {
  cls_MementoWrite* nested = visitor.MakeWriteObj(field, kBlobClassId, uid, nullptr);
  if (nested == nullptr) return;
  // The nested memento goes once the agent is made, or as the store's exception passes.
  struct Drop {
    cls_MementoWrite* memento;
    ~Drop() {
      if (memento->NeedsDeletion()) delete memento;
    }
  } drop{nested};
  m_Agent = nested->MakeAgentBlob();
}

cls_BlobWriter::~cls_BlobWriter() {
  if (m_Agent != nullptr && m_Agent->NeedsDeletion()) delete m_Agent;
}
