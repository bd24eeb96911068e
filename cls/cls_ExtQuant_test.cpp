#include "cls_ExtQuant.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <string>

#include "VRKLnuLifecycle.h"
#include "VRKTestChild.h"

namespace {

// In the child: the sizes of TINY (twice), SMALL and LARGE, on standard output.
void PrintSizes() {
  int tally = 0;
  VRKLnuBasicUtils_initialize(tally);
  cls_ExtQuant& sizes = cls_ExtQuant::Instance();
  const int tiny = sizes.ExtentQuantumConstTiny();
  const int again = sizes.ExtentQuantumConstTiny();
  const int small = sizes.ExtentQuantumConstSmall();
  const int large = sizes.ExtentQuantum("EXTENT_QUANTUM_LARGE", 77);
  std::printf("%d %d %d %d\n", tiny, again, small, large);
  std::fflush(stdout);
  VRKLnuBasicUtils_finalize(tally);
  VRKChildExit(0);
}

TEST(ExtQuantTest, OverridesApplyOnlyWhenSwitchedOnAndPrintOnce) {
  if (VRKChildRole() == "sizes") PrintSizes();

  VRKChild off("sizes");
  off.env = {{"EXTENT_QUANTUM_TINY", "9"}};
  off.unset = {"EXTENT_QUANTUM_OVERRIDE"};
  VRKChildResult result = off.Run();
  EXPECT_EQ(result.exitCode, 0) << result.err;
  EXPECT_EQ(result.out, "4 4 512 77\n");

  VRKChild on("sizes");
  on.env = {{"EXTENT_QUANTUM_OVERRIDE", ""},
            {"EXTENT_QUANTUM_TINY", "0"},
            {"EXTENT_QUANTUM_SMALL", "9"},
            {"EXTENT_QUANTUM_LARGE", "x"}};
  result = on.Run();
  EXPECT_EQ(result.exitCode, 0) << result.err;
  EXPECT_EQ(result.out,
            "***** EXTENT_QUANTUM_OVERRIDE activated.\n"
            "***** EXTENT_QUANTUM_TINY = 4\n"
            "***** EXTENT_QUANTUM_SMALL = 9\n"
            "***** EXTENT_QUANTUM_LARGE = 77\n"
            "4 4 9 77\n");
}

}  // namespace
