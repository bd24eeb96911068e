#include "cls_AgentRequest.h"

cls_AgentRequest::~cls_AgentRequest() = default;

cls_MementoWrite* cls_WriteRequestListObj::MakeWriteObj(
    unsigned classId, const cls_Uid& uid, const cow_COW<int, cow_Direct<int>>* cow) const {
  return m_List->MakeWriteObj(classId, uid, cow);
}

cls_MementoWrite* cls_WriteRequestListObj::MakeWriteObjWithPtr(unsigned classId, const cls_Uid& uid,
                                                               const void* object) const {
  return m_List->MakeWriteObjWithPtr(classId, uid, object);
}

cls_MementoWrite* cls_AgentRequestListObj::MakeWriteObj(
    unsigned classId, const cls_Uid& uid, const cow_COW<int, cow_Direct<int>>* cow) const {
  return m_Agent->MakeWriteObj(m_Index, classId, uid, cow);
}

cls_MementoWrite* cls_AgentRequestListObj::MakeWriteObjWithPtr(unsigned classId, const cls_Uid& uid,
                                                               const void* object) const {
  return m_Agent->MakeWriteObjWithPtr(m_Index, classId, uid, object);
}

template class cls_KeyedRequest<cls_WriteMapInt2Obj, int>;
template class cls_KeyedRequest<cls_WriteMapString2Obj, cow_String>;
template class cls_KeyedRequest<cls_AgentMapKey2Obj<int>, int>;
template class cls_KeyedRequest<cls_AgentMapKey2Obj<cow_String>, cow_String>;
