// The store's side of a read: one memento per stored object, nested object or base-class
// part, from which read constructors (through cls_ReadVisitor) take their fields. The
// library holds only this abstract class; a database implements it.
//
// Reads never fail on absence: each Read returns the value stored for the field, or the
// default given when the record has none (an older version of the class). Mementos and
// agents that the factories return belong to the caller when NeedsDeletion says so; read
// cursors always do (cls_ReadCursor deletes them), and must not outlive the memento. A cursor
// factory that returns null reads as an empty collection.
#ifndef CLS_MEMENTOREAD_H
#define CLS_MEMENTOREAD_H

#include "VRKBasExport.h"
#include "cls_CollectionFwd.h"
#include "cls_FieldHandle.h"
#include "cls_Uid.h"
#include "cow_String.h"
#include "mem_Alloc.h"

class VRKLNU_EXPORT cls_MementoRead : public mem_AllocationOperators {
 public:
  virtual ~cls_MementoRead();
  virtual bool NeedsDeletion() const;
  // The store's identifier of the record.
  virtual cow_String DbId() = 0;
  // The identity of the stored object.
  virtual cls_Uid GetUid() = 0;
  virtual int FieldIsPresent(const cls_FieldHandle& field) = 0;
  virtual int DataIsPresent(const cls_FieldHandle& field) = 0;
  // Spare slots (Spare1 to Spare10), kept so that the store interface keeps its order: no
  // code of the library calls them, and the defaults return null.
  virtual void* Spare1() { return nullptr; }
  // Mementos of the object in a field and of this object's base-class part.
  virtual cls_MementoRead* MakeReadObj(const cls_FieldHandle& field) = 0;
  virtual cls_MementoRead* MakeBaseReadObj() = 0;

  virtual cow_String Read(const cls_FieldHandle& field, const cow_String& otherwise) = 0;
  virtual double Read(const cls_FieldHandle& field, double otherwise) = 0;
  virtual float Read(const cls_FieldHandle& field, float otherwise) = 0;
  virtual unsigned int Read(const cls_FieldHandle& field, unsigned int otherwise) = 0;
  virtual int Read(const cls_FieldHandle& field, int otherwise) = 0;
  virtual unsigned short Read(const cls_FieldHandle& field, unsigned short otherwise) = 0;
  virtual short Read(const cls_FieldHandle& field, short otherwise) = 0;
  virtual unsigned char Read(const cls_FieldHandle& field, unsigned char otherwise) = 0;
  virtual char Read(const cls_FieldHandle& field, char otherwise) = 0;
  virtual bool Read(const cls_FieldHandle& field, bool otherwise) = 0;
  virtual long Read(const cls_FieldHandle& field, long otherwise) = 0;
  virtual void* Spare2() { return nullptr; }
  virtual void* Spare3() { return nullptr; }

  // Cursors for collections, in the element order of the write side.
  virtual cls_ReadListObj* MakeListObj() = 0;
  virtual cls_ReadMapInt2Obj* MakeMapInt2Obj() = 0;
  virtual cls_ReadIntTableInt* MakeIntTableInt() = 0;
  virtual cls_ReadMapString2Obj* MakeMapString2Obj() = 0;
  virtual cls_ReadListPrim<bool>* MakeListPrim(const bool& selector) = 0;
  virtual cls_ReadListPrim<cow_String>* MakeListPrim(const cow_String& selector) = 0;
  virtual cls_ReadListPrim<float>* MakeListPrim(const float& selector) = 0;
  virtual cls_ReadListPrim<double>* MakeListPrim(const double& selector) = 0;
  virtual cls_ReadListPrim<unsigned>* MakeListPrim(const unsigned& selector) = 0;
  virtual cls_ReadListPrim<int>* MakeListPrim(const int& selector) = 0;
  virtual cls_ReadMapInt2Prim<unsigned>* MakeMapInt2Prim(const unsigned& selector) = 0;
  virtual cls_ReadMapInt2Prim<cow_String>* MakeMapInt2Prim(const cow_String& selector) = 0;
  virtual cls_ReadMapInt2Prim<int>* MakeMapInt2Prim(const int& selector) = 0;
  virtual cls_ReadMapInt2Prim<float>* MakeMapInt2Prim(const float& selector) = 0;
  virtual cls_ReadMapInt2Prim<double>* MakeMapInt2Prim(const double& selector) = 0;
  virtual void* Spare4() { return nullptr; }
  virtual void* Spare5() { return nullptr; }
  virtual void* Spare6() { return nullptr; }
  virtual void* Spare7() { return nullptr; }
  virtual void* Spare8() { return nullptr; }
  virtual void* Spare9() { return nullptr; }
  virtual cls_ReadMapString2Prim<unsigned>* MakeMapString2Prim(const unsigned& selector) = 0;
  virtual cls_ReadMapString2Prim<cow_String>* MakeMapString2Prim(const cow_String& selector) = 0;
  virtual cls_ReadMapString2Prim<int>* MakeMapString2Prim(const int& selector) = 0;
  virtual cls_ReadMapString2Prim<float>* MakeMapString2Prim(const float& selector) = 0;
  virtual cls_ReadMapString2Prim<double>* MakeMapString2Prim(const double& selector) = 0;
  // Agents for collections of objects; null by default: this store has none.
  virtual cls_AgentListObj* MakeAgentListObj();
  virtual cls_AgentMapKey2Obj<int>* MakeAgentMapKey2Obj(const int& selector);
  virtual cls_AgentMapKey2Obj<cow_String>* MakeAgentMapKey2Obj(const cow_String& selector);

  // Agents, in the element order of the write side, with a reference count of 0 (see
  // cls_MementoWrite); null when the record holds no such list.
  virtual cls_AgentListPrim<bool>* MakeAgentList(const bool& selector) = 0;
  virtual cls_AgentListPrim<double>* MakeAgentList(const double& selector) = 0;
  virtual cls_AgentListPrim<float>* MakeAgentList(const float& selector) = 0;
  virtual cls_AgentListPrim<int>* MakeAgentList(const int& selector) = 0;
  virtual cls_AgentListPrim<cow_String>* MakeAgentList(const cow_String& selector) = 0;
  virtual cls_AgentListPrim<unsigned>* MakeAgentList(const unsigned& selector) = 0;
  virtual cls_AgentBlob* MakeAgentBlob() = 0;
  virtual void* Spare10() { return nullptr; }
};

#endif  // CLS_MEMENTOREAD_H
