#include "atr_translate.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstring>
#include <initializer_list>
#include <random>
#include <string>

namespace {

// The format with the texts given as arguments 1, 2 ...
atr_String Translate(const char* format, std::initializer_list<const char*> texts = {}) {
  atr_translate tr(format);
  int index = 0;
  for (const char* text : texts)
    atr_SubstituteFormat(tr, ++index, text);
  return tr.Result();
}

TEST(TranslateTest, PlaceholdersTakeIndicesInOrderOrNameTheirIndex) {
  EXPECT_EQ(Translate("Bad Cast: From `%s' To '%s'.", {"nex_Exception", "utl_File"}),
            "Bad Cast: From `nex_Exception' To 'utl_File'.");
  EXPECT_EQ(Translate("%2$s before %1$s, %2$s again", {"one", "two"}), "two before one, two again");
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
  // text under %d: its plain text
  EXPECT_EQ(Translate("[%6s][%-6s][%.2s][%d]", {"ab", "ab", "abcdef", "text"}),
            "[    ab][ab    ][ab][text]");
  EXPECT_EQ(Translate("%-70s|", {"x"}), ("x" + std::string(69, ' ') + "|").c_str());
}

template <class T>
void ExpectAsSnprintf(const std::string& format, T value) {
  atr_translate tr(format.c_str());
  atr_SubstituteFormat(tr, 1, value);
  char expected[700];
  std::snprintf(expected, sizeof expected, format.c_str(), value);
  EXPECT_EQ(tr.Result(), expected) << format;
}

// Random flags, widths, precisions and conversions, each against what snprintf makes of the
// same placeholder and value; widths and precisions reach well past any fixed buffer.
TEST(TranslateTest, PlaceholdersFormatAsSnprintfDoes) {
  std::mt19937 random(13);
  for (int round = 0; round < 4000; ++round) {
    std::string format = "<%";
    for (int flags = random() % 4; flags > 0; --flags)
      format += "-+ #0"[random() % 5];
    if (random() % 2) format += std::to_string(random() % 320);
    if (random() % 2) format += "." + (random() % 4 ? std::to_string(random() % 320) : "");
    const char conversion = "diuoxXcs"[random() % 8];
    format += conversion + std::string(">");
    const int number = static_cast<int>(random());
    if (conversion == 's') {
      ExpectAsSnprintf(format, "a user message");
    } else if (conversion == 'c') {
      ExpectAsSnprintf(format, 'A' + number % 26);
    } else if (conversion == 'd' || conversion == 'i') {
      ExpectAsSnprintf(format, number);
    } else {
      ExpectAsSnprintf(format, static_cast<unsigned>(number));
    }
  }
}

// A width or precision that snprintf refuses (past the int range) leaves the placeholder as
// written; a long run of flags is no reason to refuse.
TEST(TranslateTest, PlaceholdersThatSnprintfRefusesStayAsWritten) {
  for (const char* format : {"%2147483648d", "%.2147483648u", "%99999999999999999999x"}) {
    atr_translate tr(format);
    atr_SubstituteFormat(tr, 1, 7);
    EXPECT_EQ(tr.Result(), format);
  }
  EXPECT_EQ(Translate("%.2147483648s", {"text"}), "%.2147483648s");
  atr_translate tr("%-------------------------------5d|");
  atr_SubstituteFormat(tr, 1, 7);
  EXPECT_EQ(tr.Result(), "7    |");
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
  EXPECT_EQ(Translate("%s of %s", {"part", "whole"}), "whole: part");
  EXPECT_EQ(Translate("untouched %%"), "untouched %");
  EXPECT_EQ(atr_SetTranslationCatalogue(nullptr), &German);
  EXPECT_EQ(Translate("%s of %s", {"part", "whole"}), "part of whole");
}

}  // namespace
