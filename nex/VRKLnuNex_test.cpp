#include "VRKLnuNex.h"

#include <gtest/gtest.h>

#include <new>

#include "VRKBasExceptionModel.h"
#include "VRKLnuLifecycle.h"
#include "VRKTestLibrary.h"
#include "cls_MetadataRegistrar.h"
#include "mem_Alloc.h"
#include "nex_OutOfMemoryException.h"
#include "nex_TextException.h"
#include "omi_FatalError.h"

namespace {

TEST(NexLifecycle, ARestartRebuildsEverythingAndAStopTakesItAllAway) {
  int tally = 0;
  // The first start leaves what the thread package never withdraws.
  VRKLnuBasicUtils_initialize(tally);
  VRKLnuBasicUtils_finalize(tally);
  const unsigned long footprint = mem_Footprint();
  for (int run = 0; run < 2; ++run) {
    VRKLnuBasicUtils_initialize(tally);
    const cls_ClassRegistrar& classes = cls_MetadataRegistrar::Instance().GetWorkingSet();
    // Nine exceptions and two string classes, whatever the packages above register.
    const cow_List<cls_ClassMetadataHld> list = classes.GetMDList();
    int ours = 0;
    for (int i = 0; i < list.Count(); ++i) {
      const unsigned facility = list.ConstGet(i).GetRef().ClassId() >> 16;
      ours += facility == 0x1F || facility == 0x1A;
    }
    EXPECT_EQ(ours, 11);
    EXPECT_THROW(classes.ConstGet(0x1F00AA), nex_TextException);
    VRKLnuBasicUtils_finalize(tally);
  }
  EXPECT_EQ(tally, 0);
  EXPECT_EQ(mem_Footprint(), footprint);

  // Down, the package leaves no messages, no exception factory and no allocation handler.
  EXPECT_EQ(nex_OutOfMemoryException::GetOutOfMemoryMsgGeneric(), nullptr);
  EXPECT_TRUE(cls_ClassRegistrar().ConstGet(0x1F00AA).IsEmpty());
  EXPECT_THROW(VRKBasExceptionModel::RaiseExecError(1), omi_FatalError);
  mem_Mallopt(-5, mem_Footprint() + 16);
  EXPECT_THROW(mem_OperatorNewThrow(1024), std::bad_alloc);
  mem_Mallopt(-5, 0);
}

}  // namespace
