#include "nex_TypeTable.h"

#include <gtest/gtest.h>

#include "VRKTestLibrary.h"
#include "cls_MetadataRegistrar.h"
#include "nex_BadCastException.h"
#include "nex_TextException.h"
#include "typ_ArchCompTable.h"

namespace {

constexpr unsigned kException = 0x1F0001;
constexpr unsigned kText = 0x1F0002;
constexpr unsigned kExit = 0x1F0006;
constexpr unsigned kCowString = 0x1A0001;

class TypeTableTest : public VRKLibraryTest {
 protected:
  const cls_ClassRegistrar& classes = cls_MetadataRegistrar::Instance().GetWorkingSet();
};

TEST_F(TypeTableTest, CastsAreAllowedTowardsDescendantsAndAFailedReferenceCastRaises) {
  EXPECT_TRUE(nex_canDynamicCastPtr(kException, kText));
  EXPECT_FALSE(nex_canDynamicCastPtr(kText, kException));
  EXPECT_FALSE(nex_canDynamicCastPtr(kText, kExit));
  EXPECT_TRUE(nex_canDynamicCastPtr(3, kText));        // every exception is a typ_obj
  EXPECT_FALSE(nex_canDynamicCastPtr(2, kCowString));  // a value class is no typ_any
  // Equal ids need no table, not even a valid one.
  EXPECT_TRUE(nex_canDynamicCastPtr(0xFFFF0001, 0xFFFF0001));
  EXPECT_FALSE(nex_canDynamicCastPtr(0xFFFF0001, kText));

  EXPECT_TRUE(nex_canDynamicCastRef(kException, kExit, "caller", 1));
  try {
    nex_canDynamicCastRef(kText, kExit, "caller", 321);
    FAIL() << "the cast passed";
  } catch (const nex_BadCastException& error) {
    EXPECT_EQ(error.AsString(), "Bad Cast: From `nex_ExitException' To 'nex_TextException'.");
    EXPECT_EQ(error.FromFile(), "caller");
    EXPECT_EQ(error.FromLine(), 321);
  }
  EXPECT_STREQ(typ_ArchCompTable::GetName(0x1F0009), "nex_OutOfMemoryException");  // the last
}

// The registrar's misses raise through the hooks that the package installs.
template <class Lookup>
void ExpectMiss(Lookup lookup, const char* text, int line) {
  try {
    lookup();
    ADD_FAILURE() << "no error for: " << text;
  } catch (const nex_TextException& error) {
    EXPECT_EQ(error.AsString(), text);
    EXPECT_EQ(error.FromFile(), "nex_TypeTable");
    EXPECT_EQ(error.FromLine(), line);
  }
}

TEST_F(TypeTableTest, RegistrarMissesRaiseTextErrors) {
  ExpectMiss([&] { classes.ConstGet(0x1F000A); },
             "cls_ClassRegistrar::ConstGet failed: Class INVALID TYPE is not declared in "
             "metadata.",
             46);
  ExpectMiss([&] { classes.GetLastClassVersionNumber(0x230001); },
             "cls_ClassRegistrar::ConstGet failed: Class cls_InternalList is not declared in "
             "metadata.",
             46);
  ExpectMiss([&] { classes.GetClassMetadata(kText, 799); },
             "cls_ClassRegistrar::GetClassMetadata failed: Class nex_TextException/Version 799 "
             "is not declared in metadata.",
             60);
  ExpectMiss([&] { classes.GetClassID("nex_Nothing"); },
             "cls_ClassRegistrar::GetClassID failed: Class ID can't be retrieved from class name "
             "nex_Nothing.",
             74);
  EXPECT_EQ(classes.GetClassID("nex_TextException"), kText);
  EXPECT_EQ(classes.GetLastClassVersionNumber(0x1F0009), 871);
  EXPECT_TRUE(classes.InheritanceCheck(kExit, kException));
}

}  // namespace
