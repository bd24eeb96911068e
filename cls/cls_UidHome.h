// Where a short-lived persistent value hands its identity when it ends: the "uid home" of the
// value classes and of cls_SimpleArrayPrim. An object that keeps only the identity of a list
// it stores reads the list into a local value with its own uid as home; when the local value
// dies, the stored identity lands in the object:
//
//   cls_xp1DArrayListFloat loads(cls_ReadVisitor(visitor, field), &m_LoadsUid);
//
// Null means no home. Copies of a value have no home, and assignment keeps the home the
// value had, so that an identity is handed back once, by the value that was given the home.
#ifndef CLS_UIDHOME_H
#define CLS_UIDHOME_H

#include "cls_Uid.h"

class cls_UidHome {
 public:
  explicit cls_UidHome(cls_Uid* home = nullptr) : m_Home(home) {}
  cls_UidHome(const cls_UidHome&) : m_Home(nullptr) {}
  cls_UidHome& operator=(const cls_UidHome&) { return *this; }

  // Assigns `uid` to the home, if there is one.
  void Give(const cls_Uid& uid) const {
    if (m_Home != nullptr) *m_Home = uid;
  }

 private:
  cls_Uid* m_Home;
};

#endif  // CLS_UIDHOME_H
