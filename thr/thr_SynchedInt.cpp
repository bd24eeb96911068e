#include "thr_SynchedInt.h"

// x86's strong ordering let these be empty on Windows; the C++ memory model needs real
// fences.
void thr_MemoryBarrier() {
  std::atomic_thread_fence(std::memory_order_seq_cst);
}

void thr_WriteMemoryBarrier() {
  std::atomic_thread_fence(std::memory_order_release);
}

void thr_ReadMemoryBarrier() {
  std::atomic_thread_fence(std::memory_order_acquire);
}

// The value itself is read with acquire and written with release as well, which costs
// nothing more and is what tools that do not model fences can follow.
int thr_SynchedInt::GetValue() const {
  const int value = m_Value.load(std::memory_order_acquire);
  thr_MemoryBarrier();
  return value;
}

void thr_SynchedInt::SetValue(int value) {
  thr_MemoryBarrier();
  m_Value.store(value, std::memory_order_release);
}

void thr_SynchedInt::WaitForValue(int value) const {
  while (m_Value.load(std::memory_order_acquire) != value) {
  }
  thr_MemoryBarrier();
}
