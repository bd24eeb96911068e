#include "typ_DebugFlags.h"

#include <gtest/gtest.h>

#include <climits>
#include <string>

#include "VRKTestLibrary.h"

namespace {

class DebugFlagsTest : public VRKLibraryTest {
 protected:
  void SetUp() override {
    VRKLibraryTest::SetUp();
    typ_DebugFlags::SetDebugFlags("uti", 0);
    typ_DebugFlags::SetDebugFlags("utl", 0);
  }
};

TEST_F(DebugFlagsTest, FacilityTableHasItsNamesInTheirSlots) {
  int named = 0;
  for (unsigned slot = 0; slot < 1024; ++slot)
    named += typ_DebugFlags::GetDebugFacilityName(slot) != nullptr;
  EXPECT_EQ(named, 234);
  EXPECT_STREQ(typ_DebugFlags::GetDebugFacilityName(2), "uti");
  EXPECT_STREQ(typ_DebugFlags::GetDebugFacilityName(44), "PythonZVTdbc");
  EXPECT_STREQ(typ_DebugFlags::GetDebugFacilityName(853), "mgc");
  EXPECT_EQ(typ_DebugFlags::GetDebugFacilityName(0), nullptr);
  EXPECT_EQ(typ_DebugFlags::GetDebugFacilityName(1 << 20), nullptr);
}

TEST_F(DebugFlagsTest, SetsAndGetsByNameAndNumber) {
  EXPECT_TRUE(typ_DebugFlags::SetDebugFlags("utl", 3));
  EXPECT_EQ(typ_DebugFlags::GetDebugFlags(3u), 3);
  EXPECT_EQ(typ_DebugFlags::GetDebugFlags("utl"), 3);
  EXPECT_FALSE(typ_DebugFlags::SetDebugFlags("ut", 1));  // names match exactly
  EXPECT_EQ(typ_DebugFlags::GetDebugFlags("nosuch"), 0);
  EXPECT_EQ(typ_DebugFlags::GetDebugFlags(1u << 20), 0);
}

TEST_F(DebugFlagsTest, ParsesPairsUntilASyntaxError) {
  EXPECT_TRUE(typ_DebugFlags::ParseDebugFlags("uti=2,utl=1"));
  EXPECT_EQ(typ_DebugFlags::GetDebugFlags("uti"), 2);
  EXPECT_EQ(typ_DebugFlags::GetDebugFlags("utl"), 1);
  EXPECT_TRUE(typ_DebugFlags::ParseDebugFlags(""));
  EXPECT_TRUE(typ_DebugFlags::ParseDebugFlags("utl=,"));  // no digits: level 0
  EXPECT_EQ(typ_DebugFlags::GetDebugFlags("utl"), 0);

  EXPECT_FALSE(typ_DebugFlags::ParseDebugFlags("uti"));
  EXPECT_FALSE(typ_DebugFlags::ParseDebugFlags("uti=5x"));
  EXPECT_EQ(typ_DebugFlags::GetDebugFlags("uti"), 2);
  EXPECT_FALSE(typ_DebugFlags::ParseDebugFlags("utl=4,uti"));  // pairs before the error stay
  EXPECT_EQ(typ_DebugFlags::GetDebugFlags("utl"), 4);

  EXPECT_FALSE(typ_DebugFlags::ParseDebugFlags("nosuch=1,uti=3"));
  EXPECT_EQ(typ_DebugFlags::GetDebugFlags("uti"), 3);
}

TEST_F(DebugFlagsTest, AnyLengthOfNameOrDigitsWorks) {
  const std::string longName(100, 'x');
  EXPECT_FALSE(typ_DebugFlags::ParseDebugFlags((longName + "=1,uti=6").c_str()));
  EXPECT_EQ(typ_DebugFlags::GetDebugFlags("uti"), 6);
  EXPECT_TRUE(typ_DebugFlags::ParseDebugFlags(("uti=" + std::string(60, '0') + "7").c_str()));
  EXPECT_EQ(typ_DebugFlags::GetDebugFlags("uti"), 7);
  EXPECT_TRUE(typ_DebugFlags::ParseDebugFlags("uti=99999999999999999999"));
  EXPECT_EQ(typ_DebugFlags::GetDebugFlags("uti"), INT_MAX);
}

}  // namespace
