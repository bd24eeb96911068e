// Debug levels, one per facility (package), read by code that decides how much to print:
//
//   if (typ_DebugFlags::GetDebugFlags(2) >= 1) print spawn details;
//   typ_DebugFlags::ParseDebugFlags("uti=2,utl=1");  // from the command line
//
// Facilities are numbered 0 to 1023 and named by the package's fixed list (for example 2 is
// "uti", 3 "utl"); the names are in place while package typ is up. Levels start at 0 and may
// be set and read from any thread.
#ifndef TYP_DEBUGFLAGS_H
#define TYP_DEBUGFLAGS_H

#include "VRKBasExport.h"

class VRKLNU_EXPORT typ_DebugFlags {
 public:
  // Sets the level of the facility with exactly this name; false when no facility has it.
  static bool SetDebugFlags(const char* facility, int level);
  // Reads "name=digits" pairs joined by commas and sets each level; an empty run of digits is
  // level 0, and a level past the int range is the largest int. A syntax error (no "=", or
  // something other than "," after the digits) stops the parsing with false, leaving the
  // pairs before it applied; an unknown name doesn't stop it but makes the result false. An
  // empty text gives true. Names and digits may be of any length.
  static bool ParseDebugFlags(const char* text);
  // The level by number; 0 for a number beyond the facilities.
  static int GetDebugFlags(unsigned facility);
  // The level by name; 0 for an unknown name.
  static int GetDebugFlags(const char* facility);
  // The name by number; null where no facility has the number.
  static const char* GetDebugFacilityName(unsigned facility);
};

#endif  // TYP_DEBUGFLAGS_H
