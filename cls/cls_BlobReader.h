// Reads a block of bytes stored as a field (see cls_BlobWriter): takes the field's record,
// its binary agent, and gives the caller the record's identity.
//
//   cls_BlobReader blob(visitor, cls_FieldHandle(-1, "image"), m_ImageUid);
#ifndef CLS_BLOBREADER_H
#define CLS_BLOBREADER_H

#include "VRKBasExport.h"
#include "mem_Alloc.h"

class cls_AgentBlob;
class cls_FieldHandle;
class cls_MementoRead;
class cls_ReadVisitor;
class cls_Uid;

class VRKLNU_EXPORT cls_BlobReader : public mem_AllocationOperators {
 public:
  // Sets `uid` to the stored identity. The agent is null when the store has no record.
  cls_BlobReader(const cls_ReadVisitor& visitor, const cls_FieldHandle& field, cls_Uid& uid);
  cls_BlobReader(const cls_BlobReader&) = delete;
  cls_BlobReader& operator=(const cls_BlobReader&) = delete;
  // Deletes the agent and the record's memento, each when its NeedsDeletion says so.
  ~cls_BlobReader();

  cls_AgentBlob* Agent() const { return m_Agent; }

 private:
  void Release();

  cls_AgentBlob* m_Agent = nullptr;
  cls_MementoRead* m_Memento;
};

#endif  // CLS_BLOBREADER_H
