#include "VRKLnuNex.h"

#include <gtest/gtest.h>

#include "VRKLnuLifecycle.h"
#include "VRKTestLibrary.h"
#include "cls_MetadataRegistrar.h"
#include "mem_Alloc.h"
#include "nex_TextException.h"

namespace {

// Starts the library, checks what the package put in place, and stops it.
void CheckOneRun() {
  int tally = 0;
  VRKLnuBasicUtils_initialize(tally);
  const cls_ClassRegistrar& classes = cls_MetadataRegistrar::Instance().GetWorkingSet();
  EXPECT_EQ(classes.GetMDList().Count(), 11);  // nine exceptions and two string classes
  EXPECT_THROW(classes.ConstGet(0x1F00AA), nex_TextException);
  VRKLnuBasicUtils_finalize(tally);
  EXPECT_EQ(tally, 0);
}

TEST(NexLifecycle, ARestartRebuildsEverythingAndAStopGivesItAllBack) {
  int tally = 0;
  // The first start leaves what the thread package never withdraws.
  VRKLnuBasicUtils_initialize(tally);
  VRKLnuBasicUtils_finalize(tally);
  const unsigned long footprint = mem_Footprint();
  CheckOneRun();
  CheckOneRun();
  EXPECT_EQ(mem_Footprint(), footprint);
}

TEST(NexLifecycle, MissesAreQuietWhilePackageNexIsDown) {
  cls_ClassRegistrar classes;
  EXPECT_TRUE(classes.ConstGet(0x1F00AA).IsEmpty());
  EXPECT_FALSE(nex_assertFormalize());
}

}  // namespace
