#include "mem_Alloc.h"

#include <atomic>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <new>

#include "VRKBasCountedPair.h"

namespace {

using mem_detail::footprint;
using mem_detail::kHeader;
using mem_detail::limit;

constexpr unsigned long kNoLimit = std::numeric_limits<unsigned long>::max();

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

void* Account(void* raw, size_t size) {
  if (raw == nullptr) return nullptr;
  footprint.fetch_add(size, std::memory_order_relaxed);
  return ToBlock(raw, size);
}

}  // namespace

std::atomic<unsigned long> mem_detail::footprint{0};
std::atomic<unsigned long> mem_detail::limit{kNoLimit};

void mem_detail::Refuse(size_t asked, size_t taken) {
  footprint.fetch_sub(taken, std::memory_order_relaxed);
  if (mem_OutOfMemoryHandler h = handler.load(std::memory_order_acquire)) h(asked);
  throw std::bad_alloc();
}

void* mem_Malloc(size_t size) {
  if (size > std::numeric_limits<size_t>::max() - kHeader) return nullptr;
  return Account(std::malloc(size + kHeader), size);
}

void* mem_MallocThrow(size_t size) {
  void* block = mem_Malloc(size);
  if (block == nullptr) throw std::bad_alloc();
  return block;
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
