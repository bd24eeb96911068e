#include "cls_xpMap.h"

#include "internal/cls_xpRecord.h"

namespace {

// The key and value types of a map, its iterator, and how an entry read goes in.
template <class Map>
struct MapTraits;

template <class K, class V>
struct MapTraits<cow_Map<K, V>> {
  typedef K Key;
  typedef V Value;
  typedef cow_ConstMapIterator<K, V> Iterator;
  static void Insert(cow_Map<K, V>& map, const K& key, const V& value) { map.Insert(key, value); }
};

template <class K, class V>
struct MapTraits<cow_Btree<K, V>> {
  typedef K Key;
  typedef V Value;
  typedef cow_BtreeIterator<K, V> Iterator;
  static void Insert(cow_Btree<K, V>& map, const K& key, const V& value) {
    map.InsertUnlessMember(key, value);
  }
};

// String keys make a 6x record, integer keys a 7x one.
constexpr cls_CollectionType Family(const cow_String*) {
  return cls_CollMapString2Prim;
}
constexpr cls_CollectionType Family(const int*) {
  return cls_CollMapInt2Prim;
}

}  // namespace

template <class Map>
cls_xpMap<Map>::cls_xpMap(const cls_ReadVisitor& visitor) : Base(visitor.GetUid()) {
  typedef MapTraits<Map> Traits;
  const typename Traits::Key* keyType = nullptr;
  cls_MementoRead* memento = visitor.Memento();
  if (memento == nullptr) return;
  cls_ReadCursor cursor(cls_xpMapCursor<typename Traits::Value>(*memento, keyType));
  while (cursor && cursor->HasMore()) {
    const typename Traits::Value value = cursor->Value();
    Traits::Insert(*this, cls_xpReadKey(*cursor, keyType), value);
  }
}

template <class Map>
void cls_xpMap<Map>::DBWrite(const cls_WriteVisitor& visitor) const {
  typedef MapTraits<Map> Traits;
  const typename Traits::Key* keyType = nullptr;
  cls_MementoWrite* memento = cls_xpStartRecord<typename Traits::Value>(
      visitor, cls_kMapClassId, this->m_Uid, Family(keyType));
  if (memento == nullptr) return;
  cls_WriteCursor cursor(cls_xpMapCursor<typename Traits::Value>(*memento, keyType));
  if (!cursor) return;
  typename Traits::Iterator it(*this);
  for (it.First(); !it.IsDone(); it.Next())
    cursor->Put(&it.CurrentKey(), &it.CurrentValue());
}

template class cls_xpMap<cow_Map<int, int>>;
template class cls_xpMap<cow_Map<cow_String, float>>;
template class cls_xpMap<cow_Map<cow_String, cow_String>>;
template class cls_xpMap<cow_Btree<cow_String, unsigned>>;
