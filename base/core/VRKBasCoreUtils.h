// Start and stop of the core layer (strings, translation, streams, core objects, models).
#ifndef VRKBASCOREUTILS_H
#define VRKBASCOREUTILS_H

#include "VRKBasExport.h"

VRKLNU_EXPORT void VRKBasCoreUtils_initialize(int& tally);
// At its last stop the layer flushes the standard streams.
VRKLNU_EXPORT void VRKBasCoreUtils_finalize(int& tally);

#endif  // VRKBASCOREUTILS_H
