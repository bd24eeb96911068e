// Start and stop of package utl: files, streams and system queries. Counted: only the first start
// and the last stop do work. Brought up alone, the package needs the lower layers and the packages
// before it in the library's start order to be up first.
//
// Each first start installs a fresh utl_ExceptionFactory as the shared layer's exception model's
// factory. The last stop destroys the command line (utl_CommandLine), then withdraws that
// factory and deletes it; a factory that a client installed in its place meanwhile stays
// installed, and stays the client's.
#ifndef VRKLNUUTL_H
#define VRKLNUUTL_H

#include "VRKBasExport.h"

VRKLNU_EXPORT void VRKLnuUtl_initialize(int& tally);
VRKLNU_EXPORT void VRKLnuUtl_finalize(int& tally);

#endif  // VRKLNUUTL_H
