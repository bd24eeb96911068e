// The library's mutex: a critical section, recursive for the thread that holds it, with a
// locked flag beside it.
//
//   thr_Mutex lock;
//   lock.Lock(); ...; lock.Unlock();
//   if (lock.TryLock()) { ...; lock.Unlock(); }
//
// Lock may be called again by the owner; each Lock needs its Unlock. TryLock differs on
// purpose: it refuses while the flag is set, so the owner too gets 0 from it. The flag is
// cleared by every Unlock, so after a nested Unlock the owner's TryLock succeeds again.
// Unlock by a thread that does not hold the mutex is undefined, as for any mutex.
// thr_Hold below holds any such lock for a scope.
#ifndef THR_MUTEX_H
#define THR_MUTEX_H

#include <atomic>
#include <mutex>
#include <thread>

#include "VRKBasAtiThreadingModel.h"
#include "VRKBasExport.h"

class VRKLNU_EXPORT thr_Mutex : public VRKBasAtiMutex {
 public:
  // A nonzero `locked` makes the mutex start held by the constructing thread.
  explicit thr_Mutex(int locked = 0);
  thr_Mutex(const thr_Mutex&) = delete;
  thr_Mutex& operator=(const thr_Mutex&) = delete;
  ~thr_Mutex() override;

  void Lock() override;
  void Unlock() override;
  // 1 when taken, 0 when the flag is set or another thread holds the mutex.
  int TryLock() override;
  int id() const override { return 202; }

 private:
  friend class thr_CondVar;

  void Enter();
  bool TryEnter();
  void Leave();
  // Leaves every level the owner holds and returns how many there were; EnterAgain takes
  // them back. A condition wait needs the mutex fully free while it sleeps.
  int LeaveAll();
  void EnterAgain(int depth);

  // Read by other threads in TryLock and Enter without the section held.
  std::atomic<int> m_Locked;
  std::atomic<std::thread::id> m_Owner;
  int m_Depth = 0;
  std::mutex m_Section;
};

// Holds a lock for the rest of a scope; any class with Lock and Unlock will do.
//
//   thr_Hold<thr_Mutex> hold(mutex);
template <class Lockable>
class thr_Hold {
 public:
  explicit thr_Hold(Lockable& lock) : m_Lock(lock) { m_Lock.Lock(); }
  thr_Hold(const thr_Hold&) = delete;
  thr_Hold& operator=(const thr_Hold&) = delete;
  ~thr_Hold() { m_Lock.Unlock(); }

 private:
  Lockable& m_Lock;
};

#endif  // THR_MUTEX_H
