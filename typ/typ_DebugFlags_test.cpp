#include "typ_DebugFlags.h"

#include <gtest/gtest.h>

#include <climits>
#include <string>

#include "VRKTestLibrary.h"

namespace {

using DebugFlagsTest = VRKLibraryTest;

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

// Each text is parsed in turn; the levels of uti and utl after it follow. Names match exactly.
TEST_F(DebugFlagsTest, ParsesPairsUntilASyntaxError) {
  const std::string longName(100, 'x');
  const struct {
    std::string text;
    bool ok;
    int uti, utl;
  } kSteps[] = {{"uti=2,utl=1", true, 2, 1},
                {"", true, 2, 1},
                {"utl=,", true, 2, 0} /* no digits */,
                {"uti", false, 2, 0},
                {"uti=5x", false, 2, 0},
                {"utl=4,uti", false, 2, 4} /* 1st stays */,
                {"nosuch=1,uti=3", false, 3, 4},
                {"ut=1", false, 3, 4},
                {longName + "=1,uti=6", false, 6, 4},
                {"uti=" + std::string(60, '0') + "7", true, 7, 4},
                {"uti=99999999999999999999", true, INT_MAX, 4}};
  for (const auto& s : kSteps) {
    EXPECT_EQ(typ_DebugFlags::ParseDebugFlags(s.text.c_str()), s.ok) << s.text;
    EXPECT_EQ(typ_DebugFlags::GetDebugFlags("uti"), s.uti) << s.text;
    EXPECT_EQ(typ_DebugFlags::GetDebugFlags(3u), s.utl) << s.text;  // utl by number
  }
  EXPECT_TRUE(typ_DebugFlags::SetDebugFlags("utl", 5));
  EXPECT_EQ(typ_DebugFlags::GetDebugFlags("utl"), 5);
  EXPECT_FALSE(typ_DebugFlags::SetDebugFlags("ut", 1));
  EXPECT_EQ(typ_DebugFlags::GetDebugFlags("nosuch") + typ_DebugFlags::GetDebugFlags(1u << 20), 0);
}

}  // namespace
