#include "bio_IOmemFilter.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cerrno>

#include "mem_Alloc.h"
#include "omi_FatalError.h"

namespace {

struct MemFilter : bio_IOmemFilter {
  using bio_IOmemFilter::bio_IOmemFilter;
  using bio_IOmemFilter::shortSwap;
  size_t Capacity() const { return static_cast<size_t>(limit - base); }
};

// The block grows while a part of it has been read; the read cursor keeps its place. The
// round trips of every type through a small quantum are in the filter pair tests.
TEST(IOmemFilterTest, ReadsAndWritesInterleaveWithTheirOwnCursorsAndGrowByWholeQuanta) {
  MemFilter filter(8);
  int first, second;
  double third;
  filter << 1 << 2;
  filter >> first;
  filter << 3.5;
  filter >> second >> third;
  EXPECT_EQ(first, 1);
  EXPECT_EQ(second, 2);
  EXPECT_EQ(third, 3.5);

  const unsigned word = 0x01020304;
  unsigned back;
  filter.shortSwap(reinterpret_cast<const char*>(&word), 4);
  filter.shortSwap(reinterpret_cast<char*>(&back), 4);  // reversed twice
  filter.putString("abc");
  MemFilter big(1024);
  for (unsigned i = 0; i < 1025; ++i)
    big << 'b';
  EXPECT_EQ(big.Capacity(), 2048u);
  char* text;
  filter >> text;
  EXPECT_EQ(back, word);
  EXPECT_STREQ(text, "abc");
  mem_Free(text);
  EXPECT_THAT(  // a quantum of zero is refused
      [] { bio_IOmemFilter filter(0); },
      ::testing::Throws<omi_FatalError>(::testing::Property(&omi_FatalError::Errno, EINVAL)));
}

}  // namespace
