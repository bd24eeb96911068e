// A pool of mutexes to lend: objects that need a lock only now and then borrow one instead
// of owning one.
//
//   thr_PoolLock* lock = thr_LockPool::Instance().GetLock();
//   lock->Lock(); ...; lock->Unlock();
//   thr_LockPool::Instance().ReleaseLock(lock);
//
// GetLock hands out a lock nobody holds, searching on from where the last search ended;
// when all are lent, the pool grows by 10. The pool is a plain singleton: its first
// Instance must come from start-up code. GetLock and ReleaseLock are safe from any thread.
// The pool and its locks are destroyed at the thread package's stop, or, while threads
// that the thread pool left running are still at work, once the last of them has left: such
// a thread may still unlock and give back a lock it holds. No other use after the stop.
#ifndef THR_LOCKPOOL_H
#define THR_LOCKPOOL_H

#include "VRKBasExport.h"
#include "mem_Alloc.h"
#include "omi_Singleton.h"
#include "thr_Mutex.h"

class VRKLNU_EXPORT thr_PoolLock : public mem_AllocationOperators {
 public:
  thr_PoolLock(const thr_PoolLock&) = delete;
  thr_PoolLock& operator=(const thr_PoolLock&) = delete;

  void Lock() { m_Mutex->Lock(); }
  void Unlock() { m_Mutex->Unlock(); }
  // The lock's place in the pool.
  int Index() const { return m_Index; }

 private:
  friend class thr_LockPool;
  explicit thr_PoolLock(int index);
  ~thr_PoolLock();

  int m_Index;
  thr_Mutex* m_Mutex;
};

class thr_LockPool;
extern template class VRKLNU_EXPORT omi_SingletonBase<thr_LockPool>;

class VRKLNU_EXPORT thr_LockPool : public omi_Singleton<thr_LockPool> {
 public:
  thr_PoolLock* GetLock();
  // Gives a lock back. Null, a lock of another pool and a lock not lent out are ignored.
  void ReleaseLock(thr_PoolLock* lock);

  int Capacity() const { return m_Capacity; }
  int LocksInUse() const { return m_InUse; }

 private:
  friend class omi_SingletonBase<thr_LockPool>;
  thr_LockPool() = default;
  ~thr_LockPool();

  void Grow();
  // The first free place from `from` up to `to`, or -1.
  int FindFree(int from, int to) const;

  int m_Capacity = 0;
  int m_InUse = 0;
  thr_PoolLock** m_Locks = nullptr;
  bool* m_Used = nullptr;
  int m_SearchStart = 0;
  thr_Mutex m_Lock;
};

#endif  // THR_LOCKPOOL_H
