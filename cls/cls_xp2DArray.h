// Two-dimensional arrays as persistent values: a cow_2DArray with an identity beside it, a
// read constructor and a DBWrite (see cls_xpList.h for the family's rules). The array goes to
// the store as a list record (class 0x230001, tag 8x for the element), row after row, with
// the column count as the record's width; a reader takes the column count from the record's
// RowLength and the row count from its size:
//
//   cls_xp2DArrayFloat stress(3, 6);
//   stress.Get(2, 5) = 1.5f;
//   stress.DBWrite(fieldVisitor);
//
// A record with 0 columns, or with fewer values than one row, reads as a 0 by 0 array;
// values past the last full row are ignored. cls_xp2DArrayDouble adds a uid home
// (cls_UidHome.h). Each class has a <class>FromCow function that makes one, with a fresh
// identity, from a plain array.
#ifndef CLS_XP2DARRAY_H
#define CLS_XP2DARRAY_H

#include "VRKBasExport.h"
#include "VRKBasSharedContainers.h"
#include "cls_Uid.h"
#include "cls_UidHome.h"
#include "cls_xpValue.h"

class cls_ReadVisitor;
class cls_WriteVisitor;

template <class T>
class cls_xp2DArray : public cls_xpValue<cow_2DArray<T>, 0x230001> {
 public:
  typedef cow_2DArray<T> Container;

  // 0 by 0, with a fresh identity.
  cls_xp2DArray() = default;
  // `rows` by `cols` of T(), with a fresh identity.
  cls_xp2DArray(int rows, int cols) : Base(Container(rows, cols)) {}
  explicit cls_xp2DArray(const Container& array) : Base(array) {}
  explicit cls_xp2DArray(const cls_ReadVisitor& visitor);
  cls_xp2DArray(const cls_xp2DArray&) = default;
  cls_xp2DArray& operator=(const cls_xp2DArray&) = default;
  // New contents and a new identity; nothing on self-assignment.
  cls_xp2DArray& operator=(const Container& array) {
    this->Assign(array);
    return *this;
  }

  void DBWrite(const cls_WriteVisitor& visitor) const;

 private:
  typedef cls_xpValue<cow_2DArray<T>, 0x230001> Base;
};

extern template class VRKLNU_EXPORT cls_xp2DArray<int>;
extern template class VRKLNU_EXPORT cls_xp2DArray<float>;
extern template class VRKLNU_EXPORT cls_xp2DArray<double>;

class VRKLNU_EXPORT cls_xp2DArrayDouble : public cls_xp2DArray<double> {
 public:
  using cls_xp2DArray<double>::cls_xp2DArray;
  using cls_xp2DArray<double>::operator=;
  cls_xp2DArrayDouble() = default;
  // The stored array and its identity, which goes to `uidHome` (if not null) at the end.
  explicit cls_xp2DArrayDouble(const cls_ReadVisitor& visitor, cls_Uid* uidHome = nullptr)
      : cls_xp2DArray<double>(visitor), m_UidHome(uidHome) {}
  ~cls_xp2DArrayDouble() { m_UidHome.Give(m_Uid); }

 private:
  cls_UidHome m_UidHome;
};

typedef cls_xp2DArray<float> cls_xp2DArrayFloat;
typedef cls_xp2DArray<int> cls_xp2DArrayInt;

inline cls_xp2DArrayDouble cls_xp2DArrayDoubleFromCow(const cow_2DArray<double>& array) {
  return cls_xp2DArrayDouble(array);
}
inline cls_xp2DArrayFloat cls_xp2DArrayFloatFromCow(const cow_2DArray<float>& array) {
  return cls_xp2DArrayFloat(array);
}
inline cls_xp2DArrayInt cls_xp2DArrayIntFromCow(const cow_2DArray<int>& array) {
  return cls_xp2DArrayInt(array);
}

#endif  // CLS_XP2DARRAY_H
