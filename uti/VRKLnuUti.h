// Start and stop of package uti: processes and reports. Counted: only the first start and the last
// stop do work. Brought up alone, the package needs the lower layers and the packages
// before it in the library's start order to be up first.
#ifndef VRKLNUUTI_H
#define VRKLNUUTI_H

#include "VRKBasExport.h"

VRKLNU_EXPORT void VRKLnuUti_initialize(int& tally);
VRKLNU_EXPORT void VRKLnuUti_finalize(int& tally);

// A fixed entry point that a client can reference to tie itself to the package at link
// time. It does nothing and must stay empty.
VRKLNU_EXPORT void uti_formalize();

#endif  // VRKLNUUTI_H
