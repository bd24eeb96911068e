// The store's agents for stored collections of objects, a list (cls_AgentListObj) and maps by
// integer or string key (cls_AgentMapKey2Obj<K>): like the list agents of cls_AgentListPrim.h
// they outlive the memento that made them, and they give each element a memento of its own,
// reached through the request classes (cls_AgentRequestListObj, cls_AgentRequestMapKey2Obj)
// so that the element's own DBWrite runs as always:
//
//   cls_AgentRequestListObj request(agent, 7);
//   cls_WriteVisitor element(request, &shape);
//   shape.DBWrite(element);              // StartWrite asks the agent for element 7's memento
//
// Abstract: the store implements them, and says how they are owned. Keys are passed by
// address and read during the call only.
#ifndef CLS_AGENTLISTOBJ_H
#define CLS_AGENTLISTOBJ_H

#include "VRKBasExport.h"
#include "cow_COW.h"
#include "cow_String.h"
#include "mem_Alloc.h"

class cls_MementoWrite;
class cls_Uid;

class VRKLNU_EXPORT cls_AgentListObj : public mem_AllocationOperators {
 public:
  virtual ~cls_AgentListObj();
  // The memento of the element at `index`, as a value or shared value, or as a pointed-to
  // object; null when the store declines it.
  virtual cls_MementoWrite* MakeWriteObj(int index, unsigned classId, const cls_Uid& uid,
                                         const cow_COW<int, cow_Direct<int>>* cow) = 0;
  virtual cls_MementoWrite* MakeWriteObjWithPtr(int index, unsigned classId, const cls_Uid& uid,
                                                const void* object) = 0;
};

// K is int or cow_String.
template <class K>
class cls_AgentMapKey2Obj : public mem_AllocationOperators {
 public:
  virtual ~cls_AgentMapKey2Obj() {}
  virtual cls_MementoWrite* MakeWriteObj(const K* key, unsigned classId, const cls_Uid& uid,
                                         const cow_COW<int, cow_Direct<int>>* cow) = 0;
  virtual cls_MementoWrite* MakeWriteObjWithPtr(const K* key, unsigned classId, const cls_Uid& uid,
                                                const void* object) = 0;
};

extern template class VRKLNU_EXPORT cls_AgentMapKey2Obj<int>;
extern template class VRKLNU_EXPORT cls_AgentMapKey2Obj<cow_String>;

#endif  // CLS_AGENTLISTOBJ_H
