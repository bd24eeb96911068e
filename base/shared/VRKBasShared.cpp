#include "VRKBasShared.h"

#include "VRKBasCountedPair.h"

namespace {
int useCount = 0;
}

void VRKBasShared_initialize(int& tally) {
  VRKBasCountedEnter(useCount, tally, "VRKBasShared");
}

void VRKBasShared_finalize(int& tally) {
  VRKBasCountedLeave(useCount, tally, "VRKBasShared");
}
