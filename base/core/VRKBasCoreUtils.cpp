#include "VRKBasCoreUtils.h"

#include "VRKBasCountedPair.h"
#include "aio_ofstream.h"

namespace {
int useCount = 0;
}

void VRKBasCoreUtils_initialize(int& tally) {
  VRKBasCountedEnter(useCount, tally, "VRKBasCoreUtils");
}

void VRKBasCoreUtils_finalize(int& tally) {
  if (!VRKBasCountedLeave(useCount, tally, "VRKBasCoreUtils")) return;
  aio_cout.flush();
  aio_cerr.flush();
}
