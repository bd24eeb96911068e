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
  EXPECT_EQ(++value, 1);
  EXPECT_EQ(value++, 2);  // postfix too
  EXPECT_EQ(value--, 1);
  EXPECT_EQ(--value, 0);
  EXPECT_EQ(value += 7, 7);
  EXPECT_EQ(value -= 2, 5);
  EXPECT_EQ(value.Add(10), 15);
  EXPECT_EQ(value.Subtract(20), -5);
  value = 42;
  EXPECT_EQ(value.Read(), 42);
  EXPECT_EQ(value.id(), 407);

  thr_AtomicType<double> real(0.5);
  EXPECT_DOUBLE_EQ(real += 0.25, 0.75);
  EXPECT_DOUBLE_EQ(real--, -0.25);

  thr_AtomicType<unsigned long long> wide(1ull << 40);
  EXPECT_EQ(wide.Add(1ull << 40), 1ull << 41);
  EXPECT_EQ(wide.Subtract(1ull << 41), 0ull);
}

TEST(AtomicTypeTest, WorksThroughTheBaseClass) {
  thr_AtomicType<int> value(3);
  VRKBasAtiAtomicTemplate<int>& base = value;
  EXPECT_EQ(++base, 4);
  base = 9;
  EXPECT_EQ(base.Read(), 9);
}

}  // namespace
