// The write cursors through which collections pass the store boundary. A memento hands out
// one cursor per collection (cls_MementoWrite::MakeListPrim and its peers); the writer pushes
// the elements in order and is done with it by the end of its DBWrite:
//
//   cls_WriteCursor<cls_WriteListPrim<int>> list(memento->MakeListPrim(0, 1));
//   if (list) for (int i = 0; i < n; ++i) list->Append(&values[i]);
//   // list deletes the cursor when its NeedsDeletion says so
//
// Everything here is abstract except AppendBlock's default: the store implements the
// cursors. Object cursors give each element a memento of its own, so that an element can be
// any persistent class (see the request classes in cls_AgentRequest.h). Keys and values are
// passed by address and read during the call only. A cursor must not outlive the memento
// that made it; store exceptions pass through. Not for sharing between threads.
#ifndef CLS_WRITECOLLECTIONBASE_H
#define CLS_WRITECOLLECTIONBASE_H

#include "VRKBasExport.h"
#include "cow_COW.h"
#include "cow_String.h"
#include "mem_Alloc.h"

class cls_MementoWrite;
class cls_Uid;

class VRKLNU_EXPORT cls_WriteCollectionBase : public mem_AllocationOperators {
 public:
  virtual ~cls_WriteCollectionBase();
  // True when the user of the cursor deletes it; true here.
  virtual bool NeedsDeletion() const;
};

// A list of values, or a two-dimensional array given row after row (the memento was told its
// width). T is bool, int, unsigned, float, double or cow_String.
template <class T>
class cls_WriteListPrim : public cls_WriteCollectionBase {
 public:
  // Appends `count` values; nothing when `count` is 0 or less. Here: one Append each.
  virtual void AppendBlock(const T* values, int count) {
    for (int i = 0; i < count; ++i)
      Append(values + i);
  }
  virtual void Append(const T* value) = 0;
};

// Maps of values by integer and by string key. T is int, unsigned, float, double or
// cow_String.
template <class T>
class cls_WriteMapInt2Prim : public cls_WriteCollectionBase {
 public:
  virtual void Put(const int* key, const T* value) = 0;
};

template <class T>
class cls_WriteMapString2Prim : public cls_WriteCollectionBase {
 public:
  virtual void Put(const cow_String* key, const T* value) = 0;
};

// A list of objects: each element gets its memento from MakeWriteObj (a value or shared
// value) or MakeWriteObjWithPtr (a pointed-to object), null meaning that the store declines
// it; a null element keeps its class identifier for the reader.
class VRKLNU_EXPORT cls_WriteListObj : public cls_WriteCollectionBase {
 public:
  virtual cls_MementoWrite* MakeWriteObj(unsigned classId, const cls_Uid& uid,
                                         const cow_COW<int, cow_Direct<int>>* cow) = 0;
  virtual cls_MementoWrite* MakeWriteObjWithPtr(unsigned classId, const cls_Uid& uid,
                                                const void* object) = 0;
  virtual void WriteNull(unsigned classId) = 0;
};

// Maps of objects by integer and by string key: the same, with the element's key first.
class VRKLNU_EXPORT cls_WriteMapInt2Obj : public cls_WriteCollectionBase {
 public:
  virtual cls_MementoWrite* MakeWriteObj(const int* key, unsigned classId, const cls_Uid& uid,
                                         const cow_COW<int, cow_Direct<int>>* cow) = 0;
  virtual cls_MementoWrite* MakeWriteObjWithPtr(const int* key, unsigned classId,
                                                const cls_Uid& uid, const void* object) = 0;
  virtual void WriteNull(const int* key, unsigned classId) = 0;
};

class VRKLNU_EXPORT cls_WriteMapString2Obj : public cls_WriteCollectionBase {
 public:
  virtual cls_MementoWrite* MakeWriteObj(const cow_String* key, unsigned classId,
                                         const cls_Uid& uid,
                                         const cow_COW<int, cow_Direct<int>>* cow) = 0;
  virtual cls_MementoWrite* MakeWriteObjWithPtr(const cow_String* key, unsigned classId,
                                                const cls_Uid& uid, const void* object) = 0;
  virtual void WriteNull(const cow_String* key, unsigned classId) = 0;
};

// A table from integer to integer. No code of the library writes one.
class VRKLNU_EXPORT cls_WriteIntTableInt : public mem_AllocationOperators {
 public:
  virtual ~cls_WriteIntTableInt();
  virtual void Put(int key, int value) = 0;
};

// Holds a write cursor for the span of one DBWrite and deletes it at the end (also when a
// store exception passes) if its NeedsDeletion says so. A null cursor is allowed.
template <class C>
class cls_WriteCursor {
 public:
  explicit cls_WriteCursor(C* cursor) : m_Cursor(cursor) {}
  cls_WriteCursor(const cls_WriteCursor&) = delete;
  cls_WriteCursor& operator=(const cls_WriteCursor&) = delete;
  ~cls_WriteCursor() {
    if (m_Cursor != nullptr && m_Cursor->NeedsDeletion()) delete m_Cursor;
  }

  explicit operator bool() const { return m_Cursor != nullptr; }
  C* operator->() const { return m_Cursor; }
  C* Get() const { return m_Cursor; }

 private:
  C* m_Cursor;
};

extern template class VRKLNU_EXPORT cls_WriteListPrim<bool>;
extern template class VRKLNU_EXPORT cls_WriteListPrim<int>;
extern template class VRKLNU_EXPORT cls_WriteListPrim<unsigned>;
extern template class VRKLNU_EXPORT cls_WriteListPrim<float>;
extern template class VRKLNU_EXPORT cls_WriteListPrim<double>;
extern template class VRKLNU_EXPORT cls_WriteListPrim<cow_String>;
extern template class VRKLNU_EXPORT cls_WriteMapInt2Prim<int>;
extern template class VRKLNU_EXPORT cls_WriteMapInt2Prim<unsigned>;
extern template class VRKLNU_EXPORT cls_WriteMapInt2Prim<float>;
extern template class VRKLNU_EXPORT cls_WriteMapInt2Prim<double>;
extern template class VRKLNU_EXPORT cls_WriteMapInt2Prim<cow_String>;
extern template class VRKLNU_EXPORT cls_WriteMapString2Prim<int>;
extern template class VRKLNU_EXPORT cls_WriteMapString2Prim<unsigned>;
extern template class VRKLNU_EXPORT cls_WriteMapString2Prim<float>;
extern template class VRKLNU_EXPORT cls_WriteMapString2Prim<double>;
extern template class VRKLNU_EXPORT cls_WriteMapString2Prim<cow_String>;

#endif  // CLS_WRITECOLLECTIONBASE_H
