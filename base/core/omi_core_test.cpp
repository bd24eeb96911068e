// The small value objects of the core layer.
#include <gtest/gtest.h>

#include <cerrno>
#include <cmath>
#include <cstdint>
#include <set>

#include "HashValue.h"
#include "omi_BlockedArray.h"
#include "omi_Swapper.h"
#include "omi_SystemErrorCode.h"
#include "omi_complex.h"
#include "omi_strtoSizeT.h"

namespace {

TEST(StrtoSizeTTest, ReadsTheLeadingDecimalNumber) {
  EXPECT_EQ(omi_strtoSizeT("12345"), 12345u);
  EXPECT_EQ(omi_strtoSizeT("  77 MB"), 77u);
  EXPECT_EQ(omi_strtoSizeT("18446744073709551615"), 18446744073709551615u);
  EXPECT_EQ(omi_strtoSizeT("18446744073709551616"), 18446744073709551615u);
  EXPECT_EQ(omi_strtoSizeT("999999999999999999999999"), 18446744073709551615u);
  EXPECT_EQ(omi_strtoSizeT("-5"), 0u);
  EXPECT_EQ(omi_strtoSizeT("abc"), 0u);
  EXPECT_EQ(omi_strtoSizeT(nullptr), 0u);
}

TEST(ComplexTest, ConvertsBetweenItsForms) {
  const omi_complex rectangular(omi_complex::Rectangular, 3.0, 4.0);
  EXPECT_DOUBLE_EQ(rectangular.ConvertedModulus(), 5.0);
  EXPECT_DOUBLE_EQ(rectangular.ConvertedArgument(), std::atan2(4.0, 3.0));
  EXPECT_DOUBLE_EQ(rectangular.ConvertedReal(), 3.0);

  const omi_complex polar(omi_complex::Polar, 2.0, M_PI / 2);
  EXPECT_NEAR(polar.ConvertedReal(), 0.0, 1e-15);
  EXPECT_DOUBLE_EQ(polar.ConvertedImag(), 2.0);
  EXPECT_DOUBLE_EQ(polar.ConvertedModulus(), 2.0);

  const omi_complex degrees(omi_complex::PolarDegrees, 2.0, 180.0);
  EXPECT_DOUBLE_EQ(degrees.ConvertedReal(), -2.0);
  EXPECT_DOUBLE_EQ(degrees.ConvertedArgument(), M_PI);

  const omi_complex unknownTag(7, 1.0, -1.0);  // reads as rectangular
  EXPECT_DOUBLE_EQ(unknownTag.ConvertedImag(), -1.0);
}

TEST(SystemErrorCodeTest, ZeroCapturesErrno) {
  errno = ENOENT;
  const omi_SystemErrorCode captured(0);
  EXPECT_EQ(captured.m_NativeErrorCode, static_cast<unsigned>(ENOENT));
  EXPECT_EQ(captured.m_CRTErrorCode, ENOENT);
  const omi_SystemErrorCode given(EACCES);
  EXPECT_EQ(given.m_CRTErrorCode, EACCES);
}

TEST(HashValueTest, StaysBelowTheBucketCountAndSpreadsStrides) {
  std::set<unsigned> buckets;
  for (unsigned key = 0; key < 64 * 1024; key += 64) {
    const unsigned bucket = HashValue(key, 97);
    ASSERT_LT(bucket, 97u);
    buckets.insert(bucket);
  }
  EXPECT_EQ(buckets.size(), 97u);

  buckets.clear();
  for (uintptr_t block = 0; block < 256; ++block) {
    void* const address = reinterpret_cast<void*>(0x7f3a12340000 + block * 64);
    buckets.insert(HashValue(address, 16));
  }
  EXPECT_EQ(buckets.size(), 16u);
  EXPECT_EQ(HashValue(12345u, 0), 0u);
  EXPECT_EQ(HashValue(12345u, 1), 0u);
}

TEST(BlockedArrayTest, CellsGrowOnWriteAndReadZeroElsewhere) {
  omi_BlockedArray<unsigned> array;
  EXPECT_EQ(array.GetCell(5), 0u);
  array.SetCell(70000, 7u);
  array.SetCell(3, 3u);
  EXPECT_EQ(array.GetCell(70000), 7u);
  EXPECT_EQ(array.GetCell(3), 3u);
  EXPECT_EQ(array.GetCell(4), 0u);
  EXPECT_EQ(array.GetCell(69999), 0u);
  EXPECT_EQ(array.Size(), 70001u);
  EXPECT_EQ(array.Block(1), nullptr);  // untouched blocks are not made

  omi_BlockedArray<unsigned> copy(array);
  array.SetCell(3, 30u);
  EXPECT_EQ(copy.GetCell(3), 3u);
  EXPECT_EQ(copy.GetCell(70000), 7u);
  array.Clear();
  EXPECT_EQ(array.Size(), 0u);
  EXPECT_EQ(array.GetCell(70000), 0u);
}

TEST(SwapperTest, KnowsTheHostOrder) {
  const unsigned one = 1;
  const bool little = *reinterpret_cast<const unsigned char*>(&one) == 1;
  EXPECT_EQ(omi_Swapper::HostEndian(), little ? omi_Swapper::LittleEndian : omi_Swapper::BigEndian);
}

}  // namespace
