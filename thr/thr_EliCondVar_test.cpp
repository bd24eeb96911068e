#include "thr_EliCondVar.h"

#include <gtest/gtest.h>

#include <chrono>
#include <climits>
#include <thread>

namespace {

using Clock = std::chrono::steady_clock;

double SecondsToWait(thr_EliCondVar& event, int seconds) {
  const Clock::time_point start = Clock::now();
  event.WaitForSignal(seconds);
  return std::chrono::duration<double>(Clock::now() - start).count();
}

TEST(EliCondVarTest, StaysSignalledUntilReset) {
  thr_EliCondVar event;
  event.Signal();
  EXPECT_LT(SecondsToWait(event, 1), 0.5);
  EXPECT_LT(SecondsToWait(event, 1), 0.5);
  event.ResetSignal();
  EXPECT_GE(SecondsToWait(event, 1), 0.9);
}

// Below 1, and a time that doesn't fit a count of milliseconds, wait without limit.
// 115964117 s is 8 ms in a 32-bit count.
TEST(EliCondVarTest, TimesBelowOneOrBeyondTheMillisecondRangeWaitWithoutLimit) {
  for (int seconds : {0, -1, INT_MIN, INT_MAX, 115964117}) {
    thr_EliCondVar event;
    std::thread signaller([&] {
      std::this_thread::sleep_for(std::chrono::milliseconds(100));
      event.Signal();
    });
    EXPECT_GE(SecondsToWait(event, seconds), 0.09) << seconds;
    signaller.join();
  }
}

}  // namespace
