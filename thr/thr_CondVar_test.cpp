#include "thr_CondVar.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <thread>

namespace {

using Clock = std::chrono::steady_clock;

double MillisecondsSince(Clock::time_point start) {
  return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

TEST(CondVarTest, SignalWakesAWaiterOnEitherPath) {
  for (int milliseconds : {0, 20000}) {
    thr_CondVar cond;
    bool waiting = false;  // both under the condition's lock
    bool ready = false;
    std::thread waiter([&] {
      thr_Hold<thr_CondVar> hold(cond);
      waiting = true;
      while (!ready)
        cond.WaitForSignalMilliseconds(milliseconds);
    });
    for (bool seen = false; !seen;) {
      thr_Hold<thr_CondVar> hold(cond);
      seen = waiting;
    }
    const Clock::time_point start = Clock::now();
    {
      thr_Hold<thr_CondVar> hold(cond);
      ready = true;
      cond.Signal();
    }
    waiter.join();
    EXPECT_LT(MillisecondsSince(start), 10000.0) << "limit " << milliseconds;
  }
}

TEST(CondVarTest, SignalWithNoWaiterIsLost) {
  thr_CondVar cond;
  cond.Lock();
  cond.Signal();
  const Clock::time_point start = Clock::now();
  cond.WaitForSignalMilliseconds(50);  // runs its time: the signal above is gone
  EXPECT_GE(MillisecondsSince(start), 45.0);
  cond.Unlock();
}

TEST(CondVarTest, WaitLetsGoOfEveryLevelAndTakesThemBack) {
  thr_CondVar cond;
  std::atomic<bool> ready{false};
  cond.Lock();
  cond.Lock();
  std::thread signaller([&] {
    thr_Hold<thr_CondVar> hold(cond);  // only possible while the owner waits
    ready = true;
    cond.Signal();
  });
  while (!ready)
    cond.WaitForSignal(0);
  signaller.join();

  std::atomic<bool> entered{false};
  std::thread other([&] {
    thr_Hold<thr_CondVar> hold(cond);
    entered = true;
  });
  cond.Unlock();
  std::this_thread::sleep_for(std::chrono::milliseconds(50));
  EXPECT_FALSE(entered) << "one level is still held";
  cond.Unlock();
  other.join();
  EXPECT_TRUE(entered);
}

}  // namespace
