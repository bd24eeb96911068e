// Start and stop of package bio: binary filters and devices. Counted: only the first start and the
// last stop do work. Brought up alone, the package needs the lower layers and the packages before
// it in the library's start order to be up first.
#ifndef VRKLNUBIO_H
#define VRKLNUBIO_H

#include "VRKBasExport.h"

VRKLNU_EXPORT void VRKLnuBio_initialize(int& tally);
VRKLNU_EXPORT void VRKLnuBio_finalize(int& tally);

#endif  // VRKLNUBIO_H
