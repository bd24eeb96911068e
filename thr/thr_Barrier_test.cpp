#include "thr_Barrier.h"

#include <gtest/gtest.h>

#include <thread>
#include <vector>

#include "VRKTestLibrary.h"
#include "thr_ThrSingletonRegistry.h"
#include "thr_ThreadPool.h"

namespace {

using BarrierTest = VRKLibraryTest;

TEST(BarrierAloneTest, OneThreadPassesAtOnce) {
  thr_Barrier barrier;  // the library is not even up: nothing is touched
  barrier.BarrierSync(1);
  barrier.BarrierSync(0);
}

// Each round every thread writes its mark into one of two rows, passes the barrier and
// reads the row back: all marks must be there, and none of the next round's can be.
TEST_F(BarrierTest, FourThreadsPassAThousandTimesInStep) {
  constexpr int kThreads = 4;
  constexpr int kRounds = 1000;
  thr_Barrier barrier;
  int marks[2][kThreads] = {};
  std::vector<int> misses(kThreads, 0);
  std::vector<std::thread> threads;
  for (int t = 0; t < kThreads; ++t) {
    threads.emplace_back([&, t] {
      for (int round = 1; round <= kRounds; ++round) {
        marks[round % 2][t] = round;
        barrier.BarrierSync(kThreads);
        for (int other = 0; other < kThreads; ++other) {
          if (marks[round % 2][other] != round) ++misses[t];
        }
      }
      thr_ThrSingletonRegistry::Instance().FinalizeThread(0);  // the barrier gave it an id
    });
  }
  for (std::thread& thread : threads)
    thread.join();
  EXPECT_EQ(misses, std::vector<int>(kThreads, 0));
}

TEST_F(BarrierTest, AWaitingProgramThreadEndsWhenThePoolFails) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  EXPECT_EXIT(
      {
        thr_ThreadPool::Instance().SetErrorCondition(true);
        thr_Barrier barrier;
        barrier.BarrierSync(2);  // nobody else comes
      },
      ::testing::ExitedWithCode(1), "");
}

}  // namespace
