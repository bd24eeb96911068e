// The memory layer: every block of the library comes from here and goes back through
// mem_Free. The layer keeps an exact account of the bytes it hands out (mem_Footprint) and
// can hold the throwing allocations to a limit:
//
//   mem_Mallopt(-5, 512u << 20);         // throwing allocations may hold at most 512 MiB
//   void* p = mem_OperatorNewThrow(64);  // raises through the out-of-memory handler past it
//   mem_Free(p);
//
// All functions are safe to call from any number of threads at once: the account is one
// atomic counter, and no lock is taken on the allocation path.
//
// Failure: a throwing allocation (mem_OperatorNew*Throw*, and the operators of the classes
// below) that the system refuses, or that would take the footprint past the limit, calls the
// out-of-memory handler, which throws; it never returns null. The plain block operations
// (mem_Malloc, mem_Calloc, mem_Realloc) are not held to the limit and return null when the
// system refuses, as malloc does.
#ifndef MEM_ALLOC_H
#define MEM_ALLOC_H

#include <atomic>
#include <cstddef>
#include <cstdlib>

#include "VRKBasExport.h"

// The fast paths below are inline, so that a throwing allocation costs the caller one call
// to malloc and one atomic addition; only failures leave them.
namespace mem_detail {

// Each block carries its requested size in a header of one alignment unit, so that the
// account is exact and the caller's pointer keeps malloc's alignment.
constexpr size_t kHeader = alignof(std::max_align_t);

extern VRKLNU_EXPORT std::atomic<unsigned long> footprint;
// The limit in bytes; the largest value when there is none.
extern VRKLNU_EXPORT std::atomic<unsigned long> limit;

// Gives back the `taken` bytes of the account and calls the out-of-memory handler with the
// size asked for.
[[noreturn]] VRKLNU_EXPORT void Refuse(size_t asked, size_t taken);

// The account is taken before the system is asked, so that threads racing for the last
// bytes under a limit cannot pass it together.
inline void* NewThrow(size_t size) {
  if (size > ~size_t{0} - kHeader) Refuse(size, 0);
  const unsigned long held = footprint.fetch_add(size, std::memory_order_relaxed) + size;
  void* raw = held <= limit.load(std::memory_order_relaxed) ? std::malloc(size + kHeader) : nullptr;
  if (__builtin_expect(raw == nullptr, 0)) Refuse(size, size);
  *static_cast<size_t*>(raw) = size;
  return static_cast<char*>(raw) + kHeader;
}

}  // namespace mem_detail

inline void* mem_OperatorNewThrow(size_t size) {
  return mem_detail::NewThrow(size);
}
// For very small blocks: use counts and two-word holders.
inline void* mem_OperatorNewTinyThrow(size_t size) {
  return mem_detail::NewThrow(size);
}
// For arrays of built-in types (see mem_BuiltInAlloc).
inline void* mem_OperatorNewThrowBuiltin(size_t size) {
  return mem_detail::NewThrow(size);
}

VRKLNU_EXPORT void* mem_Malloc(size_t size);
// mem_Malloc that raises std::bad_alloc, without the handler, when the system refuses: for the
// library's own bookkeeping, which must not fail on the limit meant for the job.
VRKLNU_EXPORT void* mem_MallocThrow(size_t size);
VRKLNU_EXPORT void* mem_Calloc(size_t count, size_t size);
// Keeps the content up to the smaller size; a null block makes a new one. On failure the old
// block stays valid and null is returned.
VRKLNU_EXPORT void* mem_Realloc(void* block, size_t size);

// Releases a block from any allocation function of this layer. Null is ignored.
inline void mem_Free(void* block) {
  if (block == nullptr) return;
  char* raw = static_cast<char*>(block) - mem_detail::kHeader;
  mem_detail::footprint.fetch_sub(*reinterpret_cast<size_t*>(raw), std::memory_order_relaxed);
  std::free(raw);
}

// Parameter -5 sets the memory limit in bytes (0 removes it) and returns 1. Every other
// parameter is refused with 0.
VRKLNU_EXPORT int mem_Mallopt(int parameter, unsigned long value);
// The limit set with mem_Mallopt, 0 when there is none.
VRKLNU_EXPORT unsigned long mem_MemoryLimit();
// Bytes now held through this layer, as requested by the callers.
VRKLNU_EXPORT unsigned long mem_Footprint();

// The function that a failed throwing allocation calls with the size asked for. It must
// throw; should it return, std::bad_alloc is thrown. Null installs the default, which throws
// std::bad_alloc. Returns the handler replaced.
typedef void (*mem_OutOfMemoryHandler)(size_t size);
VRKLNU_EXPORT mem_OutOfMemoryHandler mem_SetOutOfMemoryHandler(mem_OutOfMemoryHandler handler);

// A fixed entry point that a client can reference to tie itself to the layer. Does nothing.
VRKLNU_EXPORT void VRKBasMem_formalize();

VRKLNU_EXPORT void VRKBasAlloc_initialize(int& tally);
VRKLNU_EXPORT void VRKBasAlloc_finalize(int& tally);

// Base of every class of the library: its objects come from mem_OperatorNewThrow.
class VRKLNU_EXPORT mem_AllocationOperators {
 public:
  static void* operator new(size_t size);
  static void operator delete(void* block);
  static void* operator new[](size_t size);
  static void operator delete[](void* block);
  static void* operator new(size_t, void* place) { return place; }
  static void operator delete(void*, void*) {}
};

// Base of very small classes (two-word holders): objects come from mem_OperatorNewTinyThrow.
class VRKLNU_EXPORT mem_AllocationOperatorsTiny {
 public:
  static void* operator new(size_t size);
  static void operator delete(void* block);
  static void* operator new(size_t, void* place) { return place; }
  static void operator delete(void*, void*) {}
};

// Tag of the array new for built-in types: `int* a = new (mem_BuiltInAlloc{}) int[n];`.
// Such an array goes back with mem_Free(a), not delete[].
struct mem_BuiltInAlloc {};

VRKLNU_EXPORT void* operator new[](size_t size, mem_BuiltInAlloc);
VRKLNU_EXPORT void operator delete[](void* block, mem_BuiltInAlloc);

#endif  // MEM_ALLOC_H
