// The next element of a collection, packaged so that a cls_WriteVisitor can be built on it:
// the element's own DBWrite then calls StartWrite as always, and the visitor asks the
// request, in place of a parent memento, for the element's memento. Each kind of collection
// has its request, holding the collection and, where one is needed, the element's key, and
// forwarding both operations to the collection's operations of the same name:
//
//   cls_WriteRequestMapString2Obj request(cursor, key);
//   cls_WriteVisitor element(request, nullptr);
//   value.DBWrite(element);
//
// Requests are stack objects. They keep a pointer to the collection, which must outlive
// them, and a copy of the key, which may die before the element is written.
#ifndef CLS_AGENTREQUEST_H
#define CLS_AGENTREQUEST_H

#include "VRKBasExport.h"
#include "cls_AgentListObj.h"
#include "cls_WriteCollectionBase.h"
#include "cow_COW.h"
#include "cow_String.h"
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

// The next element of a list of objects being written.
class VRKLNU_EXPORT cls_WriteRequestListObj : public cls_AgentRequest {
 public:
  explicit cls_WriteRequestListObj(cls_WriteListObj* list) : m_List(list) {}
  cls_MementoWrite* MakeWriteObj(unsigned classId, const cls_Uid& uid,
                                 const cow_COW<int, cow_Direct<int>>* cow) const override;
  cls_MementoWrite* MakeWriteObjWithPtr(unsigned classId, const cls_Uid& uid,
                                        const void* object) const override;

 private:
  cls_WriteListObj* m_List;
};

// The element under `key` of a map of objects being written, or of a map agent. `Target` is
// the collection, whose operations take the key's address first.
template <class Target, class K>
class cls_KeyedRequest : public cls_AgentRequest {
 public:
  cls_KeyedRequest(Target* target, const K& key) : m_Target(target), m_Key(key) {}
  cls_MementoWrite* MakeWriteObj(unsigned classId, const cls_Uid& uid,
                                 const cow_COW<int, cow_Direct<int>>* cow) const override {
    return m_Target->MakeWriteObj(&m_Key, classId, uid, cow);
  }
  cls_MementoWrite* MakeWriteObjWithPtr(unsigned classId, const cls_Uid& uid,
                                        const void* object) const override {
    return m_Target->MakeWriteObjWithPtr(&m_Key, classId, uid, object);
  }

 private:
  Target* m_Target;
  K m_Key;
};

typedef cls_KeyedRequest<cls_WriteMapInt2Obj, int> cls_WriteRequestMapInt2Obj;
typedef cls_KeyedRequest<cls_WriteMapString2Obj, cow_String> cls_WriteRequestMapString2Obj;
template <class K>
using cls_AgentRequestMapKey2Obj = cls_KeyedRequest<cls_AgentMapKey2Obj<K>, K>;

// The element at `index` of a list agent.
class VRKLNU_EXPORT cls_AgentRequestListObj : public cls_AgentRequest {
 public:
  cls_AgentRequestListObj(cls_AgentListObj* agent, int index) : m_Agent(agent), m_Index(index) {}
  cls_MementoWrite* MakeWriteObj(unsigned classId, const cls_Uid& uid,
                                 const cow_COW<int, cow_Direct<int>>* cow) const override;
  cls_MementoWrite* MakeWriteObjWithPtr(unsigned classId, const cls_Uid& uid,
                                        const void* object) const override;

 private:
  cls_AgentListObj* m_Agent;
  int m_Index;
};

extern template class VRKLNU_EXPORT cls_KeyedRequest<cls_WriteMapInt2Obj, int>;
extern template class VRKLNU_EXPORT cls_KeyedRequest<cls_WriteMapString2Obj, cow_String>;
extern template class VRKLNU_EXPORT cls_KeyedRequest<cls_AgentMapKey2Obj<int>, int>;
extern template class VRKLNU_EXPORT cls_KeyedRequest<cls_AgentMapKey2Obj<cow_String>, cow_String>;

#endif  // CLS_AGENTREQUEST_H
