#include "VRKLnuUtl.h"

#include "VRKBasCountedPair.h"

namespace {
int useCount = 0;
}

void VRKLnuUtl_initialize(int& tally) {
  VRKBasCountedEnter(useCount, tally, "utl");
}

void VRKLnuUtl_finalize(int& tally) {
  VRKBasCountedLeave(useCount, tally, "utl");
}
