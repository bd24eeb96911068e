#include "mrm_Capacity.h"

#include <gtest/gtest.h>

#include <climits>

namespace {

TEST(CapacityTest, RoundToBlockGivesWholeBlocksOf64KiB) {
  const int cases[][2] = {{0, 0}, {1, 65536}, {65536, 65536}, {65537, 131072}, {215000, 262144}};
  for (const auto& c : cases)
    EXPECT_EQ(mrm_RoundToBlock(c[0]), c[1]) << c[0];
  // Amounts past the int range give no meaningful block, but no undefined behaviour.
  EXPECT_EQ(mrm_TruncateToInt(3e9), INT_MIN);
  EXPECT_EQ(mrm_TruncateToInt(-1.9), -1);
}

// The high estimate counts the client's bytes twice: once alone, once inside the allowance.
TEST(CapacityTest, SmallBlockCapacityConvertsWithTheDoubleCount) {
  struct Case {
    double lo, hi, overheadMin;
    double expectedLo, expectedHi;
  };
  const Case cases[] = {
      {0, 0, 0, 0, 0},
      {0, 100000, 0, 0, 262144},         // 100000 + 115000 rounded up
      {0, 100000, 1000000, 0, 1114112},  // 100000 + the minimum 1000000
      {1.9, 0, 0, 65536, 0},             // the low estimate has no overhead
      {0.9, 0, 0, 0, 0},                 // and its fraction is cut off first
  };
  for (const Case& c : cases) {
    const mrm_Capacity large = mrm_SmallBlockCapacity()
                                   .SetOutToClientLoHi(c.lo, c.hi)
                                   .SetOverheadMin(c.overheadMin)
                                   .LargeBlockCapacity();
    EXPECT_EQ(large, mrm_Capacity().SetLoHi(c.expectedLo, c.expectedHi)) << c.lo << " " << c.hi;
  }
  mrm_SmallBlockCapacity unlimited;
  unlimited.SetOutToClientLoHi(1e6, 2e6).SetUnlimited();
  EXPECT_EQ(unlimited.LargeBlockCapacity(), mrm_Capacity().SetUnlimited());
}

TEST(CapacityTest, SettersAndComparisons) {
  mrm_SmallBlockCapacity small;
  small.SetOverheadFactor(0.5).SetOutToClientSpread(300, 2);
  EXPECT_EQ(small.overheadFactor, 1.5);  // stored as 1 + the fraction
  EXPECT_EQ(small.outToClientLo, 100);
  EXPECT_EQ(small.outToClientHi, 900);
  mrm_SmallBlockCapacity same = small;
  EXPECT_EQ(same.SetUnlimited(), small);  // unlimited is not compared
  EXPECT_NE(mrm_Capacity().SetUnlimited().SetLoHi(5, 1), mrm_Capacity().SetLoHi(5, 1));
}

// The peak is neither compared nor summed: the peak of a sum can't be known.
TEST(CapacityTest, ConsumptionIgnoresThePeakAndASumHasNone) {
  mrm_Consumption a;
  a.peakPinnedBytes = 7;
  EXPECT_TRUE(a.IsZero());
  EXPECT_EQ(a, mrm_Consumption());
  a.numBlocks = a.numPinned = 1;
  a.pinnedBytes = a.unpinnedBytes0 = a.unpinnedBytes1 = 2;
  const mrm_Consumption sum = a + a;
  EXPECT_EQ(sum.numBlocks + sum.numPinned, 4);
  EXPECT_EQ(sum.pinnedBytes + sum.unpinnedBytes0 + sum.unpinnedBytes1, 12);
  EXPECT_EQ(sum.peakPinnedBytes, 0);
  EXPECT_FALSE(sum.IsZero());
}

}  // namespace
