#include "VRKLnuThrMultiThreadFact.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <memory>
#include <thread>

#include "mem_Alloc.h"
#include "thr_Barrier.h"
#include "thr_CondVar.h"
#include "thr_Mutex.h"

namespace {

TEST(MultiThreadFactTest, MakesThePackagesPrimitivesAndNamesTheModel) {
  VRKLnuThrMultiThreadFact factory;
  EXPECT_EQ(std::unique_ptr<VRKBasAtiMutex>(factory.NewMutex())->id(), 202);
  EXPECT_EQ(std::unique_ptr<VRKBasAtiCondVar>(factory.NewCondVar())->id(), 522);
  EXPECT_EQ(std::unique_ptr<VRKBasAtiBarrier>(factory.NewBarrier())->id(), 301);
  EXPECT_EQ(std::unique_ptr<VRKBasAtiAtomicTemplate<int>>(factory.NewAtomic(5))->id(), 407);
  EXPECT_DOUBLE_EQ(
      std::unique_ptr<VRKBasAtiAtomicTemplate<double>>(factory.NewAtomicDouble(0.5))->Add(0.25),
      0.75);
  EXPECT_EQ(factory.ThreadingKind(), 3);
  char* name = factory.AsString();
  EXPECT_STREQ(name, "MULTI_THREADED_POSIX");
  mem_Free(name);
}

TEST(MultiThreadFactTest, LockedMutexIsHeldForTheCaller) {
  VRKLnuThrMultiThreadFact factory;
  std::unique_ptr<VRKBasAtiMutex> mutex(factory.NewLockedMutex());
  int taken = -1;
  std::thread([&] { taken = mutex->TryLock(); }).join();
  EXPECT_EQ(taken, 0);
  mutex->Unlock();
}

TEST(MultiThreadFactTest, ConstructsInTheCallersStorageAndNotInNone) {
  VRKLnuThrMultiThreadFact factory;
  constexpr size_t kSize = std::max({sizeof(thr_Mutex), sizeof(thr_CondVar), sizeof(thr_Barrier)});
  alignas(std::max_align_t) unsigned char storage[kSize];
  VRKBasAtiCondVar* cond = factory.ConstructCondVar(storage);
  EXPECT_EQ(static_cast<void*>(cond), static_cast<void*>(storage));
  cond->~VRKBasAtiCondVar();
  factory.ConstructBarrier(storage)->~VRKBasAtiBarrier();
  EXPECT_EQ(factory.ConstructMutex(nullptr), nullptr);
  EXPECT_EQ(factory.ConstructCondVar(nullptr), nullptr);
  EXPECT_EQ(factory.ConstructBarrier(nullptr), nullptr);
}

}  // namespace
