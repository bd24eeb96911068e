// The next element of a collection, packaged so that a cls_WriteVisitor can be built on it:
// the element's own DBWrite then calls StartWrite as always, and the visitor asks the
// request, in place of a parent memento, for the element's memento. Each kind of collection
// derives its request, holding the collection and, where one is needed, the key. Requests
// are stack objects.
#ifndef CLS_AGENTREQUEST_H
#define CLS_AGENTREQUEST_H

#include "VRKBasExport.h"
#include "cow_COW.h"
#include "mem_Alloc.h"

class cls_MementoWrite;
class cls_Uid;

class VRKLNU_EXPORT cls_AgentRequest : public mem_AllocationOperators {
 public:
  virtual ~cls_AgentRequest();
  // The element's memento, or null when it is not to be written.
  virtual cls_MementoWrite* MakeWriteObj(unsigned classId, const cls_Uid& uid,
                                         const cow_COW<int, cow_Direct<int>>* cow) const = 0;
  virtual cls_MementoWrite* MakeWriteObjWithPtr(unsigned classId, const cls_Uid& uid,
                                                const void* object) const = 0;
};

#endif  // CLS_AGENTREQUEST_H
