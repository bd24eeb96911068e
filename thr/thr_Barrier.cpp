#include "thr_Barrier.h"

#include <cstdlib>
#include <thread>

#include "thr_ThreadId.h"
#include "thr_ThreadPool.h"

namespace {

// Spins between two looks at the pool's error condition.
constexpr unsigned long kSpinsPerLook = 1000000;
// Spins between two offers of the processor to other threads: when there are more threads
// than processors, the ones still to come get to run.
constexpr unsigned long kSpinsPerYield = 1024;

// Ends the calling thread when the pool has failed, rather than wait for threads that
// will not come.
void EndIfPoolFailed() {
  if (!thr_ThreadPool::ErrorConditionSet()) return;
  const int id = thr_ThreadId::Instance().GetId();
  if (id < 1) std::exit(1);
  thr_ThreadPool& pool = thr_ThreadPool::Instance();
  pool.TerminateThread(id - 1);
  pool.ExitThread(id - 1, 1);
}

}  // namespace

thr_Barrier::~thr_Barrier() {
  SpinUntil(0);
  m_Lock.Lock();
  m_Lock.Unlock();
}

void thr_Barrier::BarrierSync(unsigned int count) {
  if (count <= 1) return;
  thr_ThreadId::Instance();
  SpinUntil(0);
  m_Lock.Lock();
  if (static_cast<unsigned int>(++m_Arrived) == count) {
    m_Released.store(1, std::memory_order_relaxed);
  }
  m_Lock.Unlock();
  SpinUntil(1);
  m_Lock.Lock();
  if (--m_Arrived == 0) m_Released.store(0, std::memory_order_relaxed);
  m_Lock.Unlock();
}

void thr_Barrier::SpinUntil(int released) const {
  for (unsigned long spins = 1; m_Released.load(std::memory_order_relaxed) != released; ++spins) {
    if (spins % kSpinsPerYield == 0) std::this_thread::yield();
    if (spins % kSpinsPerLook == 0) EndIfPoolFailed();
  }
}
