// What the value classes (cls_xpList.h, cls_xp2DArray.h, cls_xpMap.h, cls_xoMap.h) share: a
// container as their base, an identity beside it, and the rule that new contents are a new
// stored object. Copies share the identity; assignment from a plain container takes a new
// one.
#ifndef CLS_XPVALUE_H
#define CLS_XPVALUE_H

#include "cls_Uid.h"

template <class Container, unsigned ClassId>
class cls_xpValue : public Container {
 public:
  static unsigned TypeId() { return ClassId; }
  unsigned DynTypeId() const { return ClassId; }
  const cls_Uid& Uid() const { return m_Uid; }

 protected:
  cls_xpValue() = default;
  explicit cls_xpValue(const Container& contents) : Container(contents) {}
  cls_xpValue(const Container& contents, const cls_Uid& uid) : Container(contents), m_Uid(uid) {}
  // Empty, under the identity given: the start of a read constructor.
  explicit cls_xpValue(const cls_Uid& uid) : m_Uid(uid) {}
  cls_xpValue(const cls_xpValue&) = default;
  cls_xpValue& operator=(const cls_xpValue&) = default;
  ~cls_xpValue() = default;

  // Takes new contents and with them a new identity; nothing on self-assignment.
  void Assign(const Container& contents) {
    if (&contents == this) return;
    Container::operator=(contents);
    m_Uid.NewUid();
  }

  cls_Uid m_Uid;
};

#endif  // CLS_XPVALUE_H
