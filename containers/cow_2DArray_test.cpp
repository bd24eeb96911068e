#include "cow_2DArray.h"

#include <gtest/gtest.h>

#include "VRKBasSharedContainers.h"
#include "VRKTestLibrary.h"

namespace {

// Every test checks at its end that all memory went back.
using TwoDArrayTest = VRKFootprintTest;

TEST_F(TwoDArrayTest, StartsAtZeroAndIsRowMajor) {
  cow_2DArray<double> array(3, 4);
  for (int row = 0; row < 3; ++row)
    for (int column = 0; column < 4; ++column)
      EXPECT_EQ(array.ConstGet(row, column), 0.0);
  array.Get(1, 2) = 1.5;
  EXPECT_EQ(array.ConstData()[1 * 4 + 2], 1.5);

  EXPECT_EQ(cow_2DArray<int>().Rows() + cow_2DArray<int>().Columns(), 0);
}

TEST_F(TwoDArrayTest, CopiesShareUntilOneWrites) {
  cow_2DArray<int> original(2, 2);
  original.Get(0, 0) = 1;
  cow_2DArray<int> copy = original;
  EXPECT_EQ(copy.ConstData(), original.ConstData());
  copy.Get(0, 0) = 2;
  EXPECT_NE(copy.ConstData(), original.ConstData());
  EXPECT_EQ(original.ConstGet(0, 0), 1);
  EXPECT_EQ(copy.ConstGet(0, 0), 2);
  const int* own = copy.ConstData();
  copy.Get(1, 1) = 3;  // sole holder: written in place
  EXPECT_EQ(copy.ConstData(), own);
}

TEST(TwoDArrayDeathTest, BadIndexOrSizeEndsTheProcess) {
  cow_2DArray<float> array(2, 3);
  EXPECT_DEATH(array.ConstGet(2, 0), "");
  EXPECT_DEATH(array.Get(0, -1), "");
  EXPECT_DEATH(cow_2DArray<float>(-1, 3), "");
}

}  // namespace
