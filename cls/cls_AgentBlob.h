// The store's agent for a stored block of bytes, handed out by a memento's MakeAgentBlob and
// used through cls_BlobWriter and cls_BlobReader. It outlives the memento that made it; its
// user deletes it when NeedsDeletion says so.
#ifndef CLS_AGENTBLOB_H
#define CLS_AGENTBLOB_H

#include "VRKBasExport.h"
#include "mem_Alloc.h"

class VRKLNU_EXPORT cls_AgentBlob : public mem_AllocationOperators {
 public:
  virtual ~cls_AgentBlob();
  // True when the user owns the agent.
  virtual bool NeedsDeletion() const;
};

#endif  // CLS_AGENTBLOB_H
