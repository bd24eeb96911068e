#include "VRKLnuPnt.h"

#include "VRKBasCountedPair.h"

namespace {
int useCount = 0;
}

void VRKLnuPnt_initialize(int& tally) {
  VRKBasCountedEnter(useCount, tally, "pnt");
}

void VRKLnuPnt_finalize(int& tally) {
  VRKBasCountedLeave(useCount, tally, "pnt");
}
