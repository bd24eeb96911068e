// What the system tells about itself and the job: host, user, local date and time, the
// processors, and the memory layer's limit and use, the last three also for C callers.
//
//   aio_cerr << utl_getHostName() << " " << utl_getDate() << " " << utl_getTime();
//   // "node17 07-Mar-2025 14:02:31"
//
// A query that fails gives an empty text; nothing is thrown but by allocation. Safe from any
// thread.
#ifndef UTL_SYSTEMINFO_H
#define UTL_SYSTEMINFO_H

#include "VRKBasExport.h"
#include "cow_String.h"

// The host's name, of at most 255 characters.
VRKLNU_EXPORT cow_String utl_getHostName();
// The login name of the process's user, of at most 256 characters.
VRKLNU_EXPORT cow_String utl_getUserName();
// The local date as "%d-%b-%Y" ("07-Mar-2025") and the local time as "%H:%M:%S".
VRKLNU_EXPORT cow_String utl_getDate();
VRKLNU_EXPORT cow_String utl_getTime();
// The processors online and their highest clock speed in MHz (0 when the system doesn't
// tell).
VRKLNU_EXPORT int utl_getNumberCpus();
VRKLNU_EXPORT int utl_getCpusClockSpeed();

extern "C" {
// Sets the limit of the memory layer's throwing allocations in bytes (0 removes it); true when
// the layer accepts it.
VRKLNU_EXPORT bool utl_SetMemoryLimit(unsigned limit);
// Write the memory layer's limit (0 for none) and its present use, in bytes, as decimal text
// into `text`, which has room for 21 characters, and return `text`.
VRKLNU_EXPORT char* utl_GetMemoryLimit(char* text);
VRKLNU_EXPORT char* utl_GetMemoryFootprint(char* text);
}

#endif  // UTL_SYSTEMINFO_H
