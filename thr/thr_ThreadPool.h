// The process's thread pool: up to 1024 worker threads, each in a slot, and a task handed
// straight to an idle worker; there is no queue.
//
//   thr_ThreadPool& pool = thr_ThreadPool::Instance();
//   pool.AddThreads(4);
//   if (!pool.RunTask(new Sum(part), false, 1)) ...    // no worker was idle
//
// A task derives from VRKBasAtiThreadTask and overrides Run(int slot). The worker that
// takes it runs it and then deletes it; an exception must not leave Run. RunTask looks at
// the slots below the last thread's for an idle one and otherwise tries the last thread's
// slot; with `tries` above 0 it gives up after that many attempts, otherwise it tries until
// a worker is free, spinning. On a pool with no threads the task goes to slot 0 and waits
// there for the first thread that AddThreads makes.
//
// An idle worker waits on its slot's condition: 10 ms at a time for about a second, then
// without limit; a hand-over wakes it at once either way.
//
// The pool is a global singleton made at the thread package's start, with no threads, and
// ended at its stop. Its end asks each idle thread to end and waits for it, after any
// running task, except threads whose task was handed over with `noJoin`, the thread that
// ends the pool, and every thread once the error condition is set: those run on and end by
// themselves once their task returns. What they use of the thread package (thread objects,
// the global lock, pool locks) stays until the last of them has left, also when the package
// stops first.
//
// Suspending stops the pool's threads (all, or all but one slot) with a signal; the
// calling thread is never stopped. While threads are stopped they may hold any lock, the
// allocator's included: until they are resumed the caller must not allocate, print, hand
// over tasks or take a lock a task might hold. A thread that blocks the two signals
// (thr_maskSuspendSignalsInThread) cannot be stopped: the suspend then reports false after
// a second. Suspends are counted per thread, as resumes.
#ifndef THR_THREADPOOL_H
#define THR_THREADPOOL_H

#include "VRKBasAtiThreadingModel.h"
#include "VRKBasExport.h"
#include "thr_Barrier.h"
#include "thr_GlobalSingleton.h"

class thr_ThreadPool;
class thr_ThreadPoolData;
extern template class VRKLNU_EXPORT thr_GlobalSingletonBase<thr_ThreadPool>;

// Gives up on the calling thread's work. A code other than 0 sets the pool's error
// condition and ends the process with that code; threads spinning in a barrier end with
// it. Code 0 ends the pool; a thread of the pool then ends itself once its task returns,
// and any other thread ends the process with exit(0).
VRKLNU_EXPORT void thr_ErrorInThread(int code);

// Installs the handlers of the signals that stop (`suspend`) and restart (`resume`) the
// pool's threads: for programs that replace signal handlers after the pool has started
// threads. AddThreads installs both.
VRKLNU_EXPORT void thr_installSignalHandler(bool suspend, bool resume);
// A nonzero `mask` blocks the two signals in the calling thread, so that it cannot be
// stopped; 0 lets them through again. The pool's threads start with them let through.
VRKLNU_EXPORT void thr_maskSuspendSignalsInThread(int mask);

class VRKLNU_EXPORT thr_ThreadPool : public thr_GlobalSingleton<thr_ThreadPool> {
 public:
  // The kind of thread AddThreads makes; kept for callers, all threads are alike.
  enum e_threadType { e_anyThread };

  static constexpr int kMaxThreads = 1024;

  // Starts `count` more threads. Raises omi_FatalError, with no thread started, when the
  // pool would pass 1024 threads or `count` is negative, and when the system refuses a
  // thread (the ones already started stay).
  void AddThreads(int count, e_threadType type = e_anyThread);
  // True when the task was handed over; the pool owns it then. False, with the task still
  // the caller's, when `tries` attempts found no idle worker or the task is null.
  bool RunTask(VRKBasAtiThreadTask* task, bool noJoin = false, int tries = 0);
  void SetErrorCondition(bool failed);
  // Whether a pool exists and its error condition is set.
  static bool ErrorConditionSet();

  // True when every thread reached has stopped.
  bool SuspendThreads();
  bool SuspendAllOtherThreads(int slot);
  void ResumeThreads();
  void ResumeAllOtherThreads(int slot);
  // False between a suspend and the next resume.
  bool IsResumed() const;

  // Asks the slot's thread to end (for slot -1, or any that is not a slot, no thread), then
  // finalizes the calling thread's thread singletons. A task that asks for its own slot is
  // overruled when it returns.
  void TerminateThread(int slot);
  // Marks the slot ended and ends the process with `code`.
  [[noreturn]] void ExitThread(int slot, int code);

  int GetThreadCount() const;
  // A barrier for the pool's tasks to share.
  thr_Barrier& GetBarrier();

 private:
  friend class thr_GlobalSingletonBase<thr_ThreadPool>;
  thr_ThreadPool();
  ~thr_ThreadPool();

  thr_ThreadPoolData* m_Data;
};

#endif  // THR_THREADPOOL_H
