// A condition with its own mutex, on the Win32 model of an event that is pulsed: a Signal
// wakes the threads waiting at that moment and is lost when none waits.
//
//   cond.Lock();
//   while (!ready) cond.WaitForSignal(0);   // 0: without limit
//   cond.Unlock();
//
//   cond.Lock(); ready = true; cond.Signal(); cond.Unlock();
//
// WaitForSignal is entered with the condition locked and returns with it locked again, at
// the same depth (the lock is recursive for its owner). A waiter that returns has either
// been signalled or has run out of time; the caller tests its own predicate. A signal
// stays pending until every thread that waited when it came has left the wait, and the
// next Signal spins until then: signals are not counted. Signal may be called with the
// lock held or not; the woken thread runs sooner when it is not held. A condition must not
// be destroyed while a Signal is under way.
#ifndef THR_CONDVAR_H
#define THR_CONDVAR_H

#include <atomic>

#include "VRKBasAtiThreadingModel.h"
#include "VRKBasExport.h"
#include "thr_Mutex.h"

class thr_Event;

class VRKLNU_EXPORT thr_CondVar : public VRKBasAtiCondVar {
 public:
  thr_CondVar();
  thr_CondVar(const thr_CondVar&) = delete;
  thr_CondVar& operator=(const thr_CondVar&) = delete;
  ~thr_CondVar() override;

  void Lock() override;
  void Unlock() override;
  // Waits for a Signal at most `seconds`; 0, a negative time and one past the range of a
  // millisecond count wait without limit.
  void WaitForSignal(int seconds) override;
  // The same with the limit in milliseconds; 0 and below wait without limit.
  void WaitForSignalMilliseconds(int milliseconds);
  void Signal() override;
  int id() const override { return 522; }

 private:
  void SpinWhileSignalled() const;

  thr_Event* m_Event;
  thr_Mutex* m_MutexHandle;
  // Guards the waiter count and the raising of the signal flag.
  thr_Mutex m_Inner;
  int m_Waiters = 0;
  // Polled by waiters and by Signal without m_Inner.
  std::atomic<int> m_Signalled{0};
};

#endif  // THR_CONDVAR_H
