// Start and stop of package nex: exceptions. Counted: only the first start and the last
// stop do work. Brought up alone, the package needs the lower layers and the packages
// before it in the library's start order to be up first.
//
// Each first start installs a fresh nex_ExceptionFactory as the exception model's factory; the last
// stop withdraws that factory and deletes it. A factory that a client installed in its place
// meanwhile stays installed, and stays the client's.
#ifndef VRKLNUNEX_H
#define VRKLNUNEX_H

#include "VRKBasExport.h"

VRKLNU_EXPORT void VRKLnuNex_initialize(int& tally);
VRKLNU_EXPORT void VRKLnuNex_finalize(int& tally);

// Fixed entry points that a client can reference to tie itself to the package at link
// time. They do no work and must stay so: nex_assertFormalize always returns false.
VRKLNU_EXPORT void nex_formalize();
VRKLNU_EXPORT bool nex_assertFormalize();

#endif  // VRKLNUNEX_H
