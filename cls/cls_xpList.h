// Lists as persistent values: a cow_List with an identity beside it, a read constructor and
// a DBWrite, so that a class with a list field reads and writes it in one line:
//
//   cls_xpListInt m_Ids;                                            // a field
//   m_Ids.DBWrite(cls_WriteVisitor(visitor, cls_FieldHandle(2, "m_Ids"), nullptr, &m_Ids));
//   m_Ids(cls_ReadVisitor(visitor, cls_FieldHandle(2, "m_Ids")))    // in a read constructor
//
// Each write sends the whole list again, under the identity, as a list record (class
// 0x230001, tag 5x for the element) through the memento's list cursor, one Append a value;
// nothing stays attached to the store. A copy shares the identity; assignment from a plain
// list gives new contents and so a new identity. The cls_xp1DArrayList family adds a uid home
// (cls_UidHome.h) and reads into a list made with room for the stored size.
//
// Failures: an index out of range ends the process as the list's range error does; store
// exceptions pass through; nothing else is reported. A value belongs to one thread at a time.
//
// Classes: cls_xpListInt (also called cls_xp1DArrayInt), cls_xpListFloat, cls_xpListDouble,
// cls_xpListString, and cls_xp1DArrayList{Bool,Double,Float,Int,String,Uint}; each has a
// <class>FromCow function that makes one, with a fresh identity, from a plain list.
#ifndef CLS_XPLIST_H
#define CLS_XPLIST_H

#include "VRKBasExport.h"
#include "VRKBasSharedContainers.h"
#include "cls_Uid.h"
#include "cls_UidHome.h"
#include "cls_xpValue.h"

class cls_ReadVisitor;
class cls_WriteVisitor;

template <class T>
class cls_xpList : public cls_xpValue<cow_List<T>, 0x230001> {
 public:
  typedef cow_List<T> Container;

  // Empty, with a fresh identity.
  cls_xpList() = default;
  // The list's contents, with a fresh identity.
  explicit cls_xpList(const Container& list) : Base(list) {}
  // The list's contents under the identity given, for an object that keeps the identity of
  // the list it stores.
  cls_xpList(const Container& list, const cls_Uid& uid) : Base(list, uid) {}
  // The stored list and its identity.
  explicit cls_xpList(const cls_ReadVisitor& visitor) : cls_xpList(visitor, false) {}
  // Copies share the contents (copy-on-write) and the identity.
  cls_xpList(const cls_xpList&) = default;
  cls_xpList& operator=(const cls_xpList&) = default;
  // New contents: a new stored object, with a new identity. Nothing on self-assignment.
  cls_xpList& operator=(const Container& list) {
    this->Assign(list);
    return *this;
  }

  void DBWrite(const cls_WriteVisitor& visitor) const;

 protected:
  typedef cls_xpValue<cow_List<T>, 0x230001> Base;

  // `presize`: make room for the stored size first, which also picks the list's block size.
  cls_xpList(const cls_ReadVisitor& visitor, bool presize);
};

template <class T>
class cls_xp1DArrayList : public cls_xpList<T> {
 public:
  typedef cow_List<T> Container;

  cls_xp1DArrayList() = default;
  // `size` elements of T().
  explicit cls_xp1DArrayList(int size);
  explicit cls_xp1DArrayList(const Container& list) : cls_xpList<T>(list) {}
  // The stored list and its identity, which goes to `uidHome` (if not null) when the value
  // dies.
  explicit cls_xp1DArrayList(const cls_ReadVisitor& visitor, cls_Uid* uidHome = nullptr)
      : cls_xpList<T>(visitor, true), m_UidHome(uidHome) {}
  ~cls_xp1DArrayList() { m_UidHome.Give(this->m_Uid); }
  using cls_xpList<T>::operator=;

 private:
  cls_UidHome m_UidHome;
};

extern template class VRKLNU_EXPORT cls_xpList<bool>;
extern template class VRKLNU_EXPORT cls_xpList<int>;
extern template class VRKLNU_EXPORT cls_xpList<unsigned>;
extern template class VRKLNU_EXPORT cls_xpList<float>;
extern template class VRKLNU_EXPORT cls_xpList<double>;
extern template class VRKLNU_EXPORT cls_xpList<cow_String>;
extern template class VRKLNU_EXPORT cls_xp1DArrayList<bool>;
extern template class VRKLNU_EXPORT cls_xp1DArrayList<int>;
extern template class VRKLNU_EXPORT cls_xp1DArrayList<unsigned>;
extern template class VRKLNU_EXPORT cls_xp1DArrayList<float>;
extern template class VRKLNU_EXPORT cls_xp1DArrayList<double>;
extern template class VRKLNU_EXPORT cls_xp1DArrayList<cow_String>;

// The double list has a constructor of its own, which stays as it is on purpose: from an int
// it makes a list of one element, that value, where the cls_xp1DArrayList classes make a
// list of that size.
class VRKLNU_EXPORT cls_xpListDouble : public cls_xpList<double> {
 public:
  using cls_xpList<double>::cls_xpList;
  using cls_xpList<double>::operator=;
  cls_xpListDouble() = default;
  explicit cls_xpListDouble(int value) { Append(value); }
  explicit cls_xpListDouble(const cls_ReadVisitor& visitor) : cls_xpList<double>(visitor) {}
};

typedef cls_xpList<int> cls_xpListInt;
typedef cls_xpList<int> cls_xp1DArrayInt;
typedef cls_xpList<float> cls_xpListFloat;
typedef cls_xpList<cow_String> cls_xpListString;
typedef cls_xp1DArrayList<bool> cls_xp1DArrayListBool;
typedef cls_xp1DArrayList<double> cls_xp1DArrayListDouble;
typedef cls_xp1DArrayList<float> cls_xp1DArrayListFloat;
typedef cls_xp1DArrayList<int> cls_xp1DArrayListInt;
typedef cls_xp1DArrayList<cow_String> cls_xp1DArrayListString;
typedef cls_xp1DArrayList<unsigned> cls_xp1DArrayListUint;

inline cls_xpListInt cls_xpListIntFromCow(const cow_List<int>& list) {
  return cls_xpListInt(list);
}
inline cls_xp1DArrayInt cls_xp1DArrayIntFromCow(const cow_List<int>& list) {
  return cls_xp1DArrayInt(list);
}
inline cls_xpListFloat cls_xpListFloatFromCow(const cow_List<float>& list) {
  return cls_xpListFloat(list);
}
inline cls_xpListDouble cls_xpListDoubleFromCow(const cow_List<double>& list) {
  return cls_xpListDouble(list);
}
inline cls_xpListString cls_xpListStringFromCow(const cow_List<cow_String>& list) {
  return cls_xpListString(list);
}
inline cls_xp1DArrayListBool cls_xp1DArrayListBoolFromCow(const cow_List<bool>& list) {
  return cls_xp1DArrayListBool(list);
}
inline cls_xp1DArrayListDouble cls_xp1DArrayListDoubleFromCow(const cow_List<double>& list) {
  return cls_xp1DArrayListDouble(list);
}
inline cls_xp1DArrayListFloat cls_xp1DArrayListFloatFromCow(const cow_List<float>& list) {
  return cls_xp1DArrayListFloat(list);
}
inline cls_xp1DArrayListInt cls_xp1DArrayListIntFromCow(const cow_List<int>& list) {
  return cls_xp1DArrayListInt(list);
}
inline cls_xp1DArrayListString cls_xp1DArrayListStringFromCow(const cow_List<cow_String>& list) {
  return cls_xp1DArrayListString(list);
}
inline cls_xp1DArrayListUint cls_xp1DArrayListUintFromCow(const cow_List<unsigned>& list) {
  return cls_xp1DArrayListUint(list);
}

#endif  // CLS_XPLIST_H
