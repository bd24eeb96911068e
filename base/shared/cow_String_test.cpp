#include "cow_String.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "VRKTestLibrary.h"
#include "mem_Alloc.h"
#include "omi_FatalError.h"

namespace {

// Every test checks at its end that all memory went back.
using CowStringTest = VRKFootprintTest;

TEST_F(CowStringTest, IsTwoWordsAndEmptyHasNoRepresentation) {
  EXPECT_EQ(sizeof(cow_String), 2 * sizeof(void*));
  const unsigned long before = mem_Footprint();
  cow_String empty, fromEmpty(""), fromNull(static_cast<const char*>(nullptr));
  EXPECT_EQ(mem_Footprint(), before);
  EXPECT_EQ(empty.c_str(), fromEmpty.c_str());  // the shared empty literal
  EXPECT_EQ(empty.c_str(), fromNull.c_str());
}

TEST_F(CowStringTest, CopiesShareUntilOneChangesAndSelfAssignmentIsSafe) {
  cow_String original("shared text");
  cow_String copy = original;
  EXPECT_EQ(copy.c_str(), original.c_str());

  copy += "!";
  EXPECT_NE(copy.c_str(), original.c_str());
  EXPECT_EQ(original, "shared text");
  EXPECT_EQ(copy, "shared text!");

  cow_String other = original;
  other[0] = 'S';
  EXPECT_EQ(original, "shared text");
  EXPECT_EQ(other, "Shared text");

  cow_String lowered = other;
  lowered.ToUpper();
  EXPECT_EQ(other, "Shared text");
  EXPECT_EQ(lowered, "SHARED TEXT");

  // Assignment from its own text, or of itself, is safe.
  lowered = lowered.c_str() + 2;
  EXPECT_EQ(lowered, "ARED TEXT");
  const cow_String& same = lowered;
  lowered = same;
  EXPECT_EQ(lowered, "ARED TEXT");
}

// Borrowed text is used in place and copied on write; an adopted block is owned and freed
// (TearDown's footprint check shows it went back); a presized string grows in place.
TEST_F(CowStringTest, BorrowedAdoptedAndPresizedBlocks) {
  static const char text[] = "borrowed";
  cow_String borrowed(text, 8, cow_String::Borrow);
  EXPECT_EQ(borrowed.c_str(), text);
  borrowed += " and changed";
  EXPECT_STREQ(text, "borrowed");
  EXPECT_EQ(borrowed, "borrowed and changed");

  char* block = static_cast<char*>(mem_Malloc(6));
  std::memcpy(block, "hello", 6);
  EXPECT_EQ(cow_String(block, 5, cow_String::Adopt).c_str(), block);

  cow_String presized(100, cow_String::PreSize);
  presized += "a";
  const char* place = presized.c_str();
  for (int i = 1; i < 100; ++i)
    presized += "a";
  EXPECT_EQ(presized.c_str(), place);
  EXPECT_EQ(presized.Length(), 100);
}

TEST_F(CowStringTest, SearchesReportMissesAsLengthAndMinusOne) {
  const cow_String text("abcabc");
  EXPECT_EQ(text.Find("bc"), 1);
  EXPECT_EQ(text.Find("bc", 2), 4);
  EXPECT_EQ(text.Find("zz"), 6);
  EXPECT_EQ(text.Find("bc", 99), 6);
  EXPECT_EQ(text.Find("bc", -5), 1);
  EXPECT_EQ(text.Find(""), 0);
  EXPECT_EQ(text.rfind("bc", 99, -1), 4);
  EXPECT_EQ(text.rfind("bc", 3, -1), 1);
  EXPECT_EQ(text.rfind("bcX", 99, 2), 4);  // only the first two characters count
  EXPECT_EQ(text.rfind("zz", 99, -1), -1);
  EXPECT_EQ(text.rfind("a", -1, -1), -1);
  // A null text is the empty one, found where the search starts.
  EXPECT_EQ(text.rfind(nullptr, 99, -1), 6);
  EXPECT_EQ(text.rfind(nullptr, 2, 5), 2);
  EXPECT_EQ(cow_String().rfind(nullptr, 0, -1), 0);
}

TEST_F(CowStringTest, RangesAreClampedToTheString) {
  const cow_String text("0123456789");
  EXPECT_EQ(text.Substr(2, 3), "234");
  EXPECT_EQ(text.Substr(7, 50), "789");
  EXPECT_EQ(text.Substr(-4, 2), "01");
  EXPECT_EQ(text.Substr(20, 2), "");
  EXPECT_EQ(text.Substr(5, -1), "56789");
  EXPECT_EQ(text.Substr(0, -1).c_str(), text.c_str());  // the whole string is shared

  cow_String erased = text;
  erased.Erase(2, 3);
  erased.Erase(5, 100);  // "0156789" to "01567"
  erased.Erase(-3, 1);
  erased.Erase(100, 1);
  EXPECT_EQ(erased, "1567");
  EXPECT_EQ(text, "0123456789");
}

TEST_F(CowStringTest, IndexOutsideTheStringRaises) {
  cow_String text("abc");
  const cow_String& constText = text;
  EXPECT_EQ(constText[2], 'c');
  EXPECT_THROW(constText[3], omi_FatalError);
  EXPECT_THROW(text[-1], omi_FatalError);
  EXPECT_THROW(cow_String()[0], omi_FatalError);
}

TEST_F(CowStringTest, AppendTakesAPartOfATextAndMayUseItsOwn) {
  cow_String text("ab");
  text.append("xyz", 3, 1, 5);
  EXPECT_EQ(text, "abyz");
  text.append(text.c_str(), text.Length(), 0, 0x7fffffff);
  EXPECT_EQ(text, "abyzabyz");
  for (int i = 0; i < 5; ++i)
    text.append(text.c_str(), text.Length(), 0, 0x7fffffff);
  EXPECT_EQ(text.Length(), 8 * 32);
  EXPECT_EQ(text.Substr(248, 8), "abyzabyz");
  text.append(nullptr, 5, 0, 5);
  text.append("q", 1, 4, 1);
  EXPECT_EQ(text.Length(), 256);
}

TEST_F(CowStringTest, SubstituteReplacesFromTheLeft) {
  cow_String text("a.b.c.d");
  EXPECT_EQ(text.Substitute(".", "::", 2), 2);
  EXPECT_EQ(text, "a::b::c.d");
  EXPECT_EQ(text.Substitute("::", "", 0), 2);
  EXPECT_EQ(text, "abc.d");
  EXPECT_EQ(text.Substitute("zz", "y", 0), 0);
  EXPECT_EQ(text.Substitute("", "y", 0), 0);
  EXPECT_EQ(text, "abc.d");
}

TEST_F(CowStringTest, TrimsTheGivenCharacters) {
  cow_String text("\n\t  body \r\n");
  text.Trim(nullptr);
  EXPECT_EQ(text, "body");
  cow_String path("//dir/name//");
  path.LeftTrim("/");
  path.RightTrim("x");
  EXPECT_EQ(path, "dir/name//");
  path.RightTrim("/");
  EXPECT_EQ(path, "dir/name");
  cow_String all("xxxx");
  all.Trim("x");
  EXPECT_TRUE(all.IsEmpty());
}

TEST_F(CowStringTest, ComparesBytewiseAsUnsignedAndGivesNumbersTheirText) {
  EXPECT_TRUE(cow_String("a") < cow_String("\xff"));
  EXPECT_TRUE(cow_String("ab") < cow_String("abc"));
  EXPECT_FALSE(cow_String("abc") < cow_String("abc"));
  EXPECT_TRUE(cow_String("abc") == "abc");
  EXPECT_TRUE("abc" != cow_String("abd"));
  EXPECT_TRUE(cow_String("a\0b", 3) != cow_String("a"));
  EXPECT_EQ(cow_String("dir") + "/" + cow_String("file"), "dir/file");
  EXPECT_EQ(cow_String(-2147483647 - 1), "-2147483648");
  EXPECT_EQ(cow_String(4000000000u), "4000000000");
}

}  // namespace
