// A manual-reset event: once signalled it stays signalled, and every wait returns at once,
// until ResetSignal.
//
//   thr_EliCondVar done;
//   // worker:  ...; done.Signal();
//   // owner:   done.WaitForSignal(0);   // below 1: without limit
//
// Safe to use from any number of threads at once.
#ifndef THR_ELICONDVAR_H
#define THR_ELICONDVAR_H

#include "VRKBasExport.h"
#include "mem_Alloc.h"

class thr_Event;

class VRKLNU_EXPORT thr_EliCondVar : public mem_AllocationOperators {
 public:
  thr_EliCondVar();
  thr_EliCondVar(const thr_EliCondVar&) = delete;
  thr_EliCondVar& operator=(const thr_EliCondVar&) = delete;
  ~thr_EliCondVar();

  // Waits until signalled, at most `seconds`; a value below 1, or past the range of a
  // millisecond count, waits without limit.
  void WaitForSignal(int seconds);
  void Signal();
  void ResetSignal();

 private:
  thr_Event* m_Event;
};

#endif  // THR_ELICONDVAR_H
