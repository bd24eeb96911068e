// Maps of persistent values: a cow_Map from int or cow_String keys to value objects (the
// cls_xp classes), with an identity beside it. The map goes to the store as a map record
// (class 0x230002, tag 3 for integer keys, 2 for string keys) through the memento's object
// map cursor: each element writes itself through a request (cls_AgentRequest.h), so that it
// has a record of its own. A reader builds each element from its record first and takes its
// key after it:
//
//   cls_xoMap<cow_String, cls_xp2DArrayDouble> results;
//   results.Insert("stress", cls_xp2DArrayDouble(3, 6));
//   results.DBWrite(fieldVisitor);
//
// Copies share the contents and the identity; see cls_xpList.h for the family's rules.
// Instantiated for <int, cls_xp1DArrayListInt>, <cow_String, cls_xp1DArrayListFloat> and
// <cow_String, cls_xp2DArrayDouble>.
#ifndef CLS_XOMAP_H
#define CLS_XOMAP_H

#include "VRKBasExport.h"
#include "VRKBasSharedContainers.h"
#include "cls_Uid.h"
#include "cls_xp2DArray.h"
#include "cls_xpList.h"
#include "cls_xpValue.h"

class cls_ReadVisitor;
class cls_WriteVisitor;

template <class K, class V>
class cls_xoMap : public cls_xpValue<cow_Map<K, V>, 0x230002> {
 public:
  typedef cow_Map<K, V> Container;

  cls_xoMap() = default;
  explicit cls_xoMap(const Container& map) : Base(map) {}
  explicit cls_xoMap(const cls_ReadVisitor& visitor);
  cls_xoMap(const cls_xoMap&) = default;
  cls_xoMap& operator=(const cls_xoMap&) = default;
  // New contents and a new identity; nothing on self-assignment.
  cls_xoMap& operator=(const Container& map) {
    this->Assign(map);
    return *this;
  }

  void DBWrite(const cls_WriteVisitor& visitor) const;

 private:
  typedef cls_xpValue<cow_Map<K, V>, 0x230002> Base;
};

extern template class VRKLNU_EXPORT cow_Map<int, cls_xp1DArrayListInt>;
extern template class VRKLNU_EXPORT cow_Map<cow_String, cls_xp1DArrayListFloat>;
extern template class VRKLNU_EXPORT cow_Map<cow_String, cls_xp2DArrayDouble>;
extern template class VRKLNU_EXPORT cls_xoMap<int, cls_xp1DArrayListInt>;
extern template class VRKLNU_EXPORT cls_xoMap<cow_String, cls_xp1DArrayListFloat>;
extern template class VRKLNU_EXPORT cls_xoMap<cow_String, cls_xp2DArrayDouble>;

#endif  // CLS_XOMAP_H
