#include "mem_Alloc.h"

#include <atomic>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <new>

#include "VRKBasCountedPair.h"

namespace {

// Each block carries its requested size in a header of one alignment unit, so that the
// account is exact and the caller's pointer keeps malloc's alignment.
constexpr size_t kHeader = alignof(std::max_align_t);
constexpr unsigned long kNoLimit = std::numeric_limits<unsigned long>::max();

std::atomic<unsigned long> footprint{0};
std::atomic<unsigned long> limit{kNoLimit};
std::atomic<mem_OutOfMemoryHandler> handler{nullptr};
int useCount = 0;

void* ToBlock(void* raw, size_t size) {
  *static_cast<size_t*>(raw) = size;
  return static_cast<char*>(raw) + kHeader;
}

void* ToRaw(void* block) {
  return static_cast<char*>(block) - kHeader;
}

size_t SizeOf(void* block) {
  return *static_cast<size_t*>(ToRaw(block));
}

[[noreturn]] void OutOfMemory(size_t size) {
  if (mem_OutOfMemoryHandler h = handler.load(std::memory_order_acquire)) h(size);
  throw std::bad_alloc();
}

// The account is taken before the system is asked, so that threads racing for the last
// bytes under a limit cannot pass it together.
void* NewThrow(size_t size) {
  if (size > std::numeric_limits<size_t>::max() - kHeader) OutOfMemory(size);
  const unsigned long held = footprint.fetch_add(size, std::memory_order_relaxed) + size;
  void* raw = held <= limit.load(std::memory_order_relaxed) ? std::malloc(size + kHeader) : nullptr;
  if (raw == nullptr) {
    footprint.fetch_sub(size, std::memory_order_relaxed);
    OutOfMemory(size);
  }
  return ToBlock(raw, size);
}

void* Account(void* raw, size_t size) {
  if (raw == nullptr) return nullptr;
  footprint.fetch_add(size, std::memory_order_relaxed);
  return ToBlock(raw, size);
}

}  // namespace

void* mem_OperatorNewThrow(size_t size) {
  return NewThrow(size);
}

void* mem_OperatorNewTinyThrow(size_t size) {
  return NewThrow(size);
}

void* mem_OperatorNewThrowBuiltin(size_t size) {
  return NewThrow(size);
}

void* mem_Malloc(size_t size) {
  if (size > std::numeric_limits<size_t>::max() - kHeader) return nullptr;
  return Account(std::malloc(size + kHeader), size);
}

void* mem_Calloc(size_t count, size_t size) {
  if (size != 0 && count > (std::numeric_limits<size_t>::max() - kHeader) / size) return nullptr;
  return Account(std::calloc(1, count * size + kHeader), count * size);
}

void* mem_Realloc(void* block, size_t size) {
  if (block == nullptr) return mem_Malloc(size);
  if (size > std::numeric_limits<size_t>::max() - kHeader) return nullptr;
  const size_t old = SizeOf(block);
  void* raw = std::realloc(ToRaw(block), size + kHeader);
  if (raw == nullptr) return nullptr;
  footprint.fetch_sub(old, std::memory_order_relaxed);
  return Account(raw, size);
}

void mem_Free(void* block) {
  if (block == nullptr) return;
  footprint.fetch_sub(SizeOf(block), std::memory_order_relaxed);
  std::free(ToRaw(block));
}

int mem_Mallopt(int parameter, unsigned long value) {
  if (parameter != -5) return 0;
  limit.store(value == 0 ? kNoLimit : value, std::memory_order_relaxed);
  return 1;
}

unsigned long mem_MemoryLimit() {
  const unsigned long value = limit.load(std::memory_order_relaxed);
  return value == kNoLimit ? 0 : value;
}

unsigned long mem_Footprint() {
  return footprint.load(std::memory_order_relaxed);
}

mem_OutOfMemoryHandler mem_SetOutOfMemoryHandler(mem_OutOfMemoryHandler newHandler) {
  return handler.exchange(newHandler, std::memory_order_acq_rel);
}

void VRKBasMem_formalize() {}

void VRKBasAlloc_initialize(int& tally) {
  VRKBasCountedEnter(useCount, tally, "VRKBasAlloc");
}

void VRKBasAlloc_finalize(int& tally) {
  VRKBasCountedLeave(useCount, tally, "VRKBasAlloc");
}

void* mem_AllocationOperators::operator new(size_t size) {
  return mem_OperatorNewThrow(size);
}

void mem_AllocationOperators::operator delete(void* block) {
  mem_Free(block);
}

void* mem_AllocationOperators::operator new[](size_t size) {
  return mem_OperatorNewThrow(size);
}

void mem_AllocationOperators::operator delete[](void* block) {
  mem_Free(block);
}

void* mem_AllocationOperatorsTiny::operator new(size_t size) {
  return mem_OperatorNewTinyThrow(size);
}

void mem_AllocationOperatorsTiny::operator delete(void* block) {
  mem_Free(block);
}

void* operator new[](size_t size, mem_BuiltInAlloc) {
  return mem_OperatorNewThrowBuiltin(size);
}

void operator delete[](void* block, mem_BuiltInAlloc) {
  mem_Free(block);
}
