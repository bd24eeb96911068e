#include "utl_Catenator.h"

#include <gtest/gtest.h>

#include <string>

#include "VRKTestLibrary.h"

namespace {

// Each test checks that the catenator gives back all its memory, the stream's included.
class CatenatorTest : public VRKFootprintTest {
 protected:
  void SetUp() override {
    VRKFootprintTest::SetUp();
    m_Catenator = new utl_Catenator;
  }
  void TearDown() override {
    delete m_Catenator;
    VRKFootprintTest::TearDown();
  }

  // Adds `n` bytes counting up from the text's present length.
  void Add(int n) {
    std::string piece;
    for (int i = 0; i < n; ++i)
      piece += static_cast<char>('a' + (m_Expected.size() + i) % 26);
    m_Catenator->Cat(piece.data(), n);
    m_Expected += piece;
  }

  utl_Catenator* m_Catenator = nullptr;
  std::string m_Expected;
};

TEST_F(CatenatorTest, UpTo991BytesStayInTheSharedString) {
  Add(500);
  Add(491);
  const cow_String first = m_Catenator->GetString();
  const cow_String second = m_Catenator->GetString();
  EXPECT_EQ(std::string(first.c_str()), m_Expected);
  EXPECT_EQ(first.c_str(), second.c_str());  // shared, not handed over
}

TEST_F(CatenatorTest, At992BytesTheTextMovesToTheStream) {
  Add(991);
  Add(1);
  Add(3000);
  const cow_String text = m_Catenator->GetString();
  EXPECT_EQ(std::string(text.c_str()), m_Expected);
  EXPECT_EQ(m_Catenator->GetString(), "");  // the stream handed its text over
  m_Catenator->Cat("more", 4);
  EXPECT_EQ(m_Catenator->GetString(), "more");
}

TEST_F(CatenatorTest, ShortTextsAreCopiedToTheirOwnSize) {
  m_Catenator->Cat("short", 5).Cat("", 0).Cat("x", -1);
  const cow_String first = m_Catenator->GetString();
  m_Catenator->Cat(" text", 5);
  EXPECT_EQ(first, "short");
  EXPECT_EQ(m_Catenator->GetString(), "short text");
  EXPECT_NE(m_Catenator->GetString().c_str(), m_Catenator->GetString().c_str());
}

TEST_F(CatenatorTest, EraseEmptiesEitherWayAndKeepsTheStream) {
  m_Catenator->Cat("abc", 3).Erase().Cat("de", 2);
  EXPECT_EQ(m_Catenator->GetString(), "de");
  Add(2000);
  m_Catenator->Erase().Cat("after", 5);
  EXPECT_EQ(m_Catenator->GetString(), "after");
  EXPECT_EQ(m_Catenator->GetString(), "");  // still in the stream
}

}  // namespace
