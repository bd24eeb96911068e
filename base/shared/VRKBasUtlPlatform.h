// Queries on the machine and the process's environment.
#ifndef VRKBASUTLPLATFORM_H
#define VRKBASUTLPLATFORM_H

#include "VRKBasExport.h"
#include "cow_String.h"

// The platform's name: "linux86_64" on x86-64 Linux, "linux_" and the machine name
// elsewhere.
VRKLNU_EXPORT cow_String VRKBasUtlGetPlatform();

// Sleeps for the given milliseconds, also through interrupting signals. Returns 0.
VRKLNU_EXPORT int VRKBasUtlsleep(unsigned milliseconds);

// Processors online.
VRKLNU_EXPORT int utl_getNumberCpusBase();
// The processors' highest clock speed in MHz, 0 when the system doesn't tell.
VRKLNU_EXPORT int utl_getCpusClockSpeedBase();

#endif  // VRKBASUTLPLATFORM_H
