// One block of a cow_List: room for a fixed number of elements, shared by the lists whose
// block tables point to it. The block keeps only its use count; which of its slots hold live
// elements follows from the list's count and head, and the list constructs and destroys them
// in place.
#ifndef COW_LISTBLOCK_H
#define COW_LISTBLOCK_H

#include <cstddef>

#include "mem_Alloc.h"

// mem_Realloc (a null block makes a new one) that raises through the memory layer's
// out-of-memory handler instead of returning null, so that container code never goes on with
// a missing block.
inline void* cow_ReallocOrRaise(void* block, size_t size) {
  void* result = mem_Realloc(block, size);
  if (result == nullptr) mem_detail::Refuse(size, 0);
  return result;
}

template <class T>
class cow_ListBlock : public mem_AllocationOperatorsTiny {
 public:
  static_assert(alignof(T) <= alignof(std::max_align_t), "blocks keep malloc's alignment");

  // Raw room for `capacity` elements, with a use count of 1.
  explicit cow_ListBlock(int capacity)
      : m_Data(static_cast<T*>(cow_ReallocOrRaise(nullptr, sizeof(T) * capacity))) {}
  // Frees the room; the owner has destroyed the live elements.
  ~cow_ListBlock() { mem_Free(m_Data); }
  cow_ListBlock(const cow_ListBlock&) = delete;
  cow_ListBlock& operator=(const cow_ListBlock&) = delete;

  int m_UseCount = 1;
  T* m_Data;
};

#endif  // COW_LISTBLOCK_H
