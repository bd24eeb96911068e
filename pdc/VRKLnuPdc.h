// Start and stop of package pdc: record printing. Counted: only the first start and the last
// stop do work. Brought up alone, the package needs the lower layers and the packages
// before it in the library's start order to be up first.
#ifndef VRKLNUPDC_H
#define VRKLNUPDC_H

#include "VRKBasExport.h"

VRKLNU_EXPORT void VRKLnuPdc_initialize(int& tally);
VRKLNU_EXPORT void VRKLnuPdc_finalize(int& tally);

#endif  // VRKLNUPDC_H
