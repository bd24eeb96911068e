#include "thr_CondVar.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <climits>
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

// A time that doesn't fit a count of milliseconds, or a negative one, waits without limit:
// the waiter returns once, when signalled. 115964117 s is 8 ms in a 32-bit count.
TEST(CondVarTest, TimesBeyondTheMillisecondRangeWaitWithoutLimit) {
  for (int seconds : {INT_MAX, 115964117, -1, INT_MIN}) {
    thr_CondVar cond;
    bool ready = false;  // under the condition's lock
    int returns = 0;
    std::thread waiter([&] {
      thr_Hold<thr_CondVar> hold(cond);
      while (!ready) {
        cond.WaitForSignal(seconds);
        ++returns;
      }
    });
    std::this_thread::sleep_for(std::chrono::milliseconds(100));
    {
      thr_Hold<thr_CondVar> hold(cond);
      ready = true;
      cond.Signal();
    }
    waiter.join();
    EXPECT_EQ(returns, 1) << seconds;
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
