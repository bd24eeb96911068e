// Start and stop of package thr: threads, singletons and the thread pool. Counted: only the first
// start and the last stop do work. Brought up alone, the package needs the lower layers and the
// packages before it in the library's start order to be up first.
//
// Each first start installs a fresh VRKLnuThrMultiThreadFact as the threading model's factory; the
// last stop withdraws that factory and deletes it. A factory that a client installed in its place
// meanwhile stays installed, and stays the client's.
#ifndef VRKLNUTHR_H
#define VRKLNUTHR_H

#include "VRKBasExport.h"

VRKLNU_EXPORT void VRKLnuThr_initialize(int& tally);
VRKLNU_EXPORT void VRKLnuThr_finalize(int& tally);

#endif  // VRKLNUTHR_H
