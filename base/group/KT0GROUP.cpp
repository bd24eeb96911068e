#include "KT0GROUP.h"

#include "VRKBasCountedPair.h"

namespace {
int useCount = 0;
}

void KT0GROUP_initialize(int& tally) {
  VRKBasCountedEnter(useCount, tally, "KT0GROUP");
}

void KT0GROUP_finalize(int& tally) {
  VRKBasCountedLeave(useCount, tally, "KT0GROUP");
}
