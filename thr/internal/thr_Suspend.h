// Stopping and restarting other threads of the process, as Win32's SuspendThread and
// ResumeThread do. A thread is stopped by a real-time signal whose handler answers on a
// semaphore and then sleeps in sigsuspend until a second signal resumes it; the stopper
// waits for the answer with a time limit, so that a thread that blocks the signals is
// reported instead of waited for. Each thread keeps a suspend count: it runs again when
// every Suspend has had its Resume.
//
// While a thread is stopped it may hold any lock, the allocator's included: until it is
// resumed, the stopping thread must not allocate, print or take a lock the stopped thread
// might hold. Suspend and Resume themselves do none of these.
#ifndef THR_SUSPEND_H
#define THR_SUSPEND_H

#include <pthread.h>
#include <semaphore.h>

#include <atomic>

#include "VRKBasExport.h"
#include "thr_Mutex.h"

// Test hook: how long a suspend or resume waits for the thread's answer, 1000 ms unless a
// test sets another limit; 0 takes an answer only if it is there already. Not for use
// outside tests.
VRKLNU_EXPORT void thr_setSuspendAnswerLimit(int milliseconds);

class thr_Suspender {
 public:
  // One thread's state, kept where the thread and its stopper can both reach it.
  struct Record {
    std::atomic<int> stop{0};
    // Suspends not yet resumed; under the suspender's lock.
    int count = 0;
    sem_t* answer = nullptr;
  };

  thr_Suspender();
  thr_Suspender(const thr_Suspender&) = delete;
  thr_Suspender& operator=(const thr_Suspender&) = delete;
  ~thr_Suspender();

  // pthread_create, with the two signals blocked in the new thread until it calls Adopt,
  // so that a suspend sent before then waits for the thread to be ready.
  static int StartThread(pthread_t& thread, void* (*entry)(void*), void* argument);
  // Makes `record` the calling thread's (null: none), for the signal handler to find, and
  // lets the two signals through.
  void Adopt(Record* record);
  // Suspend and Resume are called with the suspender locked.
  void Lock() { m_Lock.Lock(); }
  void Unlock() { m_Lock.Unlock(); }
  // Counts a suspend and stops the thread at the first. False when the thread did not
  // answer in time (it blocks the signal or has ended); it then runs on, uncounted.
  bool Suspend(pthread_t thread, Record& record);
  // Counts a resume and restarts the thread at the last.
  void Resume(pthread_t thread, Record& record);

 private:
  // Takes answers until one finds `record` in `state`; false when the time runs out first.
  bool WaitForAnswer(const Record& record, int state);

  thr_Mutex m_Lock;
  sem_t m_Answer;
};

#endif  // THR_SUSPEND_H
