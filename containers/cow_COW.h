// A value shared until written: copies of a cow_COW share one object, and Get() gives the
// writer a private copy first when others still hold the object.
//
//   cow_COW<Table> a(Table(100));
//   cow_COW<Table> b = a;          // shared
//   b.Get().Resize(200);           // b copies first; a still sees 100 rows
//
// The policy says how the private copy is made: cow_Direct copy-constructs a T (for a
// value of known class), cow_Virtual calls the object's virtual Copy() (for a polymorphic
// class, so that the copy keeps the exact class). The sharing rules of cow_CountedHld
// apply: holders of one object belong to one thread at a time.
#ifndef COW_COW_H
#define COW_COW_H

#include <cassert>

#include "cow_CountedHld.h"

template <class T>
struct cow_Direct {
  static T* Copy(const T& value) { return new T(value); }
};

template <class T>
struct cow_Virtual {
  static T* Copy(const T& value) { return value.Copy(); }
};

template <class T, class Policy = cow_Direct<T>>
class cow_COW : public cow_CountedHld<T> {
 public:
  // Holds a copy of `value` made by the policy.
  explicit cow_COW(const T& value) : cow_CountedHld<T>(Policy::Copy(value)) {}
  // Adopts the object.
  explicit cow_COW(T* referent) : cow_CountedHld<T>(referent) {}

  // For reading, with no copy.
  const T& ConstGet() const { return this->GetRef(); }

  // For writing: a shared object is first copied for this holder alone. The holder must
  // hold an object.
  T& Get() {
    assert(this->GetPtr() != nullptr);
    if (this->UseCount() != 1) cow_CountedHld<T>::operator=(Policy::Copy(this->GetRef()));
    return this->GetRef();
  }
};

#endif  // COW_COW_H
