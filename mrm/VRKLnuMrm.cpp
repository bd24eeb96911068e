#include "VRKLnuMrm.h"

#include "VRKBasCountedPair.h"

namespace {
int useCount = 0;
}

void VRKLnuMrm_initialize(int& tally) {
  VRKBasCountedEnter(useCount, tally, "mrm");
}

void VRKLnuMrm_finalize(int& tally) {
  VRKBasCountedLeave(useCount, tally, "mrm");
}
