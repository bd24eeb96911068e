#include "VRKLnuTyp.h"

#include "VRKBasCountedPair.h"

namespace {
int useCount = 0;
}

void VRKLnuTyp_initialize(int& tally) {
  VRKBasCountedEnter(useCount, tally, "typ");
}

void VRKLnuTyp_finalize(int& tally) {
  VRKBasCountedLeave(useCount, tally, "typ");
}
