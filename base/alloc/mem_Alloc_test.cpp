#include "mem_Alloc.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <new>
#include <thread>
#include <vector>

namespace {

struct TooMuch {
  size_t size;
};

void ThrowTooMuch(size_t size) {
  throw TooMuch{size};
}

void ReturnWithoutThrowing(size_t) {}

// Restores the limit and the handler that a test changes.
class MemAllocTest : public ::testing::Test {
 protected:
  void TearDown() override {
    mem_Mallopt(-5, 0);
    mem_SetOutOfMemoryHandler(nullptr);
  }
};

struct Widget : mem_AllocationOperators {
  double values[8];
};

struct Tiny : mem_AllocationOperatorsTiny {
  int count;
};

TEST_F(MemAllocTest, EveryKindOfBlockIsCountedAlignedAndGivenBack) {
  const unsigned long start = mem_Footprint();
  void* thrown = mem_OperatorNewThrow(100);
  void* tiny = mem_OperatorNewTinyThrow(4);
  int* builtin = new (mem_BuiltInAlloc{}) int[10];
  void* plain = mem_Malloc(50);
  char* zeroed = static_cast<char*>(mem_Calloc(6, 5));
  EXPECT_EQ(mem_Footprint(), start + 100 + 4 + 40 + 50 + 30);
  EXPECT_EQ(std::count(zeroed, zeroed + 30, '\0'), 30);

  std::memcpy(plain, "keep me", 8);
  plain = mem_Realloc(plain, 5000);
  EXPECT_STREQ(static_cast<char*>(plain), "keep me");
  EXPECT_EQ(mem_Footprint(), start + 100 + 4 + 40 + 5000 + 30);
  plain = mem_Realloc(plain, 8);
  EXPECT_STREQ(static_cast<char*>(plain), "keep me");
  void* fromNull = mem_Realloc(nullptr, 64);
  EXPECT_EQ(mem_Footprint(), start + 100 + 4 + 40 + 8 + 30 + 64);
  mem_Free(fromNull);

  Widget* widget = new Widget;
  Widget* widgets = new Widget[3];
  Tiny* small = new Tiny;
  EXPECT_GE(mem_Footprint(), start + 100 + 4 + 40 + 8 + 30 + 4 * sizeof(Widget) + sizeof(Tiny));
  delete small;
  delete[] widgets;
  delete widget;

  for (size_t size : {1u, 3u, 17u, 250u}) {  // every block keeps maximal alignment
    void* block = mem_OperatorNewThrow(size);
    EXPECT_EQ(reinterpret_cast<uintptr_t>(block) % alignof(std::max_align_t), 0u);
    mem_Free(block);
  }
  for (void* block : {thrown, tiny, static_cast<void*>(builtin), plain, static_cast<void*>(zeroed)})
    mem_Free(block);
  mem_Free(nullptr);
  EXPECT_EQ(mem_Footprint(), start);
}

TEST_F(MemAllocTest, OverflowingSizesAreRefused) {
  const unsigned long start = mem_Footprint();
  EXPECT_EQ(mem_Calloc(~size_t{0} / 2, 4), nullptr);
  EXPECT_EQ(mem_Malloc(~size_t{0} - 4), nullptr);
  mem_SetOutOfMemoryHandler(ThrowTooMuch);
  EXPECT_THROW(mem_OperatorNewThrow(~size_t{0} - 4), TooMuch);
  EXPECT_THROW(mem_MallocThrow(~size_t{0} - 4), std::bad_alloc);  // not through the handler
  EXPECT_EQ(mem_Footprint(), start);
}

TEST_F(MemAllocTest, ThrowingAllocationsHonourTheLimit) {
  EXPECT_EQ(mem_MemoryLimit(), 0u);
  EXPECT_EQ(mem_Mallopt(-4, 1000), 0);
  EXPECT_EQ(mem_MemoryLimit(), 0u);

  const unsigned long start = mem_Footprint();
  ASSERT_NE(mem_Mallopt(-5, start + 1000), 0);
  EXPECT_EQ(mem_MemoryLimit(), start + 1000);
  mem_SetOutOfMemoryHandler(ThrowTooMuch);

  void* fits = mem_OperatorNewThrow(600);
  EXPECT_THAT([] { mem_OperatorNewThrow(600); },
              ::testing::Throws<TooMuch>(::testing::Field(&TooMuch::size, 600u)));
  EXPECT_THROW(mem_OperatorNewTinyThrow(500), TooMuch);
  EXPECT_THROW(new (mem_BuiltInAlloc{}) double[100], TooMuch);
  EXPECT_THROW(new Widget[10], TooMuch);
  EXPECT_EQ(mem_Footprint(), start + 600);

  // The plain block operations are not held to the limit.
  void* plain = mem_Malloc(600);
  EXPECT_NE(plain, nullptr);
  mem_Free(plain);
  mem_Free(mem_MallocThrow(600));
  mem_Free(fits);

  mem_Mallopt(-5, 0);
  EXPECT_EQ(mem_MemoryLimit(), 0u);
  mem_Free(mem_OperatorNewThrow(600));
  EXPECT_EQ(mem_Footprint(), start);
}

TEST_F(MemAllocTest, DefaultHandlerAndOneThatReturnsBothEndInBadAlloc) {
  mem_Mallopt(-5, mem_Footprint() + 10);
  EXPECT_THROW(mem_OperatorNewThrow(100), std::bad_alloc);
  EXPECT_EQ(mem_SetOutOfMemoryHandler(ReturnWithoutThrowing), nullptr);
  EXPECT_THROW(mem_OperatorNewThrow(100), std::bad_alloc);
  EXPECT_EQ(mem_SetOutOfMemoryHandler(nullptr), &ReturnWithoutThrowing);
}

TEST_F(MemAllocTest, ConcurrentBalancedAllocationsLeaveTheFootprint) {
  const unsigned long start = mem_Footprint();
  auto churn = [](size_t seed) {
    std::vector<void*> held;
    for (int i = 0; i < 1000000; ++i) {
      held.push_back(i % 3 ? mem_OperatorNewThrow(16 + (seed + i) % 240) : mem_Malloc(i % 64));
      if (held.size() == 8) {
        for (void* block : held)
          mem_Free(block);
        held.clear();
      }
    }
    for (void* block : held)
      mem_Free(block);
  };
  std::thread first(churn, 1);
  std::thread second(churn, 7);
  first.join();
  second.join();
  EXPECT_EQ(mem_Footprint(), start);
}

// Two threads race for the last bytes under a limit: they can't both get them.
TEST_F(MemAllocTest, RacingThreadsCannotPassTheLimitTogether) {
  mem_SetOutOfMemoryHandler(ThrowTooMuch);
  for (int round = 0; round < 200; ++round) {
    mem_Mallopt(-5, mem_Footprint() + 1500);
    void* got[2] = {nullptr, nullptr};
    auto grab = [&got](int i) {
      try {
        got[i] = mem_OperatorNewThrow(1000);
      } catch (const TooMuch&) {
      }
    };
    std::thread a(grab, 0);
    std::thread b(grab, 1);
    a.join();
    b.join();
    ASSERT_TRUE((got[0] == nullptr) != (got[1] == nullptr));
    mem_Free(got[0] ? got[0] : got[1]);
  }
}

}  // namespace
