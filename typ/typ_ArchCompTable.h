// Type numbers and the architecture compatibility table: every class of the suite that takes
// part in run-time type checks has a 32-bit type number, its facility (package) in the high
// 16 bits and an index into that facility's table in the low 12 bits (bits 15 to 12 are 0).
// A package registers its table at start-up; from then on a number gives a row with a name, a
// parent and a kind, and IsParent answers whether one type is a kind of another.
//
//   static const typ_Entry rows[] = {{0, 1, nullptr}, {4, 0x1F0001, "my_Exception"}};
//   typ_ArchCompTable::InsertEntry(40, typ_ArchCompEntry(rows, 2));
//   typ_ArchCompTable::GetName(0x280001);  // "my_Exception"
//
// The numbers 1 to 4 are the built-in types typ_none, typ_any, typ_obj and typ_ado. A
// look-up with any number gives a row and never reads outside a table: a number that names
// no facility gives the row "INVALID FACILITY" (also while package typ is down), a facility
// with no table "MISSING TYPE TABLES", and a bad index "INVALID TYPE".
//
// Threads: tables are inserted during start-up, on one thread; afterwards the look-ups take no
// lock and may run on any thread.
#ifndef TYP_ARCHCOMPTABLE_H
#define TYP_ARCHCOMPTABLE_H

#include "VRKBasExport.h"
#include "mem_Alloc.h"

// One row of a facility's table. An index the facility doesn't use has a null name.
struct typ_Entry {
  int kind;         // 4: exception class; 7: persistent value class; 0 and 2: reserved
  unsigned parent;  // the parent's type number, 1 for none
  const char* name;
};

// One facility's table: its rows, which are constant data of the package, and their count.
class VRKLNU_EXPORT typ_ArchCompEntry : public mem_AllocationOperators {
 public:
  typ_ArchCompEntry() : entries(nullptr), count(0) {}
  typ_ArchCompEntry(const typ_Entry* rows, unsigned rowCount) : entries(rows), count(rowCount) {}

  const typ_Entry* entries;
  unsigned count;
};

class VRKLNU_EXPORT typ_ArchCompTable {
 public:
  // Rows of the failed look-ups, each of kind 0 with parent 1.
  static const typ_Entry s_InvalidFacility;
  static const typ_Entry s_InvalidType;
  static const typ_Entry s_MissingTables;

  // Stores the facility's table, replacing what was there. Ignored for a facility beyond the
  // table and while package typ is down.
  static void InsertEntry(unsigned short facility, typ_ArchCompEntry entry);
  // The row of a type number, or one of the failure rows.
  static const typ_Entry& GetEntry(unsigned type);
  // "typ_none", "typ_any", "typ_obj" and "typ_ado" for 1 to 4, otherwise the row's name.
  static const char* GetName(unsigned type);
  // typ_any (2) for typ_any and typ_obj, otherwise the row's parent.
  static unsigned GetParent(unsigned type);
  // 1 for typ_any and typ_obj, otherwise the row's kind.
  static int GetKind(unsigned type);
  // Whether `ancestor` is `type` or one of its ancestors. A value class (kind 7) is not a
  // typ_any; every other type is a typ_any and a typ_obj. Otherwise the parents are walked
  // up to typ_none, typ_any or typ_obj; the tables must not link a type to itself.
  static bool IsParent(unsigned type, unsigned ancestor);
};

#endif  // TYP_ARCHCOMPTABLE_H
