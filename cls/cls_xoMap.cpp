#include "cls_xoMap.h"

#include "cls_AgentRequest.h"
#include "internal/cls_xpRecord.h"

namespace {

// The request for the element under a key of the map being written.
cls_WriteRequestMapInt2Obj Request(cls_WriteMapInt2Obj* map, int key) {
  return cls_WriteRequestMapInt2Obj(map, key);
}
cls_WriteRequestMapString2Obj Request(cls_WriteMapString2Obj* map, const cow_String& key) {
  return cls_WriteRequestMapString2Obj(map, key);
}

// The element whose record the cursor is at, read before its key.
template <class V, class Cursor>
V ReadElement(Cursor& cursor) {
  cls_ReadVisitor element(cursor.MakeReadObj());
  return V(element);
}

}  // namespace

template <class K, class V>
cls_xoMap<K, V>::cls_xoMap(const cls_ReadVisitor& visitor) : Base(visitor.GetUid()) {
  const K* keyType = nullptr;
  cls_MementoRead* memento = visitor.Memento();
  if (memento == nullptr) return;
  cls_ReadCursor cursor(cls_xoMapCursor(*memento, keyType));
  while (cursor && cursor->HasMore()) {
    const V value = ReadElement<V>(*cursor);
    this->Insert(cls_xpReadKey(*cursor, keyType), value);
  }
}

template <class K, class V>
void cls_xoMap<K, V>::DBWrite(const cls_WriteVisitor& visitor) const {
  const K* keyType = nullptr;
  cls_MementoWrite* memento =
      cls_xpStartRecord<K>(visitor, cls_kMapClassId, this->m_Uid, cls_CollObjMap);
  if (memento == nullptr) return;
  cls_WriteCursor cursor(cls_xoMapCursor(*memento, keyType));
  if (!cursor) return;
  cow_ConstMapIterator<K, V> it(*this);
  for (it.First(); !it.IsDone(); it.Next()) {
    const auto request = Request(cursor.Get(), it.CurrentKey());
    cls_WriteVisitor element(request, nullptr);
    it.CurrentValue().DBWrite(element);
  }
}

template class cow_Map<int, cls_xp1DArrayListInt>;
template class cow_Map<cow_String, cls_xp1DArrayListFloat>;
template class cow_Map<cow_String, cls_xp2DArrayDouble>;
template class cls_xoMap<int, cls_xp1DArrayListInt>;
template class cls_xoMap<cow_String, cls_xp1DArrayListFloat>;
template class cls_xoMap<cow_String, cls_xp2DArrayDouble>;
