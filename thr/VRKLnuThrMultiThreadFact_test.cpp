#include "VRKLnuThrMultiThreadFact.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <memory>
#include <thread>

#include "thr_Barrier.h"
#include "thr_CondVar.h"
#include "thr_Mutex.h"

namespace {

// The ids tell which class each object is; the package test checks the factory's name.
TEST(MultiThreadFactTest, MakesThePackagesPrimitivesOnTheHeapOrInTheCallersStorage) {
  VRKLnuThrMultiThreadFact factory;
  EXPECT_EQ(std::unique_ptr<VRKBasAtiMutex>(factory.NewMutex())->id(), 202);
  EXPECT_EQ(std::unique_ptr<VRKBasAtiCondVar>(factory.NewCondVar())->id(), 522);
  EXPECT_EQ(std::unique_ptr<VRKBasAtiBarrier>(factory.NewBarrier())->id(), 301);
  EXPECT_EQ(std::unique_ptr<VRKBasAtiAtomicTemplate<int>>(factory.NewAtomic(5))->id(), 407);
  EXPECT_DOUBLE_EQ(
      std::unique_ptr<VRKBasAtiAtomicTemplate<double>>(factory.NewAtomicDouble(0.5))->Add(0.25),
      0.75);
  EXPECT_EQ(factory.ThreadingKind(), 3);

  std::unique_ptr<VRKBasAtiMutex> locked(factory.NewLockedMutex());  // held for the caller
  int taken = -1;
  std::thread([&] { taken = locked->TryLock(); }).join();
  EXPECT_EQ(taken, 0);
  locked->Unlock();

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
