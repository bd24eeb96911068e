#include "aio_ostrstream.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <string>

#include "mem_Alloc.h"

namespace {

// Formatting of every kind of item, checked on a memory stream.
class StreamFormatTest : public ::testing::Test {
 protected:
  std::string Text() { return m_Stream.str().c_str(); }

  aio_ostrstream m_Stream;
};

TEST_F(StreamFormatTest, DefaultFormsOfTextNumbersPointersAndManipulators) {
  m_Stream << "n=" << 42 << ' ' << -7 << ' ' << 4000000000u << ' ' << -9000000000ll << ' '
           << 18000000000000000000ull << ' ' << 3l << aio_endl;
  // Doubles are general with six digits.
  m_Stream << 0.1 << ' ' << 1.5e9 << ' ' << 100000.0 << ' ' << 1e6 << ' ' << 2.0 << ' ' << 1.0 / 3
           << ' ' << -0.0 << ' ' << static_cast<const void*>(nullptr) << aio_flush;
  EXPECT_EQ(Text(),
            "n=42 -7 4000000000 -9000000000 18000000000000000000 3\n"
            "0.1 1.5e+09 100000 1e+06 2 0.333333 -0 (nil)");
}

TEST_F(StreamFormatTest, FlagsSelectNotationBaseAndSignAndSettersReturnTheOldFlags) {
  m_Stream.setf(aio_ios::fixed, aio_ios::floatfield);
  m_Stream.precision(2);
  m_Stream << 3.14159 << ' ' << 1e20 << ' ';
  m_Stream.setf(aio_ios::scientific | aio_ios::uppercase, aio_ios::floatfield | aio_ios::uppercase);
  m_Stream << 1234.5 << ' ';
  m_Stream.unsetf(aio_ios::floatfield | aio_ios::uppercase);
  m_Stream.setf(aio_ios::showpoint);
  m_Stream << 2.0 << ' ';
  m_Stream.flags(aio_ios::hex | aio_ios::showbase);
  m_Stream << 255 << ' ' << -1 << ' ';
  m_Stream.flags(aio_ios::oct);
  m_Stream << 8 << ' ';
  m_Stream.flags(aio_ios::showpos);
  m_Stream << 5 << ' ' << 0.5;
  EXPECT_EQ(Text(), "3.14 100000000000000000000.00 1.23E+03 2.0 0xff 0xffffffff 10 +5 +0.5");

  // The setters return the old flags.
  m_Stream.flags(0);
  EXPECT_EQ(m_Stream.setf(aio_ios::left), 0);
  EXPECT_EQ(m_Stream.setf(aio_ios::hex, aio_ios::basefield), aio_ios::left);
  EXPECT_EQ(m_Stream.unsetf(aio_ios::left), aio_ios::left | aio_ios::hex);
  EXPECT_EQ(m_Stream.flags(), aio_ios::hex);
}

TEST_F(StreamFormatTest, WidthAppliesToTheNextFormattedItemOnly) {
  aio_setwidth(m_Stream, 6) << 42 << 42 << '|';
  aio_setwidth(m_Stream, 4) << "ab" << '|';
  m_Stream.setf(aio_ios::left);
  aio_setwidth(m_Stream, 5) << 1.5 << '|';
  aio_setwidth(m_Stream, 3);
  m_Stream.put('x').write("yz", 2);    // raw output ignores the width...
  m_Stream << cow_String("s") << '|';  // ...which the next formatted item takes
  aio_setwidth(m_Stream, 1) << "longer";
  EXPECT_EQ(Text(), "    4242|  ab|1.5  |xyzs  |longer");
}

TEST(StringStreamTest, GrowsWithoutLimitAndKeepsEveryByte) {
  aio_ostrstream stream;
  std::string expected;
  for (int i = 0; i < 20000; ++i) {
    stream << i << ',';
    expected += std::to_string(i) + ",";
  }
  EXPECT_EQ(stream.Length(), static_cast<int>(expected.size()));
  EXPECT_EQ(std::string(stream.str().c_str()), expected);
}

// Seeking back starts the text again; a failed seek discards output until cleared.
TEST(StringStreamTest, SeekingBackStartsTheTextAgain) {
  aio_ostrstream stream;
  stream << "first text";
  stream.seekp(0, aio_ios::beg);
  EXPECT_EQ(stream.str(), "");
  stream << "second";
  stream.seekp(-3, aio_ios::cur) << "ONE";
  EXPECT_EQ(stream.str(), "secONE");
  stream.seekp(10, aio_ios::beg);
  EXPECT_TRUE(stream.fail());
  stream << "lost";
  EXPECT_EQ(stream.str(), "secONE");
  stream.clear();
  stream << "d";
  EXPECT_TRUE(stream.good());
  EXPECT_EQ(stream.str(), "secONEd");
}

TEST(StringStreamTest, AdoptStringHandsTheTextOverAndEmptiesTheStream) {
  const unsigned long start = mem_Footprint();
  {
    aio_ostrstream stream;
    stream << "handed over";
    char* text = stream.adoptString(mem_Malloc);
    ASSERT_NE(text, nullptr);
    EXPECT_STREQ(text, "handed over");
    cow_String owned(text, static_cast<int>(std::strlen(text)), cow_String::Adopt);
    EXPECT_EQ(owned.c_str(), text);
    EXPECT_EQ(stream.str(), "");
    char* empty = stream.adoptString(mem_Malloc);
    EXPECT_STREQ(empty, "");
    mem_Free(empty);

    stream << "again";
    char* copied = stream.adoptString(std::malloc);
    EXPECT_STREQ(copied, "again");
    std::free(copied);
    EXPECT_EQ(stream.Length(), 0);
  }
  EXPECT_EQ(mem_Footprint(), start);
}

}  // namespace
