#include "VRKLnuThr.h"

#include "VRKBasCountedPair.h"

namespace {
int useCount = 0;
}

void VRKLnuThr_initialize(int& tally) {
  VRKBasCountedEnter(useCount, tally, "thr");
}

void VRKLnuThr_finalize(int& tally) {
  VRKBasCountedLeave(useCount, tally, "thr");
}
