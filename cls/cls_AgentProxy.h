// A handle through which a store copies a stored branch to another kind of store. Held
// through cow_CountedHld<cls_AgentProxy>. The base class transfers nothing; a store that can
// copy branches derives from it.
#ifndef CLS_AGENTPROXY_H
#define CLS_AGENTPROXY_H

#include "VRKBasExport.h"
#include "mem_Alloc.h"

class cls_FieldHandle;
class cls_MementoWrite;
class cls_StorageTypeId;

class VRKLNU_EXPORT cls_AgentProxy : public mem_AllocationOperators {
 public:
  virtual ~cls_AgentProxy();
  // Copies the branch into `target` under `field`; false when it was not copied.
  virtual bool Transfer(const cls_StorageTypeId& kind, cls_MementoWrite* target,
                        const cls_FieldHandle& field);
};

#endif  // CLS_AGENTPROXY_H
