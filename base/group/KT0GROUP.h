// The lowest group layer: nothing but its counted start and stop pair, which the library
// runs first at start and last at stop.
#ifndef KT0GROUP_H
#define KT0GROUP_H

#include "VRKBasExport.h"

VRKLNU_EXPORT void KT0GROUP_initialize(int& tally);
VRKLNU_EXPORT void KT0GROUP_finalize(int& tally);

#endif  // KT0GROUP_H
