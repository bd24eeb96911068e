#include "thr_SharedHold.h"

#include <mutex>

#include "thr_GlobalLock.h"
#include "thr_LockPool.h"
#include "thr_ThrSingletonRegistry.h"

namespace {

// A late thread may let go while the package starts again: the start must find the objects
// either whole or gone.
std::mutex holdLock;
int holders = 0;

}  // namespace

void thr_HoldShared() {
  std::lock_guard<std::mutex> hold(holdLock);
  ++holders;
}

void thr_ReleaseShared() {
  std::lock_guard<std::mutex> hold(holdLock);
  if (--holders > 0) return;
  thr_ThrSingletonRegistry::Finalize();
  thr_LockPool::Finalize();
  thr_GlobalLock::Finalize();
}
