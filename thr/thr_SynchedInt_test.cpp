#include "thr_SynchedInt.h"

#include <gtest/gtest.h>

#include <thread>

namespace {

TEST(SynchedIntTest, PublishesWhatWasWrittenBeforeTheValue) {
  thr_SynchedInt phase;
  int data[3] = {};  // plain memory: the tools check that the hand-over orders it
  std::thread producer([&] {
    data[0] = 1;
    data[1] = 2;
    data[2] = 3;
    phase.SetValue(1);
    phase.WaitForValue(2);
    data[0] = 10;
  });
  phase.WaitForValue(1);
  EXPECT_EQ(data[0] + data[1] + data[2], 6);
  phase.SetValue(2);
  producer.join();
  EXPECT_EQ(data[0], 10);
  EXPECT_EQ(phase.GetValue(), 2);
}

}  // namespace
