#include "utl_Catenator.h"

#include <gtest/gtest.h>

#include <string>

#include "VRKTestLibrary.h"

namespace {

// Each test checks that the catenator gives back all its memory, the stream's included.
using CatenatorTest = VRKFootprintTest;

// A catenator and the text it should hold.
struct Catenated {
  // Adds `n` bytes counting up from the text's present length.
  void Add(int n) {
    std::string piece;
    for (int i = 0; i < n; ++i)
      piece += static_cast<char>('a' + (expected.size() + i) % 26);
    cat.Cat(piece.data(), n);
    expected += piece;
  }
  std::string Text() { return cat.GetString().c_str(); }

  utl_Catenator cat;
  std::string expected;
};

TEST_F(CatenatorTest, At992BytesTheTextMovesToTheStreamWhichHandsItOver) {
  Catenated c;
  c.Add(991);
  EXPECT_EQ(c.cat.GetString().c_str(), c.cat.GetString().c_str());  // shared
  c.Add(1);
  EXPECT_EQ(c.Text(), c.expected);
  EXPECT_EQ(c.Text(), "");  // the stream handed its text over
  c.Add(3000);
  c.cat.Erase().Cat("after", 5);  // the stream stays
  EXPECT_EQ(c.Text(), "after");
  EXPECT_EQ(c.Text(), "");
}

TEST_F(CatenatorTest, ShortTextsAreCopiedToTheirOwnSize) {
  Catenated c;
  c.cat.Cat("abc", 3).Erase().Cat("short", 5).Cat("", 0).Cat("x", -1);
  const cow_String first = c.cat.GetString();
  c.cat.Cat(" text", 5);
  EXPECT_EQ(first, "short");
  EXPECT_EQ(c.Text(), "short text");
  EXPECT_NE(c.cat.GetString().c_str(), c.cat.GetString().c_str());
}

}  // namespace
