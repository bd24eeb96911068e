#include "bio_IexternalMemFilter.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "mem_Alloc.h"
#include "omi_FatalError.h"

namespace {

using ::testing::HasSubstr;
using ::testing::Property;
using ::testing::Throws;

auto Truncated(const char* what) {
  return Throws<omi_FatalError>(Property(&omi_FatalError::Text, HasSubstr(what)));
}

// Bytes from another machine may be cut short: every read that would pass the end raises,
// saying what it lacked, and leaves the cursor where it was. One read of each path: a
// scalar, a widened short, arrays moved whole, element by element and as bools, raw bytes,
// a new value. A buffer may also be missing: reads of nothing then succeed.
TEST(IexternalMemFilterTest, EveryReadPastTheEndRaisesAndMovesNothing) {
  char bytes[] = {'a', 'b', 'c'};
  bio_IexternalMemFilter reader(bytes, sizeof bytes);
  double d;
  short s[1];
  bool b[4];
  char c[4];
  char* text = c;
  int* one = nullptr;
  EXPECT_THAT([&] { reader >> d; }, Truncated("a value of 8 bytes with 3 left"));
  EXPECT_THAT([&] { reader >> s[0]; }, Truncated("a value of 4 bytes"));
  EXPECT_THAT([&] { reader.getArray(&d, 1); }, Truncated("a value of 8 bytes"));
  EXPECT_THAT([&] { reader.getArray(s, 1); }, Truncated("a value of 4 bytes"));
  EXPECT_THAT([&] { reader.getArray(b, 4); }, Truncated("an array of 4 bytes"));
  EXPECT_THAT([&] { reader.getChars(text, 4); }, Truncated("an array of 4 bytes"));
  EXPECT_THAT([&] { reader >> one; }, Truncated("a value of 4 bytes"));
  mem_Free(one);
  reader.getArray(c, 3);
  EXPECT_EQ(std::string(c, 3), "abc");
  EXPECT_THAT([&] { reader >> c[0]; }, Truncated("a value of 1 byte with 0 left"));

  bio_IexternalMemFilter none(nullptr, 0);
  none.getArray(&d, 0);
  none.getChars(text, 0);
  EXPECT_THAT([&] { none >> d; }, Truncated("a value of 8 bytes with 0 left"));
}

// A string's length is held against the bytes left before its block is made, and a
// negative one raises.
TEST(IexternalMemFilterTest, AStringLongerThanTheRestOrNegativeRaisesBeforeAnyAllocation) {
  char bytes[] = {'\xE8', '\x03', 0, 0, 'a', 'b'};  // 1000 bytes announced, 2 there
  bio_IexternalMemFilter reader(bytes, sizeof bytes);
  char* s = nullptr;
  const unsigned long footprint = mem_Footprint();
  EXPECT_THAT([&] { reader >> s; }, Truncated("a string of 1000 bytes with 2 left"));
  EXPECT_EQ(s, nullptr);
  EXPECT_EQ(mem_Footprint(), footprint);

  char negative[] = {'\xFF', '\xFF', '\xFF', '\xFF'};
  EXPECT_THROW(bio_IexternalMemFilter(negative, sizeof negative) >> s, omi_FatalError);
  EXPECT_EQ(s, nullptr);
}

}  // namespace
