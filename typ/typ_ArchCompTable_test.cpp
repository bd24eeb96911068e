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

using T = typ_ArchCompTable;

TEST_F(ArchCompTableTest, AnyNumberGivesARowWithoutReadingOutsideTheTables) {
  EXPECT_STREQ(T::GetName(1), "typ_none");
  EXPECT_STREQ(T::GetName(4), "typ_ado");
  EXPECT_STREQ(T::GetName(Type(3)), "test_DiskError");
  for (unsigned type : {0u, 5u, 1024u << 16 | 1, 0xffffffffu})
    EXPECT_STREQ(T::GetName(type), "INVALID FACILITY") << std::hex << type;
  EXPECT_STREQ(T::GetName(901u << 16 | 1), "MISSING TYPE TABLES");
  for (unsigned type : {Type(5), Type(0x1001) /* reserved bit */, Type(0x8000)})
    EXPECT_STREQ(T::GetName(type), "INVALID TYPE") << std::hex << type;
  EXPECT_EQ(T::GetName(Type(0)), nullptr);  // an unused index
  EXPECT_EQ(T::GetParent(0x12345678), 1u);
}

TEST_F(ArchCompTableTest, ParentsKindsAndTheAncestorChain) {
  EXPECT_EQ(T::GetParent(Type(3)), Type(2));
  EXPECT_EQ(T::GetKind(Type(4)), 7);
  EXPECT_EQ(T::GetParent(3), 2u);  // typ_obj and typ_any are of typ_any
  EXPECT_EQ(T::GetKind(2), 1);
  for (unsigned type : {0u, 1u, 3u, Type(3), 0xffffffffu})
    EXPECT_TRUE(T::IsParent(type, type)) << type;
  EXPECT_TRUE(T::IsParent(Type(3), Type(1)) && T::IsParent(Type(3), 3) && T::IsParent(Type(3), 2));
  EXPECT_FALSE(T::IsParent(Type(1), Type(3)));
  EXPECT_FALSE(T::IsParent(Type(4), 2));  // a value class is no typ_any
  EXPECT_FALSE(T::IsParent(Type(4), 3));
  EXPECT_TRUE(T::IsParent(Type(4), 1));
  EXPECT_FALSE(T::IsParent(Type(2), Type(4)));
}

TEST_F(ArchCompTableTest, ARestartBringsBackAnEmptyTable) {
  VRKLnuBasicUtils_finalize(m_Tally);
  EXPECT_STREQ(T::GetName(Type(1)), "INVALID FACILITY");
  typ_ArchCompTable::InsertEntry(kFacility, typ_ArchCompEntry(kRows, 5));  // ignored while down
  VRKLnuBasicUtils_initialize(m_Tally);
  EXPECT_STREQ(T::GetName(Type(1)), "MISSING TYPE TABLES");
}

}  // namespace
