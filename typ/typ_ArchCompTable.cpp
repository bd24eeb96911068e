#include "typ_ArchCompTable.h"

#include "internal/typ_Setup.h"

namespace {

typ_ArchCompEntry* facilities = nullptr;
unsigned facilityCount = 0;

constexpr unsigned kTypAny = 2;
constexpr unsigned kTypObj = 3;

bool IsAnyOrObj(unsigned type) {
  return type == kTypAny || type == kTypObj;
}

}  // namespace

const typ_Entry typ_ArchCompTable::s_InvalidFacility = {0, 1, "INVALID FACILITY"};
const typ_Entry typ_ArchCompTable::s_InvalidType = {0, 1, "INVALID TYPE"};
const typ_Entry typ_ArchCompTable::s_MissingTables = {0, 1, "MISSING TYPE TABLES"};

void typ_ArchCompTableSetUp(unsigned size) {
  facilities = new typ_ArchCompEntry[size];
  facilityCount = size;
}

void typ_ArchCompTableTearDown() {
  delete[] facilities;
  facilities = nullptr;
  facilityCount = 0;
}

void typ_ArchCompTable::InsertEntry(unsigned short facility, typ_ArchCompEntry entry) {
  if (facility < facilityCount) facilities[facility] = entry;
}

const typ_Entry& typ_ArchCompTable::GetEntry(unsigned type) {
  const unsigned facility = type >> 16;
  if (facility == 0 || facility >= facilityCount) return s_InvalidFacility;
  const typ_ArchCompEntry& table = facilities[facility];
  if (table.entries == nullptr) return s_MissingTables;
  const unsigned index = type & 0xffff;
  if (index >= table.count || (index & 0xf000) != 0) return s_InvalidType;
  return table.entries[index];
}

const char* typ_ArchCompTable::GetName(unsigned type) {
  static const char* const kBuiltIn[] = {"typ_none", "typ_any", "typ_obj", "typ_ado"};
  if (type >= 1 && type <= 4) return kBuiltIn[type - 1];
  return GetEntry(type).name;
}

unsigned typ_ArchCompTable::GetParent(unsigned type) {
  return IsAnyOrObj(type) ? kTypAny : GetEntry(type).parent;
}

int typ_ArchCompTable::GetKind(unsigned type) {
  return IsAnyOrObj(type) ? 1 : GetEntry(type).kind;
}

bool typ_ArchCompTable::IsParent(unsigned type, unsigned ancestor) {
  if (type == ancestor) return true;
  if (GetKind(type) == 7) {
    if (ancestor == kTypAny) return false;
  } else if (IsAnyOrObj(ancestor)) {
    return true;
  }
  for (unsigned current = type; current != kTypObj;) {
    current = GetParent(current);
    if (current == ancestor) return true;
    if (current == 1 || current == kTypAny) return false;
  }
  return false;
}
