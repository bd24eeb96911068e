// Writes a block of bytes as a field: the store makes a nested record of class 0x230005 for
// it and hands out its binary agent, which outlives the nested memento.
//
//   cls_BlobWriter blob(visitor, cls_FieldHandle(-1, "image"), m_ImageUid);
//   if (blob.Agent()) ...write the bytes through the store's agent...
#ifndef CLS_BLOBWRITER_H
#define CLS_BLOBWRITER_H

#include "VRKBasExport.h"
#include "mem_Alloc.h"

class cls_AgentBlob;
class cls_FieldHandle;
class cls_Uid;
class cls_WriteVisitor;

class VRKLNU_EXPORT cls_BlobWriter : public mem_AllocationOperators {
 public:
  static constexpr unsigned kBlobClassId = 0x230005;

  // The agent is null when the store declines the record. The visitor must have its memento.
  cls_BlobWriter(const cls_WriteVisitor& visitor, const cls_FieldHandle& field, const cls_Uid& uid);
  cls_BlobWriter(const cls_BlobWriter&) = delete;
  cls_BlobWriter& operator=(const cls_BlobWriter&) = delete;
  // Deletes the agent when its NeedsDeletion says so.
  ~cls_BlobWriter();

  cls_AgentBlob* Agent() const { return m_Agent; }

 private:
  cls_AgentBlob* m_Agent = nullptr;
};

#endif  // CLS_BLOBWRITER_H
