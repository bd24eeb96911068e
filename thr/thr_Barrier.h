// A spin barrier: BarrierSync(n) returns in each of n threads once all n have arrived.
//
//   thr_Barrier barrier;
//   // in each of 4 threads:  step1(); barrier.BarrierSync(4); step2();
//
// Threads spin while they wait, which suits short waits with a processor each; now and then
// a spinning thread offers its processor to others. What a
// thread did before the barrier is visible to all after it. The barrier may be used again
// at once; a thread that comes back early waits until the previous round has emptied.
// While spinning, every millionth turn looks at the thread pool's error condition: when it
// is set, a program thread ends the process with exit(1) and a pool thread ends itself
// through the pool, which ends the process as well (see thr_ThreadPool::ExitThread).
// A thread's first barrier gives it its thr_ThreadId; a program thread releases that with
// the rest of its thread objects (thr_ThrSingletonRegistry::FinalizeThread).
#ifndef THR_BARRIER_H
#define THR_BARRIER_H

#include <atomic>

#include "VRKBasAtiThreadingModel.h"
#include "VRKBasExport.h"
#include "thr_Mutex.h"

class VRKLNU_EXPORT thr_Barrier : public VRKBasAtiBarrier {
 public:
  thr_Barrier() = default;
  thr_Barrier(const thr_Barrier&) = delete;
  thr_Barrier& operator=(const thr_Barrier&) = delete;
  // Waits until the last round has emptied.
  ~thr_Barrier() override;

  // A count of 1 (or 0) returns at once.
  void BarrierSync(unsigned int count) override;
  int id() const override { return 301; }

 private:
  // Spins while the release flag differs from `released`.
  void SpinUntil(int released) const;

  thr_Mutex m_Lock;
  int m_Arrived = 0;
  // Set by the last to arrive, cleared by the last to leave; polled without the lock.
  std::atomic<int> m_Released{0};
};

#endif  // THR_BARRIER_H
