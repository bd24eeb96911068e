#include "VRKLnuThrMultiThreadFact.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstddef>
#include <memory>
#include <thread>

#include "mem_Alloc.h"
#include "thr_Barrier.h"
#include "thr_CondVar.h"
#include "thr_Mutex.h"

namespace {

TEST(MultiThreadFactTest, MakesThePackagesPrimitives) {
  VRKLnuThrMultiThreadFact factory;
  std::unique_ptr<VRKBasAtiMutex> mutex(factory.NewMutex());
  std::unique_ptr<VRKBasAtiCondVar> cond(factory.NewCondVar());
  std::unique_ptr<VRKBasAtiBarrier> barrier(factory.NewBarrier());
  std::unique_ptr<VRKBasAtiAtomicTemplate<int>> counter(factory.NewAtomic(5));
  std::unique_ptr<VRKBasAtiAtomicTemplate<double>> real(factory.NewAtomicDouble(0.5));
  std::unique_ptr<VRKBasAtiAtomicTemplate<unsigned long long>> wide(factory.NewAtomicUInt64(7));
  EXPECT_EQ(mutex->id(), 202);
  EXPECT_EQ(cond->id(), 522);
  EXPECT_EQ(barrier->id(), 301);
  EXPECT_EQ(counter->id(), 407);
  EXPECT_EQ(++*counter, 6);
  EXPECT_DOUBLE_EQ(real->Read(), 0.5);
  EXPECT_EQ(wide->Read(), 7ull);
  EXPECT_EQ(factory.ThreadingKind(), 3);
  factory.MemoryBarrier();
  factory.WriteMemoryBarrier();
  factory.ReadMemoryBarrier();
}

TEST(MultiThreadFactTest, NamesThePlatformModelInABlockTheCallerFrees) {
  VRKLnuThrMultiThreadFact factory;
  char* name = factory.AsString();
  EXPECT_STREQ(name, "MULTI_THREADED_POSIX");
  mem_Free(name);
}

TEST(MultiThreadFactTest, LockedMakersHoldTheLockForTheCaller) {
  VRKLnuThrMultiThreadFact factory;
  std::unique_ptr<VRKBasAtiMutex> mutex(factory.NewLockedMutex());
  int taken = -1;
  std::thread([&] { taken = mutex->TryLock(); }).join();
  EXPECT_EQ(taken, 0);
  mutex->Unlock();

  std::unique_ptr<VRKBasAtiCondVar> cond(factory.NewLockedCondVar());
  std::atomic<bool> entered{false};
  std::thread other([&] {
    cond->Lock();
    entered = true;
    cond->Unlock();
  });
  std::this_thread::sleep_for(std::chrono::milliseconds(50));
  EXPECT_FALSE(entered);
  cond->Unlock();
  other.join();
  EXPECT_TRUE(entered);
}

TEST(MultiThreadFactTest, ConstructsInTheCallersStorage) {
  VRKLnuThrMultiThreadFact factory;
  constexpr size_t kSize = std::max({sizeof(thr_Mutex), sizeof(thr_CondVar), sizeof(thr_Barrier)});
  alignas(std::max_align_t) unsigned char storage[kSize];
  VRKBasAtiCondVar* cond = factory.ConstructCondVar(storage);
  EXPECT_EQ(static_cast<void*>(cond), static_cast<void*>(storage));
  EXPECT_EQ(cond->id(), 522);
  cond->~VRKBasAtiCondVar();
  VRKBasAtiMutex* mutex = factory.ConstructMutex(storage);
  EXPECT_EQ(mutex->id(), 202);
  mutex->~VRKBasAtiMutex();
  VRKBasAtiBarrier* barrier = factory.ConstructBarrier(storage);
  EXPECT_EQ(barrier->id(), 301);
  barrier->~VRKBasAtiBarrier();

  EXPECT_EQ(factory.ConstructMutex(nullptr), nullptr);
  EXPECT_EQ(factory.ConstructCondVar(nullptr), nullptr);
  EXPECT_EQ(factory.ConstructBarrier(nullptr), nullptr);
}

}  // namespace
