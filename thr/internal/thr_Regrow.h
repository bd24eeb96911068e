// Growing the built-in arrays of the registry and the lock pool.
#ifndef THR_REGROW_H
#define THR_REGROW_H

#include <algorithm>

#include "mem_Alloc.h"

// The first `count` elements of `old` in a new array of `capacity` elements from the
// memory layer; `old` is freed. Should the allocation fail, `old` stays as it was.
template <class T>
T* thr_Regrow(T* old, int count, int capacity) {
  T* grown = new (mem_BuiltInAlloc{}) T[capacity];
  std::copy(old, old + count, grown);
  mem_Free(old);
  return grown;
}

#endif  // THR_REGROW_H
