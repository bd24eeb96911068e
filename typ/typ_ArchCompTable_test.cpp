#include "typ_ArchCompTable.h"

#include <gtest/gtest.h>

#include "VRKLnuLifecycle.h"
#include "VRKTestLibrary.h"

namespace {

constexpr unsigned kFacility = 900;  // used by no package of the library
constexpr unsigned Type(unsigned index) {
  return kFacility << 16 | index;
}

// A small hierarchy: two exception classes under an exception root, and a value class.
const typ_Entry kRows[] = {
    {0, 1, nullptr},                 // 0: reserved
    {4, 3, "test_Exception"},        // 1: root of the exceptions, a typ_obj
    {4, Type(1), "test_IOError"},    // 2
    {4, Type(2), "test_DiskError"},  // 3
    {7, 1, "test_Point"},            // 4: value class
};

class ArchCompTableTest : public VRKLibraryTest {
 protected:
  void SetUp() override {
    VRKLibraryTest::SetUp();
    typ_ArchCompTable::InsertEntry(kFacility, typ_ArchCompEntry(kRows, 5));
  }
};

TEST_F(ArchCompTableTest, LooksUpNamesWithTheFailureRows) {
  EXPECT_STREQ(typ_ArchCompTable::GetName(1), "typ_none");
  EXPECT_STREQ(typ_ArchCompTable::GetName(4), "typ_ado");
  EXPECT_STREQ(typ_ArchCompTable::GetName(Type(3)), "test_DiskError");
  EXPECT_STREQ(typ_ArchCompTable::GetName(0), "INVALID FACILITY");
  EXPECT_STREQ(typ_ArchCompTable::GetName(5), "INVALID FACILITY");
  EXPECT_STREQ(typ_ArchCompTable::GetName(1024u << 16 | 1), "INVALID FACILITY");
  EXPECT_STREQ(typ_ArchCompTable::GetName(0xffffffff), "INVALID FACILITY");
  EXPECT_STREQ(typ_ArchCompTable::GetName(901u << 16 | 1), "MISSING TYPE TABLES");
  EXPECT_STREQ(typ_ArchCompTable::GetName(Type(5)), "INVALID TYPE");
  EXPECT_STREQ(typ_ArchCompTable::GetName(Type(0x1001)), "INVALID TYPE");  // reserved bit
  EXPECT_EQ(typ_ArchCompTable::GetName(Type(0)), nullptr);                 // an unused index
  EXPECT_EQ(&typ_ArchCompTable::GetEntry(Type(0x8000)), &typ_ArchCompTable::s_InvalidType);
  EXPECT_EQ(typ_ArchCompTable::s_MissingTables.parent, 1u);
}

TEST_F(ArchCompTableTest, ParentsAndKinds) {
  EXPECT_EQ(typ_ArchCompTable::GetParent(Type(3)), Type(2));
  EXPECT_EQ(typ_ArchCompTable::GetKind(Type(4)), 7);
  EXPECT_EQ(typ_ArchCompTable::GetParent(3), 2u);
  EXPECT_EQ(typ_ArchCompTable::GetKind(2), 1);
  EXPECT_EQ(typ_ArchCompTable::GetParent(0x12345678), 1u);
}

TEST_F(ArchCompTableTest, IsParentWalksTheChain) {
  for (unsigned type : {0u, 1u, 3u, Type(3), 0xffffffffu})
    EXPECT_TRUE(typ_ArchCompTable::IsParent(type, type)) << type;
  EXPECT_TRUE(typ_ArchCompTable::IsParent(Type(3), Type(1)));
  EXPECT_TRUE(typ_ArchCompTable::IsParent(Type(3), 3));
  EXPECT_TRUE(typ_ArchCompTable::IsParent(Type(3), 2));
  EXPECT_FALSE(typ_ArchCompTable::IsParent(Type(1), Type(3)));
  EXPECT_FALSE(typ_ArchCompTable::IsParent(Type(4), 2));  // a value class is no typ_any
  EXPECT_FALSE(typ_ArchCompTable::IsParent(Type(4), 3));
  EXPECT_TRUE(typ_ArchCompTable::IsParent(Type(4), 1));
  EXPECT_FALSE(typ_ArchCompTable::IsParent(Type(2), Type(4)));
}

TEST_F(ArchCompTableTest, ARestartBringsBackAnEmptyTable) {
  VRKLnuBasicUtils_finalize(m_Tally);
  EXPECT_STREQ(typ_ArchCompTable::GetName(Type(1)), "INVALID FACILITY");
  typ_ArchCompTable::InsertEntry(kFacility, typ_ArchCompEntry(kRows, 5));  // ignored while down
  VRKLnuBasicUtils_initialize(m_Tally);
  EXPECT_STREQ(typ_ArchCompTable::GetName(Type(1)), "MISSING TYPE TABLES");
}

}  // namespace
