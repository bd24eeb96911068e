#include "VRKLnuBio.h"

#include "VRKBasCountedPair.h"

namespace {
int useCount = 0;
}

void VRKLnuBio_initialize(int& tally) {
  VRKBasCountedEnter(useCount, tally, "bio");
}

void VRKLnuBio_finalize(int& tally) {
  VRKBasCountedLeave(useCount, tally, "bio");
}
