// What a persistent object writes itself to. An object's DBWrite calls StartWrite with its
// class and identity, which obtains the store's memento for it, and then writes its fields
// by name; a base class's part goes through a visitor of its own, a nested object through a
// visitor on its field:
//
//   void Shape::DBWrite(const cls_WriteVisitor& visitor) const {
//     if (!visitor.StartWrite(TypeId(), m_Uid)) return;   // declined, or written already
//     { cls_WriteVisitor base(visitor, Base::TypeId()); Base::DBWrite(base); }
//     visitor.Write(cls_FieldHandle(0, "m_Sides"), m_Sides);
//   }
//
// A visitor is a stack object, inert until StartWrite; it owns the memento it obtained when
// the memento's NeedsDeletion says so, and releases it at its end. Not for sharing between
// threads.
#ifndef CLS_WRITEVISITOR_H
#define CLS_WRITEVISITOR_H

#include "VRKBasExport.h"
#include "atr_String.h"
#include "cls_CollectionType.h"
#include "cls_FieldHandle.h"
#include "cls_MementoWrite.h"
#include "cow_COW.h"

class cls_AgentRequest;
class cls_Uid;

class VRKLNU_EXPORT cls_WriteVisitor {
 public:
  // A root over a ready memento, which the visitor owns as NeedsDeletion says.
  explicit cls_WriteVisitor(cls_MementoWrite* memento);
  // The object in a field of the parent's object: a shared value when `cow` is set, else the
  // object at `object`.
  cls_WriteVisitor(const cls_WriteVisitor& parent, const cls_FieldHandle& field,
                   const cow_COW<int, cow_Direct<int>>* cow, const void* object);
  // The part of the parent's object that its base class `baseClassId` writes.
  cls_WriteVisitor(const cls_WriteVisitor& parent, unsigned baseClassId);
  // An element of a collection, whose memento the request makes.
  cls_WriteVisitor(const cls_AgentRequest& request, const void* object);
  cls_WriteVisitor(const cls_WriteVisitor&) = delete;
  cls_WriteVisitor& operator=(const cls_WriteVisitor&) = delete;
  ~cls_WriteVisitor();

  // Obtains the memento for the object; false means it is not to be written (the store
  // declined it, or has it already), and the caller must then write nothing. A visitor that
  // has its memento answers true again without asking the store.
  bool StartWrite(unsigned classId, const cls_Uid& uid) const;

  // Writes a field through the memento's slot for the value's type.
  template <class T>
  void Write(const cls_FieldHandle& field, const T& value) const {
    m_Memento->Write(field, value);
  }
  // User text goes out as its plain text, through the string slot.
  void Write(const cls_FieldHandle& field, const atr_String& value) const;

  // 0 with no memento, else the store's answer.
  int FieldIsPresent(const cls_FieldHandle& field) const;
  // Tells the parent's memento the tag of the collection in this visitor's field; nothing
  // at a root or for an unnamed field.
  void CheckCollectionType(cls_CollectionType tag) const;

  cls_MementoWrite* MakeWriteObj(const cls_FieldHandle& field, unsigned classId, const cls_Uid& uid,
                                 const cow_COW<int, cow_Direct<int>>* cow) const;
  cls_MementoWrite* MakeWriteObjWithPtr(const cls_FieldHandle& field, unsigned classId,
                                        const cls_Uid& uid, const void* object) const;
  cls_MementoWrite* MakeBaseWriteObj(unsigned classId, const cls_Uid& uid) const;

  // Asks for the memento's shared-pointer bracket around the object; set before StartWrite.
  void SetShared(bool shared) { m_Shared = shared; }
  // The memento, null before StartWrite succeeds.
  cls_MementoWrite* Memento() const { return m_Memento; }

 private:
  cls_MementoWrite* ObtainMemento(unsigned classId, const cls_Uid& uid) const;

  const cls_WriteVisitor* m_Parent = nullptr;
  cls_FieldHandle m_Field;
  unsigned m_BaseClassId = 1;
  const cow_COW<int, cow_Direct<int>>* m_Cow = nullptr;
  const void* m_Object = nullptr;
  // Brackets the object's output with the memento's shared-pointer calls.
  bool m_Shared = false;
  mutable cls_MementoWrite* m_Memento = nullptr;
  const cls_AgentRequest* m_Request = nullptr;
};

#endif  // CLS_WRITEVISITOR_H
