// The counted start and stop of the whole library.
//
//   int tally = 0;
//   VRKLnuBasicUtils_initialize(tally);  // first call: the four lower layers, then the
//   ...                                  // ten packages, in the fixed order
//   VRKLnuBasicUtils_finalize(tally);    // last call: the exact reverse
//
// Only the first initialize and the last finalize do work; the calls nest to any depth.
// `tally` belongs to the caller: each layer adds 1 when it really starts and subtracts 1
// when it really stops, so a first start adds 15 and a balanced stop takes them back.
//
// Start and stop are single-threaded by contract (the counters take no lock), and all pool
// work must have stopped before the last finalize.
#ifndef VRKLNULIFECYCLE_H
#define VRKLNULIFECYCLE_H

#include "VRKBasExport.h"

VRKLNU_EXPORT void VRKLnuBasicUtils_initialize(int& tally);
VRKLNU_EXPORT void VRKLnuBasicUtils_finalize(int& tally);

#endif  // VRKLNULIFECYCLE_H
