// The records of the value classes: a list record (class 0x230001) and the cursors of lists
// and maps, chosen by element and key type.
#ifndef CLS_XPRECORD_H
#define CLS_XPRECORD_H

#include "cls_CollectionType.h"
#include "cls_MementoRead.h"
#include "cls_MementoWrite.h"
#include "cls_ReadCollectionBase.h"
#include "cls_ReadVisitor.h"
#include "cls_WriteCollectionBase.h"
#include "cls_WriteVisitor.h"

constexpr unsigned cls_kListClassId = 0x230001;
constexpr unsigned cls_kMapClassId = 0x230002;

// Opens the record of a collection: StartWrite, whose result the value classes don't test,
// and the tag of `family` for the element type E. Returns the memento, null when the store
// declined.
template <class E>
cls_MementoWrite* cls_xpStartRecord(const cls_WriteVisitor& visitor, unsigned classId,
                                    const cls_Uid& uid, cls_CollectionType family) {
  visitor.StartWrite(classId, uid);
  visitor.CheckCollectionType(cls_CollectionTypeFix(family, static_cast<const E*>(nullptr)));
  return visitor.Memento();
}

// Writes a list record of `count` values of T, `width` to a row, the i-th being at(i).
template <class T, class At>
void cls_xpWriteList(const cls_WriteVisitor& visitor, const cls_Uid& uid, cls_CollectionType family,
                     int width, int count, At at) {
  cls_MementoWrite* memento = cls_xpStartRecord<T>(visitor, cls_kListClassId, uid, family);
  if (memento == nullptr) return;
  cls_WriteCursor<cls_WriteListPrim<T>> cursor(memento->MakeListPrim(T(), width));
  for (int i = 0; cursor && i < count; ++i)
    cursor->Append(&at(i));
}

// The list cursor of the visitor's record; null with no memento.
template <class T>
cls_ReadListPrim<T>* cls_xpListCursor(const cls_ReadVisitor& visitor) {
  cls_MementoRead* memento = visitor.Memento();
  return memento ? memento->MakeListPrim(T()) : nullptr;
}

// Map cursors by key type: an int key selects the Int2 forms, a string key the String2
// forms.
template <class V>
cls_WriteMapInt2Prim<V>* cls_xpMapCursor(cls_MementoWrite& memento, const int*) {
  return memento.MakeMapInt2Prim(V());
}
template <class V>
cls_WriteMapString2Prim<V>* cls_xpMapCursor(cls_MementoWrite& memento, const cow_String*) {
  return memento.MakeMapString2Prim(V());
}
template <class V>
cls_ReadMapInt2Prim<V>* cls_xpMapCursor(cls_MementoRead& memento, const int*) {
  return memento.MakeMapInt2Prim(V());
}
template <class V>
cls_ReadMapString2Prim<V>* cls_xpMapCursor(cls_MementoRead& memento, const cow_String*) {
  return memento.MakeMapString2Prim(V());
}
inline cls_WriteMapInt2Obj* cls_xoMapCursor(cls_MementoWrite& memento, const int*) {
  return memento.MakeMapInt2Obj();
}
inline cls_WriteMapString2Obj* cls_xoMapCursor(cls_MementoWrite& memento, const cow_String*) {
  return memento.MakeMapString2Obj();
}
inline cls_ReadMapInt2Obj* cls_xoMapCursor(cls_MementoRead& memento, const int*) {
  return memento.MakeMapInt2Obj();
}
inline cls_ReadMapString2Obj* cls_xoMapCursor(cls_MementoRead& memento, const cow_String*) {
  return memento.MakeMapString2Obj();
}

// The key of a map cursor's current entry, which moves the cursor on.
template <class Cursor>
int cls_xpReadKey(Cursor& cursor, const int*) {
  return cursor.Key();
}
template <class Cursor>
cow_String cls_xpReadKey(Cursor& cursor, const cow_String*) {
  cow_String key;
  cursor.Key(key);
  return key;
}

#endif  // CLS_XPRECORD_H
