// Start and stop of package utl: files, streams and system queries. Counted: only the first start
// and the last stop do work. Brought up alone, the package needs the lower layers and the packages
// before it in the library's start order to be up first.
//
// The first start installs a fresh utl_ExceptionFactory in VRKBasUtlExceptionModel. The last
// stop destroys the command line (utl_CommandLine), withdraws the model's factory and deletes the
// one its own start installed; a factory that a client put in its place stays the client's.
#ifndef VRKLNUUTL_H
#define VRKLNUUTL_H

#include "VRKBasExport.h"

VRKLNU_EXPORT void VRKLnuUtl_initialize(int& tally);
VRKLNU_EXPORT void VRKLnuUtl_finalize(int& tally);

#endif  // VRKLNUUTL_H
