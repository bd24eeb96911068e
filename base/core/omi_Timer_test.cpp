#include "omi_Timer.h"

#include <gtest/gtest.h>

#include <time.h>

#include "VRKBasUtlPlatform.h"

namespace {

TEST(TimerTest, AddsUpTheRunningSpansOnly) {
  omi_Timer timer;
  EXPECT_EQ(timer.GetElapsedTime(), 0.0);
  timer.Start();
  EXPECT_EQ(VRKBasUtlsleep(30), 0);  // sleeps at least the time asked
  timer.Stop();
  const double first = timer.GetElapsedTime();
  EXPECT_GE(first, 0.030);
  EXPECT_LT(first, 1.0);

  VRKBasUtlsleep(30);  // stopped: not counted
  EXPECT_EQ(timer.GetElapsedTime(), first);
  timer.Stop();
  EXPECT_EQ(timer.GetElapsedTime(), first);

  timer.Start();
  timer.Start();  // already running: no restart
  VRKBasUtlsleep(30);
  EXPECT_GE(timer.GetElapsedTime(), first + 0.030);  // read while running
  EXPECT_TRUE(timer.IsRunning());

  timer.Reset();
  EXPECT_FALSE(timer.IsRunning());
  EXPECT_EQ(timer.GetElapsedTime(), 0.0);
}

TEST(TimerTest, TimeStampIsUnixTime) {
  const double now = static_cast<double>(::time(nullptr));
  EXPECT_NEAR(omi_gettimestamp(), now, 2.0);
}

}  // namespace
