#include "thr_ThreadSingleton.h"

#include <gtest/gtest.h>

#include <mutex>
#include <stdexcept>
#include <thread>
#include <vector>

#include "VRKTestLibrary.h"
#include "thr_ThreadId.h"

namespace {

std::mutex orderLock;
std::vector<int> order;  // destruct levels and names, as objects go

void Record(int what) {
  std::lock_guard<std::mutex> hold(orderLock);
  order.push_back(what);
}

// A thread singleton that records its tag when it is destroyed.
template <int kLevel, int kTag = kLevel>
class Tagged : public thr_ThreadSingleton<Tagged<kLevel, kTag>> {
  friend class thr_ThreadSingletonBase<Tagged>;
  Tagged() : thr_ThreadSingleton<Tagged>(kLevel) {}
  ~Tagged() { Record(kTag); }
};

class Failing : public thr_ThreadSingleton<Failing> {
  friend class thr_ThreadSingletonBase<Failing>;
  Failing() { throw std::runtime_error("cannot"); }
};

class ThreadSingletonTest : public VRKLibraryTest {
 protected:
  void SetUp() override {
    VRKLibraryTest::SetUp();
    order.clear();
  }
};

TEST_F(ThreadSingletonTest, EachThreadHasItsOwnObjectInOneSlot) {
  using Object = Tagged<5>;
  Object* mine = &Object::Instance();
  EXPECT_EQ(&Object::Instance(), mine);
  const int index = Object::TlsIndex();
  EXPECT_GE(index, 0);
  EXPECT_EQ(Object::LiveCount(), 1);
  std::thread([&] {
    EXPECT_NE(&Object::Instance(), mine);
    EXPECT_EQ(Object::TlsIndex(), index);
    EXPECT_EQ(Object::LiveCount(), 2);
    EXPECT_EQ(Object::Finalize(), 1);
    EXPECT_EQ(Object::Finalize(), 0);  // gone already
  }).join();
  EXPECT_EQ(Object::LiveCount(), 1);
  EXPECT_EQ(Object::Finalize(), 1);
  EXPECT_EQ(Object::LiveCount(), 0);
  EXPECT_EQ(Object::TlsIndex(), -1);
  Object::Instance();  // a new slot for a new first object
  EXPECT_GE(Object::TlsIndex(), 0);
  EXPECT_EQ(Object::LiveCount(), 1);
  Object::Finalize();
}

TEST_F(ThreadSingletonTest, ThreadEndDestroysHigherLevelsFirstAndLevelsBelowTwoNever) {
  std::thread([] {
    Tagged<5, 51>::Instance();
    Tagged<17>::Instance();
    Tagged<0>::Instance();
    Tagged<1>::Instance();
    Tagged<5, 52>::Instance();  // same level, registered later: goes first
    thr_ThreadId::Instance();
    thr_ThrSingletonRegistry::Instance().FinalizeThread(0);
    EXPECT_EQ(thr_ThreadId::LiveCount(), 0);
    EXPECT_EQ(order, (std::vector<int>{17, 52, 51}));
    EXPECT_EQ(Tagged<0>::LiveCount(), 1);
    EXPECT_EQ(Tagged<1>::LiveCount(), 1);
    Tagged<0>::Finalize();
    Tagged<1>::Finalize();
  }).join();
}

TEST_F(ThreadSingletonTest, AFailedConstructorLeavesNoObject) {
  EXPECT_THROW(Failing::Instance(), std::runtime_error);
  EXPECT_EQ(Failing::LiveCount(), 0);
  EXPECT_EQ(Failing::TlsIndex(), -1);
  EXPECT_EQ(Failing::Finalize(), 0);
}

}  // namespace
