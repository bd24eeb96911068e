// An int that one thread sets and others wait for, with the memory barriers it uses.
//
//   thr_SynchedInt phase;           // 0
//   // producer: fill(data); phase.SetValue(1);
//   // consumer: phase.WaitForValue(1); use(data);
//
// What a thread wrote before SetValue is visible to a thread that has read the value with
// GetValue or WaitForValue. WaitForValue spins without pause: it is meant for short waits
// on a processor of its own.
#ifndef THR_SYNCHEDINT_H
#define THR_SYNCHEDINT_H

#include <atomic>

#include "VRKBasExport.h"
#include "mem_Alloc.h"

// Full, store and load fences: no memory access moves across them (the store fence keeps
// earlier accesses before later stores, the load fence later accesses after earlier loads).
VRKLNU_EXPORT void thr_MemoryBarrier();
VRKLNU_EXPORT void thr_WriteMemoryBarrier();
VRKLNU_EXPORT void thr_ReadMemoryBarrier();

class VRKLNU_EXPORT thr_SynchedInt : public mem_AllocationOperators {
 public:
  explicit thr_SynchedInt(int value = 0) : m_Value(value) {}
  thr_SynchedInt(const thr_SynchedInt&) = delete;
  thr_SynchedInt& operator=(const thr_SynchedInt&) = delete;

  int GetValue() const;
  void SetValue(int value);
  // Spins until the value equals `value`.
  void WaitForValue(int value) const;

 private:
  std::atomic<int> m_Value;
};

#endif  // THR_SYNCHEDINT_H
