#include "thr_AtomicType.h"

#include <gtest/gtest.h>

#include <thread>
#include <vector>

namespace {

TEST(AtomicTypeTest, EightThreadsCountExactly) {
  thr_AtomicType<int> count(0);
  std::vector<std::thread> threads;
  for (int t = 0; t < 8; ++t) {
    threads.emplace_back([&] {
      for (int i = 0; i < 100000; ++i)
        ++count;
    });
  }
  for (std::thread& thread : threads)
    thread.join();
  EXPECT_EQ(count.Read(), 800000);
}

TEST(AtomicTypeTest, EveryChangeReturnsTheNewValue) {
  thr_AtomicType<int> value(0);
  EXPECT_EQ(value++, 1);  // postfix too
  EXPECT_EQ(--value, 0);
  EXPECT_EQ(value -= 5, -5);
  thr_AtomicType<unsigned long long> wide(1ull << 40);  // no cut to 32 bits
  EXPECT_EQ(wide.Add(1ull << 40), 1ull << 41);
  EXPECT_EQ(wide.Subtract(1ull << 41), 0ull);
}

}  // namespace
