// Start and stop of the shared layer (cow_String, paths, number formats, system queries
// and the shared layer's exception model).
#ifndef VRKBASSHARED_H
#define VRKBASSHARED_H

#include "VRKBasExport.h"

VRKLNU_EXPORT void VRKBasShared_initialize(int& tally);
VRKLNU_EXPORT void VRKBasShared_finalize(int& tally);

#endif  // VRKBASSHARED_H
