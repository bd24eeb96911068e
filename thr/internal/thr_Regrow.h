// Growing the built-in arrays of the registry and the lock pool.
#ifndef THR_REGROW_H
#define THR_REGROW_H

#include <algorithm>
#include <type_traits>

#include "mem_Alloc.h"

// The first `count` elements of `old` in a new array of `capacity` elements; `old` is freed.
// The array comes from the memory layer outside its limit: this is the library's own
// bookkeeping, which an exception raised at the limit may still need. std::bad_alloc when the
// system refuses, and `old` then stays as it was.
template <class T>
T* thr_Regrow(T* old, int count, int capacity) {
  static_assert(std::is_trivially_copyable<T>::value, "the arrays hold plain values");
  T* grown = static_cast<T*>(mem_MallocThrow(sizeof(T) * capacity));
  std::copy(old, old + count, grown);
  mem_Free(old);
  return grown;
}

#endif  // THR_REGROW_H
