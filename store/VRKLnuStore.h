// VRKLnuStore: the reference store of the library, in a shared library of its own. It saves
// object graphs and exceptions in files, in memory or through pipes, and loads them back
// (sto_Store.h, sto_Transfer.h). It needs the library brought up as every client does
// (VRKLnuBasicUtils_initialize) and nothing of its own.
#ifndef VRKLNUSTORE_H
#define VRKLNUSTORE_H

#include "sto_Store.h"
#include "sto_Transfer.h"

#endif  // VRKLNUSTORE_H
