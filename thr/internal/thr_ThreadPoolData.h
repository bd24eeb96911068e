// The thread pool's slots and threads, in one block. thr_ThreadPool forwards to it.
//
// A slot's state goes 0 (idle) -> 1 (task handed over) -> 0 when the task has returned,
// and 0 -> 2 (asked to end) -> 3 (ended). The state is read without its lock by the
// hand-over's scan and by the worker; every change is made under the lock.
//
// The block outlives the pool object while threads it did not wait for at its end still
// run: each such thread holds it and the last one to leave destroys it.
#ifndef THR_THREADPOOLDATA_H
#define THR_THREADPOOLDATA_H

#include <pthread.h>

#include <atomic>

#include "VRKBasAtiThreadingModel.h"
#include "mem_Alloc.h"
#include "thr_Barrier.h"
#include "thr_CondVar.h"
#include "thr_Mutex.h"
#include "thr_Suspend.h"
#include "thr_ThreadPool.h"

enum thr_SlotState { thr_kIdle = 0, thr_kHandedOver = 1, thr_kAskedToEnd = 2, thr_kEnded = 3 };

class thr_ThreadPoolData;

struct thr_PoolSlot {
  std::atomic<int> state{thr_kIdle};
  // Guards the state and the two flags.
  thr_Mutex lock;
  std::atomic<VRKBasAtiThreadTask*> task{nullptr};
  // An idle worker sleeps here.
  thr_CondVar condition;
  // The task is not waited for when the pool ends.
  bool noJoin = false;
  // The pool ended without waiting for this thread, which then ends by itself.
  bool abandoned = false;
  pthread_t thread{};
  thr_Suspender::Record suspend;
  int index = 0;
  thr_ThreadPoolData* pool = nullptr;
};

class thr_ThreadPoolData : public mem_AllocationOperators {
 public:
  static constexpr int kSlots = thr_ThreadPool::kMaxThreads;

  thr_ThreadPoolData();
  thr_ThreadPoolData(const thr_ThreadPoolData&) = delete;
  thr_ThreadPoolData& operator=(const thr_ThreadPoolData&) = delete;

  void AddThreads(int count);
  bool RunTask(VRKBasAtiThreadTask* task, bool noJoin, int tries);
  void SetErrorCondition(bool failed);
  bool ErrorCondition() const { return m_ErrorCondition.load(std::memory_order_relaxed); }
  // Suspends or resumes every thread but the one in `skip` and the calling one.
  bool SuspendAllBut(int skip);
  void ResumeAllBut(int skip);
  // A slot outside the pool's is left alone.
  void TerminateThread(int slot);
  [[noreturn]] void ExitThread(int slot, int code);
  // Ends the pool's threads as the pool ends (see thr_ThreadPool's destructor) and lets go
  // of the block, which may be destroyed at once.
  void Close();

  int ThreadCount() const { return m_ThreadCount.load(std::memory_order_acquire); }
  bool IsResumed() const { return m_Resumed.load(std::memory_order_relaxed); }
  thr_Barrier& Barrier() { return m_Barrier; }
  // The calling thread's slot, null in a thread that is not a pool's.
  static thr_PoolSlot* CallingSlot();

 private:
  ~thr_ThreadPoolData();

  static void* Entry(void* slot);
  void Work(thr_PoolSlot& slot);
  void IdleStep(thr_PoolSlot& slot, int& idleSteps);
  void RunHandedOver(thr_PoolSlot& slot);
  void Leave(thr_PoolSlot& slot);
  int Candidate() const;
  // The slot's thread is left to end by itself; called under the slot's lock.
  void Abandon(thr_PoolSlot& slot);
  // Sets the slot's state to 2 and wakes its worker; called with the slot's lock held.
  void AskToEnd(thr_PoolSlot& slot);
  void EndAndJoin(thr_PoolSlot& slot);
  void Release();
  // The slots whose threads a suspend or resume reaches.
  bool Reachable(int slot, int skip) const;

  // Guards the error condition and the making of threads; destroyed last.
  thr_Mutex m_PoolLock;
  std::atomic<int> m_ThreadCount{0};
  std::atomic<bool> m_ErrorCondition{false};
  // Set when the pool ends; threads it does not wait for see it and end.
  std::atomic<bool> m_Closing{false};
  thr_Barrier m_Barrier;
  // False between a suspend and the next resume.
  std::atomic<bool> m_Resumed{true};
  thr_Suspender m_Suspender;
  // The pool object and every thread it did not wait for.
  std::atomic<int> m_Holders{1};
  thr_PoolSlot m_Slots[kSlots];
};

#endif  // THR_THREADPOOLDATA_H
