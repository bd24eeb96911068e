// Start and stop of package mrm: the memory resource manager. Counted: only the first start and the
// last stop do work. Brought up alone, the package needs the lower layers and the packages before
// it in the library's start order to be up first.
#ifndef VRKLNUMRM_H
#define VRKLNUMRM_H

#include "VRKBasExport.h"

VRKLNU_EXPORT void VRKLnuMrm_initialize(int& tally);
VRKLNU_EXPORT void VRKLnuMrm_finalize(int& tally);

#endif  // VRKLNUMRM_H
