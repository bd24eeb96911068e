// The process-wide lock that guards the making of singletons' guards and of thread-local
// slots. It is itself a plain singleton, made at the thread package's start (its mutex
// comes from the installed threading factory) and destroyed at its stop, or after it, once
// the last thread that the thread pool left running has left.
//
//   thr_GlobalLock::Instance().Lock(); ...; thr_GlobalLock::Instance().Unlock();
//
// Lock order: a singleton's guard may be held when this lock is taken, never the reverse.
#ifndef THR_GLOBALLOCK_H
#define THR_GLOBALLOCK_H

#include "VRKBasAtiThreadingModel.h"
#include "VRKBasExport.h"
#include "omi_Singleton.h"

class thr_GlobalLock;
extern template class VRKLNU_EXPORT omi_SingletonBase<thr_GlobalLock>;

class VRKLNU_EXPORT thr_GlobalLock : public omi_Singleton<thr_GlobalLock> {
 public:
  void Lock() { m_Mutex->Lock(); }
  void Unlock() { m_Mutex->Unlock(); }

 private:
  friend class omi_SingletonBase<thr_GlobalLock>;
  thr_GlobalLock();
  ~thr_GlobalLock();

  VRKBasAtiMutex* m_Mutex;
};

#endif  // THR_GLOBALLOCK_H
