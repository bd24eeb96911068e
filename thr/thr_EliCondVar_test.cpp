#include "thr_EliCondVar.h"

#include <gtest/gtest.h>

#include <chrono>
#include <thread>

namespace {

using Clock = std::chrono::steady_clock;

double SecondsToWait(thr_EliCondVar& event, int seconds) {
  const Clock::time_point start = Clock::now();
  event.WaitForSignal(seconds);
  return std::chrono::duration<double>(Clock::now() - start).count();
}

TEST(EliCondVarTest, StaysSignalledUntilResetAndZeroWaitsWithoutLimit) {
  thr_EliCondVar event;
  event.Signal();
  EXPECT_LT(SecondsToWait(event, 1), 0.5);
  EXPECT_LT(SecondsToWait(event, 1), 0.5);
  event.ResetSignal();
  EXPECT_GE(SecondsToWait(event, 1), 0.9);
  std::thread signaller([&] {
    std::this_thread::sleep_for(std::chrono::milliseconds(100));
    event.Signal();
  });
  EXPECT_GE(SecondsToWait(event, 0), 0.09);
  signaller.join();
}

}  // namespace
