// Maps of values as persistent values: a cow_Map (or the closed cow_Btree) with an identity
// beside it, a read constructor and a DBWrite (see cls_xpList.h for the family's rules). The
// map goes to the store as a map record (class 0x230002, tag 6x for string keys, 7x for
// integer keys), one Put an entry in the map's own order; a reader takes each entry's value,
// then its key:
//
//   cls_xpMapString2Float weights;
//   weights.Insert("steel", 7.85f);
//   weights.DBWrite(fieldVisitor);
//
// Classes: cls_xpMapInt2Int, cls_xpMapString2Float, cls_xpMapString2String and
// cls_xpBtreeString2Uint. A key read twice keeps its last value in a map and its first in the
// tree.
#ifndef CLS_XPMAP_H
#define CLS_XPMAP_H

#include "VRKBasExport.h"
#include "VRKBasSharedContainers.h"
#include "cls_Uid.h"
#include "cls_xpValue.h"

class cls_ReadVisitor;
class cls_WriteVisitor;

template <class Map>
class cls_xpMap : public cls_xpValue<Map, 0x230002> {
 public:
  typedef Map Container;

  cls_xpMap() = default;
  explicit cls_xpMap(const Container& map) : Base(map) {}
  explicit cls_xpMap(const cls_ReadVisitor& visitor);
  cls_xpMap(const cls_xpMap&) = default;
  cls_xpMap& operator=(const cls_xpMap&) = default;
  // New contents and a new identity; nothing on self-assignment.
  cls_xpMap& operator=(const Container& map) {
    this->Assign(map);
    return *this;
  }

  void DBWrite(const cls_WriteVisitor& visitor) const;

 private:
  typedef cls_xpValue<Map, 0x230002> Base;
};

typedef cls_xpMap<cow_Map<int, int>> cls_xpMapInt2Int;
typedef cls_xpMap<cow_Map<cow_String, float>> cls_xpMapString2Float;
typedef cls_xpMap<cow_Map<cow_String, cow_String>> cls_xpMapString2String;
typedef cls_xpMap<cow_Btree<cow_String, unsigned>> cls_xpBtreeString2Uint;

extern template class VRKLNU_EXPORT cls_xpMap<cow_Map<int, int>>;
extern template class VRKLNU_EXPORT cls_xpMap<cow_Map<cow_String, float>>;
extern template class VRKLNU_EXPORT cls_xpMap<cow_Map<cow_String, cow_String>>;
extern template class VRKLNU_EXPORT cls_xpMap<cow_Btree<cow_String, unsigned>>;

#endif  // CLS_XPMAP_H
