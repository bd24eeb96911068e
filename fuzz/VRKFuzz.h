// Helpers shared by the fuzz targets.
#ifndef VRKFUZZ_H
#define VRKFUZZ_H

#include "VRKLnuLifecycle.h"

// Stops the run with a finding when a property that the target checks doesn't hold.
inline void VRKFuzzCheck(bool condition) {
  if (!condition) __builtin_trap();
}

// Brings the library up for the rest of the run.
inline void VRKFuzzStartLibrary() {
  static int tally = 0;
  VRKLnuBasicUtils_initialize(tally);
}

#endif  // VRKFUZZ_H
