#include "VRKLnuNex.h"

#include "VRKBasCountedPair.h"

namespace {
int useCount = 0;
}

void VRKLnuNex_initialize(int& tally) {
  VRKBasCountedEnter(useCount, tally, "nex");
}

void VRKLnuNex_finalize(int& tally) {
  VRKBasCountedLeave(useCount, tally, "nex");
}

void nex_formalize() {}

bool nex_assertFormalize() {
  return false;
}
