#include "thr_Mutex.h"

#include <gtest/gtest.h>

#include <thread>
#include <vector>

namespace {

int TryLockFromAnotherThread(thr_Mutex& mutex) {
  int taken = -1;
  std::thread([&] {
    taken = mutex.TryLock();
    if (taken) mutex.Unlock();
  }).join();
  return taken;
}

TEST(MutexTest, OwnerEntersAgainButTryLockRefusesItWhileTheFlagIsSet) {
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
}

TEST(MutexTest, StartsHeldWhenAskedTo) {
  thr_Mutex mutex(1);
  EXPECT_EQ(TryLockFromAnotherThread(mutex), 0);
  mutex.Unlock();
  EXPECT_EQ(TryLockFromAnotherThread(mutex), 1);
  EXPECT_EQ(mutex.id(), 202);
}

TEST(MutexTest, ExcludesOtherThreads) {
  thr_Mutex mutex;
  int count = 0;
  std::vector<std::thread> threads;
  for (int t = 0; t < 4; ++t) {
    threads.emplace_back([&] {
      for (int i = 0; i < 20000; ++i) {
        thr_Hold<thr_Mutex> hold(mutex);
        thr_Hold<thr_Mutex> again(mutex);
        ++count;
      }
    });
  }
  for (std::thread& thread : threads)
    thread.join();
  EXPECT_EQ(count, 80000);
}

}  // namespace
