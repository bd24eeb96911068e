#include "bio_IexternalMemFilter.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <utility>
#include <vector>

#include "mem_Alloc.h"
#include "omi_FatalError.h"
#include "omi_complex.h"

namespace {

using ::testing::HasSubstr;
using ::testing::Property;
using ::testing::Throws;

auto Truncated(const char* what) {
  return Throws<omi_FatalError>(Property(&omi_FatalError::Text, HasSubstr(what)));
}

// Bytes from another machine may be cut short: every read that would pass the end raises,
// saying what it lacked, and leaves the cursor where it was.
TEST(IexternalMemFilterTest, EveryReadPastTheEndRaisesAndMovesNothing) {
  char bytes[] = {'a', 'b', 'c'};
  bio_IexternalMemFilter reader(bytes, sizeof bytes);
  double d[1];
  float f[1];
  unsigned u[1];
  int i[1];
  unsigned short us[1];
  short s[1];
  unsigned char uc[4];
  char c[4];
  bool b[4];
  char* text = c;
  int* one = nullptr;
  omi_complex z;
  const std::vector<std::pair<const char*, std::function<void()>>> reads = {
      {"a value of 8 bytes", [&] { reader >> d[0]; }},
      {"a value of 4 bytes", [&] { reader >> f[0]; }},
      {"a value of 4 bytes", [&] { reader >> u[0]; }},
      {"a value of 4 bytes", [&] { reader >> i[0]; }},
      {"a value of 4 bytes", [&] { reader >> us[0]; }},  // shorts are widened to 4 bytes
      {"a value of 4 bytes", [&] { reader >> s[0]; }},
      {"a value of 8 bytes", [&] { reader.getArray(d, 1); }},
      {"a value of 4 bytes", [&] { reader.getArray(f, 1); }},
      {"a value of 4 bytes", [&] { reader.getArray(u, 1); }},
      {"a value of 4 bytes", [&] { reader.getArray(i, 1); }},
      {"a value of 4 bytes", [&] { reader.getArray(us, 1); }},
      {"a value of 4 bytes", [&] { reader.getArray(s, 1); }},
      {"an array of 4 bytes", [&] { reader.getArray(uc, 4); }},
      {"an array of 4 bytes", [&] { reader.getArray(c, 4); }},
      {"an array of 4 bytes", [&] { reader.getArray(b, 4); }},
      {"an array of 4 bytes", [&] { reader.getChars(text, 4); }},
      {"a value of 4 bytes", [&] { reader >> one; }},
      {"a value of 4 bytes", [&] { reader >> z; }},
  };
  for (const auto& [what, read] : reads)
    EXPECT_THAT(read, Truncated(what)) << what;
  mem_Free(one);
  reader.getArray(c, 3);  // nothing was taken
  EXPECT_EQ(std::vector<char>(c, c + 3), std::vector<char>({'a', 'b', 'c'}));
  EXPECT_THAT([&] { reader >> c[0]; }, Truncated("a value of 1 byte with 0 left"));
}

// A string's length is held against the bytes left before its block is made.
TEST(IexternalMemFilterTest, AStringLongerThanTheRestRaisesBeforeAnyAllocation) {
  char bytes[] = {'\xE8', '\x03', 0, 0, 'a', 'b'};  // 1000 bytes announced, 2 there
  bio_IexternalMemFilter reader(bytes, sizeof bytes);
  char* s = nullptr;
  const unsigned long footprint = mem_Footprint();
  EXPECT_THAT([&] { reader >> s; }, Truncated("a string of 1000 bytes with 2 left"));
  EXPECT_EQ(s, nullptr);
  EXPECT_EQ(mem_Footprint(), footprint);
}

TEST(IexternalMemFilterTest, ANegativeStringLengthRaises) {
  char bytes[] = {'\xFF', '\xFF', '\xFF', '\xFF'};
  bio_IexternalMemFilter reader(bytes, sizeof bytes);
  char* s = nullptr;
  EXPECT_THROW(reader >> s, omi_FatalError);
  EXPECT_EQ(s, nullptr);
}

}  // namespace
