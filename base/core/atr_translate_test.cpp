#include "atr_translate.h"

#include <gtest/gtest.h>

#include <cstring>

namespace {

atr_String Translate(const char* format) {
  return atr_translate(format).Result();
}

TEST(TranslateTest, UnnumberedPlaceholdersTakeIndicesInOrder) {
  atr_translate tr("Bad Cast: From `%s' To '%s'.");
  atr_SubstituteFormat(tr, 1, "nex_Exception");
  atr_SubstituteFormat(tr, 2, "utl_File");
  EXPECT_EQ(tr.Result(), "Bad Cast: From `nex_Exception' To 'utl_File'.");
}

TEST(TranslateTest, NumberedPlaceholdersNameTheirIndex) {
  atr_translate tr("%2$s before %1$s, %2$s again");
  atr_SubstituteFormat(tr, 1, "one");
  atr_SubstituteFormat(tr, 2, "two");
  EXPECT_EQ(tr.Result(), "two before one, two again");
}

TEST(TranslateTest, NumbersFollowTheirConversion) {
  atr_translate tr("%d|%u|%5d|%-4d|%x|%u|%c|%s");
  atr_SubstituteFormat(tr, 1, -42);
  atr_SubstituteFormat(tr, 2, 4000000000u);
  atr_SubstituteFormat(tr, 3, 7);
  atr_SubstituteFormat(tr, 4, 7);
  atr_SubstituteFormat(tr, 5, 255);
  atr_SubstituteFormat(tr, 6, -1);  // as printf: the 32-bit pattern
  atr_SubstituteFormat(tr, 7, 'A');
  atr_SubstituteFormat(tr, 8, 12);  // a number under %s: its plain text
  EXPECT_EQ(tr.Result(), "-42|4000000000|    7|7   |ff|4294967295|A|12");
}

TEST(TranslateTest, TextsTakeWidthAndPrecision) {
  atr_translate tr("[%6s][%-6s][%.2s][%d]");
  atr_SubstituteFormat(tr, 1, "ab");
  atr_SubstituteFormat(tr, 2, "ab");
  atr_SubstituteFormat(tr, 3, "abcdef");
  atr_SubstituteFormat(tr, 4, "text");  // text under %d: its plain text
  EXPECT_EQ(tr.Result(), "[    ab][ab    ][ab][text]");

  atr_translate wide("%-70s|");
  atr_SubstituteFormat(wide, 1, "x");
  const atr_String result = wide.Result();
  EXPECT_EQ(result.Length(), 71);
  EXPECT_EQ(result.c_str()[70], '|');
}

TEST(TranslateTest, PlaceholdersWithoutValuesStayAsWritten) {
  EXPECT_EQ(Translate("100%% done, %s left, %3$d, %"), "100% done, %s left, %3$d, %");
  atr_translate tr("%s and %s");
  atr_SubstituteFormat(tr, 2, "second");
  atr_SubstituteFormat(tr, 0, "ignored");
  atr_SubstituteFormat(tr, atr_translate::kMaxArguments + 1, "ignored");
  EXPECT_EQ(tr.Result(), "%s and second");
  EXPECT_EQ(Translate(nullptr), "");
}

TEST(TranslateTest, StringArgumentsAreSharedNotCopied) {
  const atr_String text = Translate("a user message");
  atr_translate tr("%s");
  atr_SubstituteFormat(tr, 1, text);
  const atr_String result = tr.Result();
  EXPECT_EQ(result, text);
  atr_String appended = result;
  appended += "!";
  appended += text;
  EXPECT_EQ(appended, "a user message!a user message");
  EXPECT_TRUE(text < appended);
}

const char* German(const char* format) {
  if (std::strcmp(format, "%s of %s") == 0) return "%2$s: %1$s";
  return format;
}

TEST(TranslateTest, TheCatalogueMayReorderTheValues) {
  atr_SetTranslationCatalogue(German);
  atr_translate tr("%s of %s");
  atr_SubstituteFormat(tr, 1, "part");
  atr_SubstituteFormat(tr, 2, "whole");
  EXPECT_EQ(tr.Result(), "whole: part");
  EXPECT_EQ(Translate("untouched %%"), "untouched %");
  EXPECT_EQ(atr_SetTranslationCatalogue(nullptr), &German);
  atr_translate plain("%s of %s");
  atr_SubstituteFormat(plain, 1, "part");
  atr_SubstituteFormat(plain, 2, "whole");
  EXPECT_EQ(plain.Result(), "part of whole");
}

}  // namespace
