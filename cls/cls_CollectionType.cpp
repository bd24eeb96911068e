#include "cls_CollectionType.h"

namespace {

// Element columns of the family table.
enum Column { Bool, Double, Float, Int, String, Unsigned };

bool InRange(int tag, int first, int last) {
  return tag >= first && tag <= last;
}

cls_CollectionType Fix(cls_CollectionType family, Column column) {
  switch (family) {
    case cls_CollObjMap:
      if (column == Int) return cls_CollObjMapIntKey;
      if (column == String) return cls_CollObjMapStringKey;
      return family;
    case cls_CollList:
    case cls_Coll2DArray:
      return static_cast<cls_CollectionType>(family + (column == Unsigned ? 7 : column + 1));
    case cls_CollMapString2Prim:
    case cls_CollMapInt2Prim:
    case cls_CollMapString2List:
    case cls_CollMapInt2List:
    case cls_CollMapString2Array:
      return static_cast<cls_CollectionType>(family + column + 1);
    default:
      return family;
  }
}

}  // namespace

cls_CollectionType cls_CollectionTypeFix(cls_CollectionType family, const bool*) {
  return Fix(family, Bool);
}
cls_CollectionType cls_CollectionTypeFix(cls_CollectionType family, const double*) {
  return Fix(family, Double);
}
cls_CollectionType cls_CollectionTypeFix(cls_CollectionType family, const float*) {
  return Fix(family, Float);
}
cls_CollectionType cls_CollectionTypeFix(cls_CollectionType family, const int*) {
  return Fix(family, Int);
}
cls_CollectionType cls_CollectionTypeFix(cls_CollectionType family, const cow_String*) {
  return Fix(family, String);
}
cls_CollectionType cls_CollectionTypeFix(cls_CollectionType family, const unsigned*) {
  return Fix(family, Unsigned);
}

bool cls_CollectionsMatch(int have, int want) {
  if (have == want) return true;
  if (want == cls_CollObjMapStringKey) {
    return have == cls_CollObjGeneric || InRange(have, 90, 96) || InRange(have, 110, 116);
  }
  return want == cls_CollObjMapIntKey && InRange(have, 100, 106);
}
