#include "utl_BlkBitUtils.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "VRKTestLibrary.h"

namespace {

using BlkBitUtilsTest = VRKFootprintTest;
using Lines = std::vector<std::string>;
using Words = std::vector<unsigned>;

omi_BlkBitVect FromWords(const Words& words) {
  omi_BlkBitVect mask;
  for (unsigned i = 0; i < words.size(); ++i)
    mask.SetWord(i, words[i]);
  return mask;
}

// The words up to the one that holds the highest set bit.
Words ToWords(const omi_BlkBitVect& mask) {
  Words words;
  unsigned last = 0;
  const unsigned count = omi_BlkBitVectTrav(&mask).Last(last) ? last / 32 + 1 : 0;
  for (unsigned i = 0; i < count; ++i)
    words.push_back(mask.GetWord(i));
  return words;
}

// Reads the lines into `mask`, which must keep its count of set bits right.
Words Read(const Lines& lines, omi_BlkBitVect mask = omi_BlkBitVect()) {
  cow_List<cow_String> list;
  for (const std::string& line : lines)
    list.Append(cow_String(line.data(), static_cast<int>(line.size())));
  utl_BlkBitUtils::GetMaskFromString(list, mask);
  EXPECT_EQ(mask.Count(), omi_BlkBitVect(mask).Recount());
  return ToWords(mask);
}

TEST_F(BlkBitUtilsTest, WritesRunsOfWordsSevenItemsALineAndReadsThemBack) {
  const struct {
    Words words;
    Lines lines;
  } cases[] = {
      {{}, {"[]"}},
      {{0xff, 0xff, 0xff, 0, 0xa}, {"[#ff:3 #0 #a ]"}},
      {{0, 0, 0x80000000}, {"[#0:2 #80000000 ]"}},
      {{1, 2, 3, 4, 5, 6, 7}, {"[#1 #2 #3 #4 #5 #6 #7 ", "]"}},
      {{1, 2, 3, 4, 5, 6, 7, 7, 8, 0xffffffff}, {"[#1 #2 #3 #4 #5 #6 #7:2 ", "#8 #ffffffff ]"}},
  };
  for (const auto& c : cases) {
    const cow_List<cow_String> written = utl_BlkBitUtils::GetMaskString(FromWords(c.words));
    Lines texts;
    for (int i = 0; i < written.Count(); ++i)
      texts.push_back(written.ConstGet(i).c_str());
    EXPECT_EQ(texts, c.lines);
    EXPECT_EQ(Read(c.lines), c.words);
  }
}

TEST_F(BlkBitUtilsTest, ReadsItemsOfAnyShapeByTheirRules) {
  const struct {
    Lines lines;
    Words words;
  } cases[] = {
      // A ':' counts only before the next blank; lines don't matter.
      {{"#3 :2 #4:", "2 #5"}, {3, 4, 5}},
      {{"#0:2 #c", "#0x1f:2 #zz #:9 # 6"}, {0, 0, 0xc, 0x1f, 0x1f, 6}},
      {{"#1:-4 #2:0 #7:x #123456789 #-1"}, {7, 0xffffffff, 0xffffffff}},
      // A NUL ends a line; the first ':' before the blank serves both items.
      {{std::string("#5\0#6", 5), "#1#2:3"}, {5, 1, 1, 1, 2, 2, 2}},
  };
  for (const auto& c : cases)
    EXPECT_EQ(Read(c.lines), c.words) << c.lines[0];
  // A zero word moves on without clearing; runs end at the last word of the bit range.
  EXPECT_EQ(Read({"#0:2 #1"}, FromWords({9, 9, 9})), (Words{9, 9, 1}));
  cow_List<cow_String> end;
  end.Append("#0:134217726 #1:5");
  omi_BlkBitVect last;
  utl_BlkBitUtils::GetMaskFromString(end, last);
  unsigned bit = 0;
  EXPECT_TRUE(omi_BlkBitVectTrav(&last).Last(bit) && bit == 0xffffffe0u && last.Count() == 2);
}

}  // namespace
