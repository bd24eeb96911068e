#include "VRKLnuCls.h"

#include "VRKBasCountedPair.h"

namespace {
int useCount = 0;
}

void VRKLnuCls_initialize(int& tally) {
  VRKBasCountedEnter(useCount, tally, "cls");
}

void VRKLnuCls_finalize(int& tally) {
  VRKBasCountedLeave(useCount, tally, "cls");
}
