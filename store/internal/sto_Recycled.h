// Blocks of one class kept for reuse on each thread. The mementos of the store are made and
// deleted once an object, a few at a time: a class that derives from sto_Recycled<Itself>
// takes its blocks from a short list of its thread's freed ones before it asks the memory
// layer. The list is given back when the thread ends.
#ifndef STO_RECYCLED_H
#define STO_RECYCLED_H

#include <cstddef>
#include <new>
#include <utility>

#include "mem_Alloc.h"

template <class T>
class sto_Recycled {
 public:
  static void* operator new(size_t size) {
    Pool& pool = t_Pool;
    if (size != sizeof(T) || pool.free == nullptr) return mem_OperatorNewThrow(size);
    Block* block = pool.free;
    pool.free = block->next;
    --pool.count;
    return block;
  }
  static void operator delete(void* block, size_t size) {
    Pool& pool = t_Pool;
    if (size != sizeof(T) || pool.count == kKept) return mem_Free(block);
    pool.free = new (block) Block{pool.free};
    ++pool.count;
  }

 private:
  static constexpr int kKept = 64;
  struct Block {
    Block* next;
  };
  struct Pool {
    ~Pool() {
      while (free != nullptr)
        mem_Free(std::exchange(free, free->next));
    }
    Block* free = nullptr;
    int count = 0;
  };
  static thread_local Pool t_Pool;
};

template <class T>
thread_local typename sto_Recycled<T>::Pool sto_Recycled<T>::t_Pool;

#endif  // STO_RECYCLED_H
