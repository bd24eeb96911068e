#include "thr_Mutex.h"

#include <gtest/gtest.h>

#include <thread>

namespace {

int TryLockFromAnotherThread(thr_Mutex& mutex) {
  int taken = -1;
  std::thread([&] {
    taken = mutex.TryLock();
    if (taken) mutex.Unlock();
  }).join();
  return taken;
}

TEST(MutexTest, OwnerEntersAgainTryLockRefusesItWhileTheFlagIsSetAndItMayStartHeld) {
  thr_Mutex mutex;
  mutex.Lock();
  EXPECT_EQ(mutex.TryLock(), 0);
  mutex.Lock();  // recursive for the owner: does not block
  mutex.Unlock();
  // The nested Unlock cleared the flag: the owner may enter once more, others may not.
  EXPECT_EQ(TryLockFromAnotherThread(mutex), 0);
  EXPECT_EQ(mutex.TryLock(), 1);
  mutex.Unlock();
  mutex.Unlock();
  EXPECT_EQ(TryLockFromAnotherThread(mutex), 1);

  thr_Mutex held(1);  // starts held when asked to
  EXPECT_EQ(TryLockFromAnotherThread(held), 0);
  held.Unlock();
  EXPECT_EQ(TryLockFromAnotherThread(held), 1);
}

}  // namespace
