// Start and stop of package cls: class metadata and persistence. Counted: only the first start and
// the last stop do work. Brought up alone, the package needs the lower layers and the packages
// before it in the library's start order to be up first.
#ifndef VRKLNUCLS_H
#define VRKLNUCLS_H

#include "VRKBasExport.h"

VRKLNU_EXPORT void VRKLnuCls_initialize(int& tally);
VRKLNU_EXPORT void VRKLnuCls_finalize(int& tally);

#endif  // VRKLNUCLS_H
