#include "thr_ThreadPoolData.h"

#include <sched.h>

#include <cstdlib>

#include "omi_FatalError.h"
#include "thr_SharedHold.h"
#include "thr_ThrSingletonRegistry.h"
#include "thr_ThreadId.h"
#include "thr_ThreadPool.h"

namespace {

// An idle worker waits this long on its condition at each of its first idle steps; after
// kShallowSteps of them it waits without limit.
constexpr int kIdleMilliseconds = 10;
constexpr int kShallowSteps = 100;

// The slot of the calling thread, null in a thread that is not the pool's.
thread_local thr_PoolSlot* t_Slot = nullptr;

bool IsSlot(int slot) {
  return slot >= 0 && slot < thr_ThreadPoolData::kSlots;
}

}  // namespace

thr_ThreadPoolData::thr_ThreadPoolData() {
  for (int i = 0; i < kSlots; ++i) {
    m_Slots[i].index = i;
    m_Slots[i].pool = this;
  }
}

// A task handed to a slot that never had a thread was not run; it goes with the pool.
thr_ThreadPoolData::~thr_ThreadPoolData() {
  for (thr_PoolSlot& slot : m_Slots)
    delete slot.task.load(std::memory_order_acquire);
}

thr_PoolSlot* thr_ThreadPoolData::CallingSlot() {
  return t_Slot;
}

void thr_ThreadPoolData::AddThreads(int count) {
  if (count == 0) return;
  thr_Hold<thr_Mutex> hold(m_PoolLock);
  const int first = ThreadCount();
  if (count < 0 || count > kSlots - first) {
    throw omi_FatalError("thr_ThreadPool::AddThreads: the pool holds at most 1024 threads", 0);
  }
  thr_installSignalHandler(true, true);
  for (int i = first; i < first + count; ++i) {
    const int error = thr_Suspender::StartThread(m_Slots[i].thread, Entry, &m_Slots[i]);
    if (error != 0)
      throw omi_FatalError("thr_ThreadPool::AddThreads: cannot start a thread", error);
    m_ThreadCount.store(i + 1, std::memory_order_release);
  }
}

bool thr_ThreadPoolData::RunTask(VRKBasAtiThreadTask* task, bool noJoin, int tries) {
  if (task == nullptr) return false;
  for (int tried = 0; tries <= 0 || tried < tries; ++tried) {
    thr_PoolSlot& slot = m_Slots[Candidate()];
    thr_Hold<thr_Mutex> hold(slot.lock);
    if (slot.state.load(std::memory_order_relaxed) != thr_kIdle) continue;
    slot.task.store(task, std::memory_order_release);
    slot.condition.Lock();
    slot.state.store(thr_kHandedOver, std::memory_order_relaxed);
    slot.noJoin = noJoin;
    slot.condition.Unlock();
    // After the unlock, so that the worker does not wake only to wait for the condition's
    // lock. It cannot miss the signal: it looks at the state under that lock before waiting.
    slot.condition.Signal();
    return true;
  }
  return false;
}

// The first idle slot below the last thread's, else the last thread's (slot 0 when there
// are no threads). The states are read without locks; the caller decides under the lock.
int thr_ThreadPoolData::Candidate() const {
  const int last = ThreadCount() - 1;
  int slot = 0;
  while (slot < last && m_Slots[slot].state.load(std::memory_order_relaxed) != thr_kIdle)
    ++slot;
  return slot;
}

void thr_ThreadPoolData::SetErrorCondition(bool failed) {
  thr_Hold<thr_Mutex> hold(m_PoolLock);
  m_ErrorCondition.store(failed, std::memory_order_relaxed);
}

bool thr_ThreadPoolData::Reachable(int slot, int skip) const {
  const int state = m_Slots[slot].state.load(std::memory_order_relaxed);
  return slot != skip && state != thr_kAskedToEnd && state != thr_kEnded &&
         !pthread_equal(m_Slots[slot].thread, pthread_self());
}

bool thr_ThreadPoolData::SuspendAllBut(int skip) {
  thr_Hold<thr_Suspender> hold(m_Suspender);
  m_Resumed.store(false, std::memory_order_relaxed);
  bool allStopped = true;
  for (int i = 0; i < ThreadCount(); ++i) {
    if (Reachable(i, skip))
      allStopped &= m_Suspender.Suspend(m_Slots[i].thread, m_Slots[i].suspend);
  }
  return allStopped;
}

void thr_ThreadPoolData::ResumeAllBut(int skip) {
  thr_Hold<thr_Suspender> hold(m_Suspender);
  m_Resumed.store(true, std::memory_order_relaxed);
  for (int i = 0; i < ThreadCount(); ++i) {
    if (Reachable(i, skip)) m_Suspender.Resume(m_Slots[i].thread, m_Slots[i].suspend);
  }
}

void thr_ThreadPoolData::TerminateThread(int slot) {
  if (IsSlot(slot)) {
    thr_Hold<thr_Mutex> hold(m_Slots[slot].lock);
    AskToEnd(m_Slots[slot]);
  }
  thr_ThrSingletonRegistry::FinalizeCallingThread();
}

// Under the condition's lock and with a signal, so that a worker asleep on it without limit
// wakes and sees the request: it looks at the state under that lock before it waits.
void thr_ThreadPoolData::AskToEnd(thr_PoolSlot& slot) {
  thr_Hold<thr_CondVar> wake(slot.condition);
  slot.state.store(thr_kAskedToEnd, std::memory_order_relaxed);
  slot.condition.Signal();
}

// Win32 compared two pseudo-handles here, which are always equal, so every caller ends
// the process; that is kept.
void thr_ThreadPoolData::ExitThread(int slot, int code) {
  if (IsSlot(slot)) {
    thr_Hold<thr_Mutex> hold(m_Slots[slot].lock);
    m_Slots[slot].state.store(thr_kEnded, std::memory_order_relaxed);
  }
  std::exit(code);
}

void* thr_ThreadPoolData::Entry(void* argument) {
  thr_PoolSlot& slot = *static_cast<thr_PoolSlot*>(argument);
  t_Slot = &slot;
  thr_ThreadId::Instance().SetId(slot.index + 1);
  slot.pool->m_Suspender.Adopt(&slot.suspend);
  slot.pool->Work(slot);
  slot.pool->Leave(slot);
  return nullptr;
}

void thr_ThreadPoolData::Work(thr_PoolSlot& slot) {
  int idleSteps = 0;
  for (;;) {
    const int state = slot.state.load(std::memory_order_relaxed);
    if (state == thr_kHandedOver) {
      RunHandedOver(slot);
    } else if (state == thr_kIdle && !m_Closing.load(std::memory_order_acquire)) {
      IdleStep(slot, idleSteps);
      ++idleSteps;
    } else {
      return;
    }
  }
}

// A wait on the slot's condition, so that a hand-over wakes the worker at once: at first
// for a short while each time, then, once it has been idle for about a second, without
// limit.
void thr_ThreadPoolData::IdleStep(thr_PoolSlot& slot, int& idleSteps) {
  int milliseconds = kIdleMilliseconds;
  if (idleSteps >= kShallowSteps) {
    idleSteps = 0;
    milliseconds = 0;
  }
  thr_Hold<thr_CondVar> hold(slot.condition);
  if (slot.state.load(std::memory_order_relaxed) == thr_kIdle &&
      !m_Closing.load(std::memory_order_acquire)) {
    slot.condition.WaitForSignalMilliseconds(milliseconds);
  }
}

void thr_ThreadPoolData::RunHandedOver(thr_PoolSlot& slot) {
  VRKBasAtiThreadTask* task;
  while ((task = slot.task.exchange(nullptr, std::memory_order_acquire)) == nullptr) {
  }
  task->Run(slot.index);
  delete task;
  thr_Hold<thr_Mutex> hold(slot.lock);
  slot.state.store(thr_kIdle, std::memory_order_relaxed);
  slot.noJoin = false;
}

void thr_ThreadPoolData::Leave(thr_PoolSlot& slot) {
  TerminateThread(slot.index);
  m_Suspender.Adopt(nullptr);
  t_Slot = nullptr;
  bool abandoned;
  {
    thr_Hold<thr_Mutex> hold(slot.lock);
    slot.state.store(thr_kEnded, std::memory_order_relaxed);
    abandoned = slot.abandoned;
  }
  if (!abandoned) return;
  Release();
  thr_ReleaseShared();
}

void thr_ThreadPoolData::Close() {
  const int count = m_ThreadCount.exchange(0);
  const bool failed = ErrorCondition();
  for (int i = 0; i < count; ++i) {
    thr_PoolSlot& slot = m_Slots[i];
    thr_Hold<thr_Mutex> hold(slot.lock);
    // A thread cannot wait for itself: one that ends the pool is left to end by itself.
    if (slot.state.load(std::memory_order_relaxed) != thr_kEnded &&
        (failed || slot.noJoin || pthread_equal(slot.thread, pthread_self()))) {
      Abandon(slot);
    }
  }
  m_Closing.store(true, std::memory_order_release);
  for (int i = 0; i < count; ++i) {
    thr_PoolSlot& slot = m_Slots[i];
    if (slot.abandoned) {
      thr_Hold<thr_CondVar> hold(slot.condition);
      slot.condition.Signal();
    } else {
      EndAndJoin(slot);
    }
  }
  Release();
}

void thr_ThreadPoolData::Abandon(thr_PoolSlot& slot) {
  slot.abandoned = true;
  m_Holders.fetch_add(1, std::memory_order_relaxed);
  thr_HoldShared();
  pthread_detach(slot.thread);
}

// Win32 waited on the handle in steps until the thread ended or reported its end; the
// join gives the same, since a thread that reports its end returns right after.
void thr_ThreadPoolData::EndAndJoin(thr_PoolSlot& slot) {
  while (slot.state.load(std::memory_order_relaxed) == thr_kHandedOver)
    sched_yield();
  {
    thr_Hold<thr_Mutex> hold(slot.lock);
    if (slot.state.load(std::memory_order_relaxed) == thr_kIdle) AskToEnd(slot);
  }
  pthread_join(slot.thread, nullptr);
}

void thr_ThreadPoolData::Release() {
  if (m_Holders.fetch_sub(1, std::memory_order_acq_rel) == 1) delete this;
}
