#include "VRKLnuPdc.h"

#include "VRKBasCountedPair.h"

namespace {
int useCount = 0;
}

void VRKLnuPdc_initialize(int& tally) {
  VRKBasCountedEnter(useCount, tally, "pdc");
}

void VRKLnuPdc_finalize(int& tally) {
  VRKBasCountedLeave(useCount, tally, "pdc");
}
