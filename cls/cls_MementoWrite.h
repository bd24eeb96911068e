// The store's side of a write: one memento per object, nested object or base-class part.
// The library holds only this abstract class; a database implements it, and the visitors
// (cls_WriteVisitor) forward the objects' calls to it. What is fixed is the sequence of
// calls: a store must key fields on their handles, since nothing else orders them.
//
// Ownership: a memento that a factory returns belongs to its caller when NeedsDeletion says
// so; the cursors likewise (cls_WriteCursor deletes them so). A factory that returns null
// suppresses the write of that object; a cursor factory that returns null leaves the
// collection unwritten. Cursors must not outlive the memento that made them; agents do.
#ifndef CLS_MEMENTOWRITE_H
#define CLS_MEMENTOWRITE_H

#include "VRKBasExport.h"
#include "cls_CollectionFwd.h"
#include "cls_CollectionType.h"
#include "cls_FieldHandle.h"
#include "cow_COW.h"
#include "cow_String.h"
#include "mem_Alloc.h"

class cls_AgentProxy;
class cls_Uid;

class VRKLNU_EXPORT cls_MementoWrite : public mem_AllocationOperators {
 public:
  virtual ~cls_MementoWrite();
  // True when the visitor that received the memento owns it.
  virtual bool NeedsDeletion() const;
  // Whether the field may be written.
  virtual int FieldIsPresent(const cls_FieldHandle& field) = 0;
  // Mementos of a pointed-to object in a field, of a value or shared value in a field, and
  // of a base-class part of this object. Null: the object is not to be written.
  virtual cls_MementoWrite* MakeWriteObjWithPtr(const cls_FieldHandle& field, unsigned classId,
                                                const cls_Uid& uid, const void* object) = 0;
  virtual cls_MementoWrite* MakeWriteObj(const cls_FieldHandle& field, unsigned classId,
                                         const cls_Uid& uid,
                                         const cow_COW<int, cow_Direct<int>>* cow) = 0;
  virtual cls_MementoWrite* MakeBaseWriteObj(unsigned classId, const cls_Uid& uid) = 0;
  // The field holds nothing.
  virtual void WriteNull(const cls_FieldHandle& field) = 0;

  virtual void Write(const cls_FieldHandle& field, const cow_String& value) = 0;
  virtual void Write(const cls_FieldHandle& field, double value) = 0;
  virtual void Write(const cls_FieldHandle& field, float value) = 0;
  virtual void Write(const cls_FieldHandle& field, unsigned int value) = 0;
  virtual void Write(const cls_FieldHandle& field, int value) = 0;
  virtual void Write(const cls_FieldHandle& field, unsigned short value) = 0;
  virtual void Write(const cls_FieldHandle& field, short value) = 0;
  virtual void Write(const cls_FieldHandle& field, unsigned char value) = 0;
  virtual void Write(const cls_FieldHandle& field, char value) = 0;
  virtual void Write(const cls_FieldHandle& field, bool value) = 0;
  // Holds 32 bits in the stored record.
  virtual void Write(const cls_FieldHandle& field, long value) = 0;

  // Cursors for collections. The selector carries no value: its type picks the element.
  // `width` is 1 for a list and the column count for a two-dimensional array.
  virtual cls_WriteListObj* MakeListObj(unsigned count) = 0;
  virtual cls_WriteMapInt2Obj* MakeMapInt2Obj() = 0;
  virtual cls_WriteIntTableInt* MakeIntTableInt() = 0;
  virtual cls_WriteMapString2Obj* MakeMapString2Obj() = 0;
  virtual cls_WriteListPrim<bool>* MakeListPrim(const bool& selector, int width) = 0;
  virtual cls_WriteListPrim<cow_String>* MakeListPrim(const cow_String& selector, int width) = 0;
  virtual cls_WriteListPrim<float>* MakeListPrim(const float& selector, int width) = 0;
  virtual cls_WriteListPrim<double>* MakeListPrim(const double& selector, int width) = 0;
  virtual cls_WriteListPrim<unsigned>* MakeListPrim(const unsigned& selector, int width) = 0;
  virtual cls_WriteListPrim<int>* MakeListPrim(const int& selector, int width) = 0;
  virtual cls_WriteMapInt2Prim<unsigned>* MakeMapInt2Prim(const unsigned& selector) = 0;
  virtual cls_WriteMapInt2Prim<cow_String>* MakeMapInt2Prim(const cow_String& selector) = 0;
  virtual cls_WriteMapInt2Prim<int>* MakeMapInt2Prim(const int& selector) = 0;
  virtual cls_WriteMapInt2Prim<float>* MakeMapInt2Prim(const float& selector) = 0;
  virtual cls_WriteMapInt2Prim<double>* MakeMapInt2Prim(const double& selector) = 0;
  // Spare slots, kept so that the store interface keeps its order: no code of the library
  // calls them, and the defaults return null.
  virtual void* Spare1() { return nullptr; }
  virtual void* Spare2() { return nullptr; }
  virtual void* Spare3() { return nullptr; }
  virtual void* Spare4() { return nullptr; }
  virtual void* Spare5() { return nullptr; }
  virtual void* Spare6() { return nullptr; }
  virtual cls_WriteMapString2Prim<unsigned>* MakeMapString2Prim(const unsigned& selector) = 0;
  virtual cls_WriteMapString2Prim<cow_String>* MakeMapString2Prim(const cow_String& selector) = 0;
  virtual cls_WriteMapString2Prim<int>* MakeMapString2Prim(const int& selector) = 0;
  virtual cls_WriteMapString2Prim<float>* MakeMapString2Prim(const float& selector) = 0;
  virtual cls_WriteMapString2Prim<double>* MakeMapString2Prim(const double& selector) = 0;
  // Agents for collections of objects, reached element by element through the request
  // classes (cls_AgentRequest.h). No code of the library asks for one; the defaults return
  // null, which a caller must take as "not supported by this store".
  virtual cls_AgentListObj* MakeAgentListObj();
  virtual cls_AgentMapKey2Obj<int>* MakeAgentMapKey2Obj(const int& selector);
  virtual cls_AgentMapKey2Obj<cow_String>* MakeAgentMapKey2Obj(const cow_String& selector);

  // Agents: they outlive this memento. The agent comes with a reference count of 0: the
  // owner that keeps it calls AddRef (see cls_AgentListPrim.h), and whoever brings the
  // count back to 0 deletes it. Null: this store keeps no such list.
  virtual cls_AgentListPrim<bool>* MakeAgentList(const bool& selector, int extentQuantum) = 0;
  virtual cls_AgentListPrim<double>* MakeAgentList(const double& selector, int extentQuantum) = 0;
  virtual cls_AgentListPrim<float>* MakeAgentList(const float& selector, int extentQuantum) = 0;
  virtual cls_AgentListPrim<int>* MakeAgentList(const int& selector, int extentQuantum) = 0;
  virtual cls_AgentListPrim<cow_String>* MakeAgentList(const cow_String& selector,
                                                       int extentQuantum) = 0;
  virtual cls_AgentListPrim<unsigned>* MakeAgentList(const unsigned& selector,
                                                     int extentQuantum) = 0;
  virtual cls_AgentBlob* MakeAgentBlob() = 0;

  // Compares a collection field's tag with the class's declaration (cls_CollectionsMatch)
  // and reports a mismatch; the write goes on either way.
  virtual void CheckCollectionType(cls_CollectionType tag, const cow_String& fieldName) = 0;
  // Copies a stored branch through the proxy; false here.
  virtual bool CopyBranch(cls_AgentProxy* proxy, const cls_FieldHandle& field);
  // Bracket around an object written through a shared pointer; nothing here.
  virtual void StartSharedPtrOutput();
  virtual void EndSharedPtrOutput();
};

#endif  // CLS_MEMENTOWRITE_H
