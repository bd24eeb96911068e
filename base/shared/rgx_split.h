// Splits a text at the matches of a regular expression, in the ECMAScript syntax of the
// standard library's regular expressions.
//
//   cow_List<cow_String> fields = rgx_split("a, b,,c", ",\\s*");  // "a", "b", "", "c"
//
// Every field between two matches is kept, also an empty one, so n matches give n + 1
// fields; a match of no characters doesn't split. A pattern that doesn't compile raises
// through VRKBasExceptionModel::RaisePatternError (the installed factory's exception, or
// omi_FatalError while none is installed) with offset -1, since the standard library reports
// no position; a match that the library gives up on raises through RaiseExecError with its
// error code.
#ifndef RGX_SPLIT_H
#define RGX_SPLIT_H

#include "VRKBasExport.h"
#include "VRKBasSharedContainers.h"
#include "cow_String.h"

VRKLNU_EXPORT cow_List<cow_String> rgx_split(const cow_String& text, const cow_String& pattern);

#endif  // RGX_SPLIT_H
