// Text to an unsigned size.
#ifndef OMI_STRTOSIZET_H
#define OMI_STRTOSIZET_H

#include <cstddef>

#include "VRKBasExport.h"

// Reads the decimal number at the start of `text`, after any white space. The reading stops
// at the first other character; text with no digits (or null) gives 0, and a value beyond
// the range of size_t gives the largest size_t.
VRKLNU_EXPORT size_t omi_strtoSizeT(const char* text);

#endif  // OMI_STRTOSIZET_H
