// The calling thread's number: 0 for a thread of the program, the slot plus 1 for a
// thread of the pool (thr_ThreadPool sets it as the thread starts).
//
//   int id = thr_ThreadId::Instance().GetId();
//
// A thread singleton at destruct level 30, so it is the first of a thread's objects to go.
#ifndef THR_THREADID_H
#define THR_THREADID_H

#include "VRKBasExport.h"
#include "thr_ThreadSingleton.h"

class thr_ThreadId;
extern template class VRKLNU_EXPORT thr_ThreadSingletonBase<thr_ThreadId>;

class VRKLNU_EXPORT thr_ThreadId : public thr_ThreadSingleton<thr_ThreadId> {
 public:
  static constexpr thr_ThreadObjectDestructLevel kDestructLevel = 30;

  int GetId() const { return m_Id; }
  void SetId(int id) { m_Id = id; }

 private:
  friend class thr_ThreadSingletonBase<thr_ThreadId>;
  thr_ThreadId() : thr_ThreadSingleton<thr_ThreadId>(kDestructLevel) {}
  ~thr_ThreadId() = default;

  int m_Id = 0;
};

#endif  // THR_THREADID_H
