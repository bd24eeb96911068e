// Start and stop of package typ: type tables and debug levels. Counted: only the first start and
// the last stop do work. Brought up alone, the package needs the lower layers and the packages
// before it in the library's start order to be up first.
#ifndef VRKLNUTYP_H
#define VRKLNUTYP_H

#include "VRKBasExport.h"

VRKLNU_EXPORT void VRKLnuTyp_initialize(int& tally);
VRKLNU_EXPORT void VRKLnuTyp_finalize(int& tally);

#endif  // VRKLNUTYP_H
