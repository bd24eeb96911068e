#include "VRKLnuThrMultiThreadFact.h"

#include "thr_AtomicType.h"
#include "thr_Barrier.h"
#include "thr_CondVar.h"
#include "thr_Mutex.h"
#include "thr_SynchedInt.h"

namespace {

// The constructors in caller's storage: null storage gives null.
template <class T>
T* ConstructIn(void* storage) {
  return storage ? new (storage) T : nullptr;
}

}  // namespace

VRKLnuThrMultiThreadFact::~VRKLnuThrMultiThreadFact() = default;

VRKBasAtiAtomicTemplate<int>* VRKLnuThrMultiThreadFact::NewAtomic(int value) {
  return new thr_AtomicType<int>(value);
}

VRKBasAtiMutex* VRKLnuThrMultiThreadFact::NewMutex() {
  return new thr_Mutex;
}

VRKBasAtiCondVar* VRKLnuThrMultiThreadFact::NewCondVar() {
  return new thr_CondVar;
}

VRKBasAtiBarrier* VRKLnuThrMultiThreadFact::NewBarrier() {
  return new thr_Barrier;
}

void VRKLnuThrMultiThreadFact::MemoryBarrier() {
  thr_MemoryBarrier();
}

void VRKLnuThrMultiThreadFact::WriteMemoryBarrier() {
  thr_WriteMemoryBarrier();
}

void VRKLnuThrMultiThreadFact::ReadMemoryBarrier() {
  thr_ReadMemoryBarrier();
}

VRKBasAtiMutex* VRKLnuThrMultiThreadFact::NewLockedMutex() {
  return new thr_Mutex(1);
}

VRKBasAtiCondVar* VRKLnuThrMultiThreadFact::NewLockedCondVar() {
  thr_CondVar* cond = new thr_CondVar;
  cond->Lock();
  return cond;
}

// This platform's model; the Windows build answers "MULTI_THREADED_WINDOWS" here.
char* VRKLnuThrMultiThreadFact::AsString() {
  return NameBlock("MULTI_THREADED_POSIX");
}

VRKBasAtiAtomicTemplate<double>* VRKLnuThrMultiThreadFact::NewAtomicDouble(double value) {
  return new thr_AtomicType<double>(value);
}

VRKBasAtiAtomicTemplate<unsigned long long>* VRKLnuThrMultiThreadFact::NewAtomicUInt64(
    unsigned long long value) {
  return new thr_AtomicType<unsigned long long>(value);
}

VRKBasAtiMutex* VRKLnuThrMultiThreadFact::ConstructMutex(void* storage) {
  return ConstructIn<thr_Mutex>(storage);
}

VRKBasAtiCondVar* VRKLnuThrMultiThreadFact::ConstructCondVar(void* storage) {
  return ConstructIn<thr_CondVar>(storage);
}

VRKBasAtiBarrier* VRKLnuThrMultiThreadFact::ConstructBarrier(void* storage) {
  return ConstructIn<thr_Barrier>(storage);
}

int VRKLnuThrMultiThreadFact::ThreadingKind() const {
  return 3;
}
