#include "VRKLnuThr.h"

#include "VRKBasAtiThreadingModel.h"
#include "VRKBasCountedPair.h"
#include "VRKLnuThrMultiThreadFact.h"
#include "internal/thr_SharedHold.h"
#include "thr_GlobalLock.h"
#include "thr_ThrSingletonRegistry.h"
#include "thr_ThreadId.h"
#include "thr_ThreadPool.h"

namespace {
int useCount = 0;
VRKBasInstalledFactory<VRKBasAtiThreadingModel, VRKLnuThrMultiThreadFact> factory;
}  // namespace

void VRKLnuThr_initialize(int& tally) {
  if (!VRKBasCountedEnter(useCount, tally, "thr")) return;
  thr_HoldShared();
  factory.Install();
  thr_GlobalLock::Instance();
  thr_ThrSingletonRegistry::Instance();
  thr_ThreadPool::Instance();
}

void VRKLnuThr_finalize(int& tally) {
  if (!VRKBasCountedLeave(useCount, tally, "thr")) return;
  thr_ThreadId::Finalize();
  // The registry finalizes the calling thread's objects before the pool ends; its own
  // block goes after the pool, whose threads still finalize theirs through it as they end,
  // and after any thread that the pool left running.
  thr_ThrSingletonRegistry::FinalizeCallingThread();
  thr_ThreadPool::Finalize();
  thr_ReleaseShared();
  factory.Remove();
}
