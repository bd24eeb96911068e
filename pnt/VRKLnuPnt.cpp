#include "VRKLnuPnt.h"

#include "VRKBasCountedPair.h"
#include "aio_ofstream.h"
#include "pnt_PrettyPrint.h"

namespace {
int useCount = 0;
// The debug printer: made at first use, deleted at the package's last stop.
pnt_PrettyPrint* debugPrint = nullptr;
}  // namespace

pnt_PrettyPrint& pnt_debugPrint() {
  if (debugPrint == nullptr) debugPrint = new pnt_PrettyPrint(aio_cerr, 78, 2);
  return *debugPrint;
}

void VRKLnuPnt_initialize(int& tally) {
  VRKBasCountedEnter(useCount, tally, "pnt");
}

void VRKLnuPnt_finalize(int& tally) {
  if (!VRKBasCountedLeave(useCount, tally, "pnt")) return;
  delete debugPrint;
  debugPrint = nullptr;
}
