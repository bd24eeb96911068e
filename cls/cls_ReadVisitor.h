// What a persistent object rebuilds itself from: a read constructor takes its fields by name,
// with a default for each field that an older version of the class did not have, and builds
// its base class from a base-part visitor:
//
//   Shape::Shape(const cls_ReadVisitor& visitor)
//       : Base(cls_ReadVisitor(visitor)),          // the base-class part, not a copy
//         m_Sides(visitor.Read(cls_FieldHandle(0, "m_Sides"), 3)),
//         m_Uid(visitor.GetUid()) {}
//
// The visitor's one constructor from another visitor is not a copy: it asks the memento for
// the base-class part. A visitor is a stack object that owns its memento when the memento's
// NeedsDeletion says so. With no memento it answers every question empty.
#ifndef CLS_READVISITOR_H
#define CLS_READVISITOR_H

#include "VRKBasExport.h"
#include "atr_String.h"
#include "cls_FieldHandle.h"
#include "cls_MementoRead.h"
#include "cls_Uid.h"

class VRKLNU_EXPORT cls_ReadVisitor {
 public:
  // A visitor over a ready memento (null is allowed).
  explicit cls_ReadVisitor(cls_MementoRead* memento) : m_Memento(memento) {}
  // The object stored in a field of the parent's object.
  cls_ReadVisitor(const cls_ReadVisitor& parent, const cls_FieldHandle& field);
  // The base-class part of the parent's object (MakeBaseReadObj), for the base constructor.
  cls_ReadVisitor(const cls_ReadVisitor& derived);
  cls_ReadVisitor& operator=(const cls_ReadVisitor&) = delete;
  ~cls_ReadVisitor();

  // The store's identifier of the record; empty with no memento.
  cow_String DbId() const;
  // The stored identity; a fresh one with no memento.
  cls_Uid GetUid() const;
  int FieldIsPresent(const cls_FieldHandle& field) const;
  int DataIsPresent(const cls_FieldHandle& field) const;
  cls_MementoRead* MakeReadObj(const cls_FieldHandle& field) const;
  cls_MementoRead* MakeBaseReadObj() const;

  // The stored value of the field, or `otherwise` when the record has none (and with no
  // memento).
  template <class T>
  T Read(const cls_FieldHandle& field, const T& otherwise) const {
    return m_Memento ? m_Memento->Read(field, otherwise) : otherwise;
  }
  // User text, read as plain text and made text again through "%s". The default is not
  // passed on: the store is handed an empty string, so it must deliver a value for such a
  // field.
  atr_String Read(const cls_FieldHandle& field, const atr_String& otherwise) const;

  cls_MementoRead* Memento() const { return m_Memento; }

 private:
  cls_MementoRead* m_Memento;
};

#endif  // CLS_READVISITOR_H
