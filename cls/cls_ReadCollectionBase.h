// The read cursors through which collections come back from a store. A read memento hands out
// one cursor per collection (cls_MementoRead::MakeListPrim and its peers); a read constructor
// pulls the elements in order and deletes the cursor, which is always its own:
//
//   cls_ReadCursor<cls_ReadListPrim<int>> list(memento->MakeListPrim(0));
//   while (list && list->HasMore()) values.Append(list->Next());
//
// Maps give each entry's value before its key: a reader calls Value (or MakeReadObj), then
// Key, and a store moves to the next entry only on Key. Everything here is abstract: the
// store implements it. A cursor must not outlive the memento that made it; store exceptions
// pass through. Not for sharing between threads.
#ifndef CLS_READCOLLECTIONBASE_H
#define CLS_READCOLLECTIONBASE_H

#include "VRKBasExport.h"
#include "cow_String.h"
#include "mem_Alloc.h"

class cls_MementoRead;

class VRKLNU_EXPORT cls_ReadCollectionBase : public mem_AllocationOperators {
 public:
  virtual ~cls_ReadCollectionBase();
  // True here; read cursors are deleted by their user whatever it says.
  virtual bool NeedsDeletion() const;
};

// What every list of values answers. T is bool, int, unsigned, float, double or cow_String.
template <class T>
class cls_ReadListPrimBase : public cls_ReadCollectionBase {
 public:
  // The number of values stored.
  virtual int Size() = 0;
  // The width given at write: 1 for a plain list, the column count of a two-dimensional
  // array.
  virtual int RowLength() = 0;
  // Non-zero while a value remains.
  virtual int HasMore() = 0;
  // A spare slot; no code of the library calls it, and the default returns null.
  virtual void* Spare() { return nullptr; }
};

extern template class VRKLNU_EXPORT cls_ReadListPrimBase<bool>;
extern template class VRKLNU_EXPORT cls_ReadListPrimBase<int>;
extern template class VRKLNU_EXPORT cls_ReadListPrimBase<unsigned>;
extern template class VRKLNU_EXPORT cls_ReadListPrimBase<float>;
extern template class VRKLNU_EXPORT cls_ReadListPrimBase<double>;
extern template class VRKLNU_EXPORT cls_ReadListPrimBase<cow_String>;

// A list of values: Next gives the next one.
template <class T>
class cls_ReadListPrim : public cls_ReadListPrimBase<T> {
 public:
  virtual T Next() = 0;
};

// A list of strings gives each one through a result argument.
template <>
class VRKLNU_EXPORT cls_ReadListPrim<cow_String> : public cls_ReadListPrimBase<cow_String> {
 public:
  virtual void Next(cow_String& result) = 0;
};

// The next value of any list cursor.
template <class T>
T cls_ReadNext(cls_ReadListPrim<T>& cursor) {
  return cursor.Next();
}
inline cow_String cls_ReadNext(cls_ReadListPrim<cow_String>& cursor) {
  cow_String result;
  cursor.Next(result);
  return result;
}

// Maps of values by integer and by string key. T is int, unsigned, float, double or
// cow_String.
template <class T>
class cls_ReadMapInt2Prim : public cls_ReadCollectionBase {
 public:
  virtual void* Spare() { return nullptr; }
  virtual int HasMore() = 0;
  // The current entry's value, then its key; Key moves to the next entry.
  virtual T Value() = 0;
  virtual int Key() = 0;
};

template <class T>
class cls_ReadMapString2Prim : public cls_ReadCollectionBase {
 public:
  virtual void* Spare() { return nullptr; }
  virtual int HasMore() = 0;
  virtual T Value() = 0;
  virtual void Key(cow_String& result) = 0;
};

// Maps of objects: MakeReadObj gives the memento of the current element (null for a null
// element), which a cls_ReadVisitor takes over; Key, called after it, moves to the next.
class VRKLNU_EXPORT cls_ReadMapInt2Obj : public cls_ReadCollectionBase {
 public:
  virtual int HasMore() = 0;
  virtual int Key() = 0;
  virtual void* Spare1();
  virtual void* Spare2();
  virtual cls_MementoRead* MakeReadObj() = 0;
};

class VRKLNU_EXPORT cls_ReadMapString2Obj : public cls_ReadCollectionBase {
 public:
  virtual int HasMore() = 0;
  virtual void Key(cow_String& result) = 0;
  virtual void* Spare();
  virtual cls_MementoRead* MakeReadObj() = 0;
};

// A list of objects and a table from integer to integer. No code of the library reads them.
class VRKLNU_EXPORT cls_ReadListObj : public cls_ReadCollectionBase {
 public:
  virtual int Size() = 0;
  virtual int HasMore() = 0;
  virtual cls_MementoRead* MakeReadObj() = 0;
};

class VRKLNU_EXPORT cls_ReadIntTableInt : public mem_AllocationOperators {
 public:
  virtual ~cls_ReadIntTableInt();
  virtual int HasMore() = 0;
  virtual int Value() = 0;
  virtual int Key() = 0;
};

// Holds a read cursor for the span of one read constructor and deletes it at the end (also
// when a store exception passes). A null cursor is allowed.
template <class C>
class cls_ReadCursor {
 public:
  explicit cls_ReadCursor(C* cursor) : m_Cursor(cursor) {}
  cls_ReadCursor(const cls_ReadCursor&) = delete;
  cls_ReadCursor& operator=(const cls_ReadCursor&) = delete;
  ~cls_ReadCursor() { delete m_Cursor; }

  explicit operator bool() const { return m_Cursor != nullptr; }
  C* operator->() const { return m_Cursor; }
  C& operator*() const { return *m_Cursor; }

 private:
  C* m_Cursor;
};

extern template class VRKLNU_EXPORT cls_ReadListPrim<bool>;
extern template class VRKLNU_EXPORT cls_ReadListPrim<int>;
extern template class VRKLNU_EXPORT cls_ReadListPrim<unsigned>;
extern template class VRKLNU_EXPORT cls_ReadListPrim<float>;
extern template class VRKLNU_EXPORT cls_ReadListPrim<double>;
extern template class VRKLNU_EXPORT cls_ReadMapInt2Prim<int>;
extern template class VRKLNU_EXPORT cls_ReadMapInt2Prim<unsigned>;
extern template class VRKLNU_EXPORT cls_ReadMapInt2Prim<float>;
extern template class VRKLNU_EXPORT cls_ReadMapInt2Prim<double>;
extern template class VRKLNU_EXPORT cls_ReadMapInt2Prim<cow_String>;
extern template class VRKLNU_EXPORT cls_ReadMapString2Prim<int>;
extern template class VRKLNU_EXPORT cls_ReadMapString2Prim<unsigned>;
extern template class VRKLNU_EXPORT cls_ReadMapString2Prim<float>;
extern template class VRKLNU_EXPORT cls_ReadMapString2Prim<double>;
extern template class VRKLNU_EXPORT cls_ReadMapString2Prim<cow_String>;

#endif  // CLS_READCOLLECTIONBASE_H
