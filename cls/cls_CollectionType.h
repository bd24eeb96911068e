// Collection tags: a small integer that says what shape a collection field has and what its
// elements are. A family value (a multiple of ten, or 5 for maps of objects) is combined with
// the element type by cls_CollectionTypeFix:
//
//   cls_CollectionType tag = cls_CollectionTypeFix(cls_CollList, static_cast<float*>(nullptr));
//   // tag == 53, a list of float
//
// A store compares the tag a writer gives with the class's declaration by
// cls_CollectionsMatch.
#ifndef CLS_COLLECTIONTYPE_H
#define CLS_COLLECTIONTYPE_H

#include "VRKBasExport.h"

class cow_String;

// The named values are the families and the generic object maps; a combined tag such as 53
// is any other value of the type.
enum cls_CollectionType : int {
  cls_CollNone = 0,
  cls_CollObjMapStringKey = 2,  // map of objects by string key
  cls_CollObjMapIntKey = 3,     // map of objects by integer key
  cls_CollObjGeneric = 4,       // accepted where a string-keyed object map is declared
  cls_CollObjMap = 5,           // family: map of objects, by key type
  cls_CollList = 50,
  cls_CollMapString2Prim = 60,
  cls_CollMapInt2Prim = 70,
  cls_Coll2DArray = 80,
  cls_CollMapString2List = 90,
  cls_CollMapInt2List = 100,
  cls_CollMapString2Array = 110,
};

// The family's tag for the element type that the pointer's type names; any value that is not
// a family of that element comes back unchanged. Only the int and string forms map family 5.
// The unsigned column adds 7 in families 50 and 80 and 6 in the others, so 56 and 86 are
// never produced; that irregularity is intended.
VRKLNU_EXPORT cls_CollectionType cls_CollectionTypeFix(cls_CollectionType family, const bool*);
VRKLNU_EXPORT cls_CollectionType cls_CollectionTypeFix(cls_CollectionType family, const double*);
VRKLNU_EXPORT cls_CollectionType cls_CollectionTypeFix(cls_CollectionType family, const float*);
VRKLNU_EXPORT cls_CollectionType cls_CollectionTypeFix(cls_CollectionType family, const int*);
VRKLNU_EXPORT cls_CollectionType cls_CollectionTypeFix(cls_CollectionType family,
                                                       const cow_String*);
VRKLNU_EXPORT cls_CollectionType cls_CollectionTypeFix(cls_CollectionType family, const unsigned*);

// Whether a writer's tag `have` satisfies a declared tag `want`: equal tags, and the generic
// object maps, which satisfy a more exact declaration but never the reverse (want 2: have 4,
// 90 to 96 or 110 to 116; want 3: have 100 to 106).
VRKLNU_EXPORT bool cls_CollectionsMatch(int have, int want);

#endif  // CLS_COLLECTIONTYPE_H
