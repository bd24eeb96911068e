#include "VRKLnuUti.h"

#include "VRKBasCountedPair.h"

namespace {
int useCount = 0;
}

void VRKLnuUti_initialize(int& tally) {
  VRKBasCountedEnter(useCount, tally, "uti");
}

void VRKLnuUti_finalize(int& tally) {
  VRKBasCountedLeave(useCount, tally, "uti");
}

void uti_formalize() {}
