// Start and stop of package mrm: the memory resource manager. Counted: only the first start and the
// last stop do work. The first start registers the printers of the four label kinds with
// mrm_Manager (which it so builds); the last stop destroys the manager. Brought up alone, the
// package needs the lower layers and the packages before it in the library's start order to be
// up first.
#ifndef VRKLNUMRM_H
#define VRKLNUMRM_H

#include "VRKBasExport.h"

VRKLNU_EXPORT void VRKLnuMrm_initialize(int& tally);
VRKLNU_EXPORT void VRKLnuMrm_finalize(int& tally);

// A smoke test of the package: writes a greeting and the job phase's label to aio_cerr and
// returns 0. The arguments are not used.
VRKLNU_EXPORT int mrm_test(int argc, char** argv);

#endif  // VRKLNUMRM_H
