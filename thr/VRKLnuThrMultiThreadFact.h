// The threading factory of this platform, installed in VRKBasAtiThreadingModel at the
// thread package's first start and never withdrawn: through it the lower layers make the
// thread package's mutexes, conditions, barriers and atomics.
//
//   VRKBasAtiCondVar* cond = VRKBasAtiThreadingModel::getBehavior()->NewCondVar();
//
// Objects come from the memory layer and are deleted by the caller; the Construct forms
// build in the caller's storage, which must hold the object (sizeof the thr_ class).
#ifndef VRKLNUTHRMULTITHREADFACT_H
#define VRKLNUTHRMULTITHREADFACT_H

#include "VRKBasAtiThreadingModel.h"
#include "VRKBasExport.h"

class VRKLNU_EXPORT VRKLnuThrMultiThreadFact : public VRKBasAtiThreadFactory {
 public:
  ~VRKLnuThrMultiThreadFact() override;
  VRKBasAtiAtomicTemplate<int>* NewAtomic(int value) override;
  VRKBasAtiMutex* NewMutex() override;
  VRKBasAtiCondVar* NewCondVar() override;
  VRKBasAtiBarrier* NewBarrier() override;
  void MemoryBarrier() override;
  void WriteMemoryBarrier() override;
  void ReadMemoryBarrier() override;
  VRKBasAtiMutex* NewLockedMutex() override;
  VRKBasAtiCondVar* NewLockedCondVar() override;
  // "MULTI_THREADED_POSIX", in a block the caller frees with mem_Free.
  char* AsString() override;
  VRKBasAtiAtomicTemplate<double>* NewAtomicDouble(double value) override;
  VRKBasAtiAtomicTemplate<unsigned long long>* NewAtomicUInt64(unsigned long long value) override;
  VRKBasAtiMutex* ConstructMutex(void* storage) override;
  VRKBasAtiCondVar* ConstructCondVar(void* storage) override;
  VRKBasAtiBarrier* ConstructBarrier(void* storage) override;
  // 3: real threads with the thread package's primitives.
  int ThreadingKind() const override;
};

#endif  // VRKLNUTHRMULTITHREADFACT_H
