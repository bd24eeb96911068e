// Natural order of texts: runs of digits compare by their numeric value, so that "file9"
// sorts before "file10". Whether string keys are ordered naturally or bytewise is one
// process-wide switch, bytewise by default.
#ifndef STRNATCMP_H
#define STRNATCMP_H

#include "VRKBasExport.h"

// Negative, zero or positive as `a` sorts before, with or after `b`. Digit runs compare by
// value; equal values with more leading zeros sort first; other characters compare as
// unsigned bytes. Null reads as the empty text.
VRKLNU_EXPORT int strnatcmp(const char* a, const char* b);

VRKLNU_EXPORT bool atr_getNaturalOrder();
VRKLNU_EXPORT void atr_setNaturalOrder(bool natural);

#endif  // STRNATCMP_H
