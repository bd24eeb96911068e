// Start and stop of package pnt: the pretty printer. Counted: only the first start and the last
// stop do work; the last stop deletes the debug printer of pnt_debugPrint(). Brought up alone,
// the package needs the lower layers and the packages before it in the library's start order
// to be up first.
#ifndef VRKLNUPNT_H
#define VRKLNUPNT_H

#include "VRKBasExport.h"

VRKLNU_EXPORT void VRKLnuPnt_initialize(int& tally);
VRKLNU_EXPORT void VRKLnuPnt_finalize(int& tally);

#endif  // VRKLNUPNT_H
