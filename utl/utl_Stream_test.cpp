#include "utl_Stream.h"

#include <gtest/gtest.h>

#include <string>

#include "aio_ostrstream.h"

namespace {

class StreamTest : public ::testing::Test {
 protected:
  std::string Text() const { return m_Out.str().c_str(); }

  aio_ostrstream m_Out;
  utl_Stream m_Stream{m_Out, 20, 3, 10};
};

const std::string a15(15, 'a');
const std::string x30(30, 'x');

TEST_F(StreamTest, HeldTextFitsUpToTheWidthOrMovesWholeToTheNextLine) {
  m_Stream << a15.c_str();
  m_Stream.OptionalLineBreak();
  m_Stream << "bbbbb";  // exactly 20: still fits, and is held
  EXPECT_EQ(Text(), a15);
  m_Stream.OptionalLineBreak();
  EXPECT_EQ(Text(), a15 + "bbbbb");
  m_Stream << "0123456789";
  EXPECT_EQ(Text(), a15 + "bbbbb\n0123456789");
  m_Stream.OptionalLineBreak();
  m_Stream << x30.c_str() << "cd";  // longer than the line: whole, on a line of its own
  EXPECT_EQ(Text(), a15 + "bbbbb\n0123456789\n" + x30 + "cd");
}

TEST_F(StreamTest, FlushStartsTheColumnAgainAndLineBreakKeepsTheHeldLength) {
  m_Stream << a15.c_str();
  m_Stream.OptionalLineBreak();
  m_Stream << cow_String("held");
  m_Stream.Flush();
  EXPECT_EQ(Text(), a15 + "held");
  m_Stream << "0123456789012345";  // column 0 after Flush: fits
  m_Stream.OptionalLineBreak();
  m_Stream << "abcd" << endl;
  EXPECT_EQ(Text(), a15 + "held0123456789012345abcd\n");
  // The column is 4, not 0: 17 more characters no longer fit.
  m_Stream.OptionalLineBreak();
  m_Stream << "01234567890123456";
  EXPECT_EQ(Text(), a15 + "held0123456789012345abcd\n\n01234567890123456");
}

TEST(StreamLifetimeTest, HeldTextIsLostAtDestruction) {
  aio_ostrstream out;
  {
    utl_Stream stream(out, 20, 6, 6);
    stream << "kept";
    stream.OptionalLineBreak();
    stream << "lost";
  }
  EXPECT_EQ(out.str(), "kept");
}

TEST_F(StreamTest, NumbersInTheFixedStyle) {
  m_Stream.Print(2.0, 0, 6);
  m_Stream << "|";
  m_Stream.Print(1e7, 0, 6);
  m_Stream << "|";
  m_Stream.Print(3.0, 6, 0);
  m_Stream << "|";
  m_Stream.Print(1.5, 7, 2);
  m_Stream << "|";
  m_Stream.Print(0.25f, 0, 0);
  m_Stream << endl << 1.0 / 3 << "|" << 1.0f / 3 << "|";
  m_Stream.Print(-42, 5);
  m_Stream << "|" << 7 << "|" << 4000000000u << endl;
  EXPECT_EQ(Text(), "2.|1e+07|    3.|    1.5|0.25\n0.3333333333|0.333|  -42|7|4000000000\n");
}

TEST(FixNumericStringTest, RepairsRealTexts) {
  const struct {
    const char* in;
    int width;
    const char* out;
  } cases[] = {
      {"   2", 4, "  2."},    {"1.5e+007", 0, "1.5e+07"}, {" 1.5e+007", 9, "  1.5e+07"},
      {"1e-005", 0, "1e-05"}, {"1e+107", 0, "1e+107"},
  };
  for (const auto& c : cases) {
    char text[32];
    std::snprintf(text, sizeof text, "%s", c.in);
    utl_Stream::FixNumericString(text, c.width);
    EXPECT_STREQ(text, c.out) << c.in;
  }
}

TEST_F(StreamTest, SmallRealsPrintAsZeroWhileTheSettingLives) {
  {
    utl_StreamSmallReal tiny(m_Stream, 1e-10);
    m_Stream << 1e-12 << " " << -1e-12 << " " << 1e-9 << " ";
    m_Stream.Print(1e-12f, 0, 0);
    m_Stream << endl;
    {
      utl_StreamSmallReal cleared(m_Stream, 0.0);
      m_Stream << 1e-12 << endl;
    }
    utl_StreamSmallReal again(m_Stream, 1e-10);
    again.UnsetSmallestReal();
    m_Stream << 1e-12 << endl;
  }
  m_Stream << 1e-12;
  EXPECT_EQ(Text(), "0. 0. 1e-09 0.\n1e-12\n1e-12\n1e-12");
}

}  // namespace
