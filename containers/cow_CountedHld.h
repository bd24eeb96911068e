// A counted owner of one heap object. Holders made by copying share the object and one
// use count; the last holder to go destroys the object.
//
//   cow_CountedHld<Mesh> a(new Mesh);  // count 1
//   cow_CountedHld<Mesh> b = a;        // count 2, same object
//
// The count is a plain int in a 4-byte block of its own, changed without lock or atomic
// operation: holders of one object belong to one thread at a time, even when each thread
// has a holder of its own. A program that shares an object between threads guards it
// itself, or gives each thread a deep copy.
#ifndef COW_COUNTEDHLD_H
#define COW_COUNTEDHLD_H

#include "mem_Alloc.h"

template <class T>
class cow_CountedHld : public mem_AllocationOperatorsTiny {
 public:
  // Takes ownership of `referent` with a count of 1. A holder of null needs no count block
  // until it is given an object, which keeps empty holders (the free links of a tree) cheap.
  explicit cow_CountedHld(T* referent) : m_Count(NewCount(referent)), m_Referent(referent) {}
  cow_CountedHld(const cow_CountedHld& other)
      : m_Count(other.m_Count), m_Referent(other.m_Referent) {
    if (m_Count) ++*m_Count;
  }
  cow_CountedHld& operator=(const cow_CountedHld& other) {
    if (other.m_Count) ++*other.m_Count;
    Release();
    m_Count = other.m_Count;
    m_Referent = other.m_Referent;
    return *this;
  }
  ~cow_CountedHld() { Release(); }

  // Installs a new object. A sole holder destroys its old object and keeps its count; a
  // sharing holder leaves the old object to the others and takes a new count of 1. The
  // pointer already held must not be passed again.
  cow_CountedHld& operator=(T* referent) {
    if (m_Count && *m_Count == 1) {
      delete m_Referent;
    } else {
      int* count = NewCount(referent);
      if (m_Count) --*m_Count;
      m_Count = count;
    }
    m_Referent = referent;
    return *this;
  }

  // The object, with no check.
  T* GetPtr() const { return m_Referent; }
  T& GetRef() const { return *m_Referent; }
  // Holders that share the object; 0 for a holder that never had one.
  int UseCount() const { return m_Count ? *m_Count : 0; }

 protected:
  // Destroys the object, frees the count block and clears both pointers.
  void Delete() {
    DeleteReferent();
    mem_Free(m_Count);
    m_Count = nullptr;
  }
  // Destroys the object only.
  void DeleteReferent() {
    delete m_Referent;
    m_Referent = nullptr;
  }

 private:
  void Release() {
    if (m_Count && --*m_Count == 0) Delete();
  }

  // A count of 1 for a new object, none for null. Should the count block fail, the object
  // is destroyed, since the holder took it over.
  static int* NewCount(T* referent) {
    if (referent == nullptr) return nullptr;
    int* count;
    try {
      count = static_cast<int*>(mem_OperatorNewTinyThrow(sizeof(int)));
    } catch (...) {
      delete referent;
      throw;
    }
    *count = 1;
    return count;
  }

  int* m_Count;
  T* m_Referent;
};

#endif  // COW_COUNTEDHLD_H
