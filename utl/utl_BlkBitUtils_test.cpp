#include "utl_BlkBitUtils.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "VRKTestLibrary.h"

namespace {

using BlkBitUtilsTest = VRKFootprintTest;

omi_BlkBitVect FromWords(const std::vector<unsigned>& words) {
  omi_BlkBitVect mask;
  for (unsigned i = 0; i < words.size(); ++i)
    mask.SetWord(i, words[i]);
  return mask;
}

std::vector<std::string> Lines(const omi_BlkBitVect& mask) {
  const cow_List<cow_String> lines = utl_BlkBitUtils::GetMaskString(mask);
  std::vector<std::string> texts;
  for (int i = 0; i < lines.Count(); ++i)
    texts.push_back(lines.ConstGet(i).c_str());
  return texts;
}

cow_List<cow_String> List(const std::vector<std::string>& texts) {
  cow_List<cow_String> list;
  for (const std::string& text : texts)
    list.Append(cow_String(text.data(), static_cast<int>(text.size())));
  return list;
}

std::vector<unsigned> Words(const omi_BlkBitVect& mask, unsigned count) {
  std::vector<unsigned> words;
  for (unsigned i = 0; i < count; ++i)
    words.push_back(mask.GetWord(i));
  return words;
}

using L = std::vector<std::string>;
using W = std::vector<unsigned>;

TEST_F(BlkBitUtilsTest, WritesRunsOfWordsSevenItemsALineAndReadsThemBack) {
  const struct {
    W words;
    L lines;
  } cases[] = {
      {{}, {"[]"}},
      {{0xff, 0xff, 0xff, 0, 0xa}, {"[#ff:3 #0 #a ]"}},
      {{0, 0, 0x80000000}, {"[#0:2 #80000000 ]"}},
      {{1, 2, 3, 4, 5, 6, 7}, {"[#1 #2 #3 #4 #5 #6 #7 ", "]"}},
      {{1, 2, 3, 4, 5, 6, 7, 7, 8, 0xffffffff}, {"[#1 #2 #3 #4 #5 #6 #7:2 ", "#8 #ffffffff ]"}},
  };
  for (const auto& c : cases) {
    const omi_BlkBitVect mask = FromWords(c.words);
    EXPECT_EQ(Lines(mask), c.lines);
    omi_BlkBitVect back;
    utl_BlkBitUtils::GetMaskFromString(List(c.lines), back);
    EXPECT_EQ(Words(back, 12), Words(mask, 12));
    EXPECT_EQ(back.Count(), mask.Count());
  }
}

TEST_F(BlkBitUtilsTest, ReadsItemsOfAnyShapeByTheirRules) {
  const struct {
    L lines;
    W words;
  } cases[] = {
      // A ':' counts only before the next blank; lines don't matter.
      {{"#3 :2 #4:", "2 #5"}, {3, 4, 5, 0}},
      {{"#0:2 #c", "#0x1f:2 #zz #:9 # 6"}, {0, 0, 0xc, 0x1f, 0x1f, 6}},
      {{"#1:-4 #2:0 #7:x #123456789 #-1"}, {7, 0xffffffff, 0xffffffff}},
      {{"no items at all ]"}, {}},
      // A NUL ends a line; the first ':' before the blank serves both items.
      {{std::string("#5\0#6", 5), "#1#2:3"}, {5, 1, 1, 1, 2, 2, 2}},
  };
  for (const auto& c : cases) {
    omi_BlkBitVect mask;
    utl_BlkBitUtils::GetMaskFromString(List(c.lines), mask);
    EXPECT_EQ(Words(mask, static_cast<unsigned>(c.words.size()) + 2), [&] {
      W expected = c.words;
      expected.resize(c.words.size() + 2);
      return expected;
    }()) << c.lines[0];
    EXPECT_EQ(mask.Count(), FromWords(c.words).Count());
  }
  // A zero word moves on without clearing; runs end at the last word of the bit range.
  omi_BlkBitVect mask = FromWords({9, 9, 9});
  utl_BlkBitUtils::GetMaskFromString(List({"#0:2 #1"}), mask);
  EXPECT_EQ(Words(mask, 4), (W{9, 9, 1, 0}));
  omi_BlkBitVect last;
  utl_BlkBitUtils::GetMaskFromString(List({"#0:134217726 #1:5"}), last);
  EXPECT_EQ(last.Count(), 2u);
  unsigned bit = 0;
  EXPECT_TRUE(omi_BlkBitVectTrav(&last).Last(bit));
  EXPECT_EQ(bit, 0xffffffe0u);
}

}  // namespace
