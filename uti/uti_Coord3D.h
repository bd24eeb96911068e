// A point in space as a persistent value: three float coordinates and an identity.
//
//   uti_Coord3D p(1.0f, 2.5f, -3.0f);
//   float y = p.Y();             // or p[1]
//   uti_Coord3D q = p;           // the same point: equal coordinates, one identity
//   bool same = p == q;          // compares coordinates only
//
// A point is immutable: a point at other coordinates is a new point, with a new identity.
// It is stored as a record of class uti_Coord3D (version 203) whose one field "c" embeds
// the coordinates as a list of three floats (a list record with an identity of its own, tag
// 53). A point read from a record that holds fewer than three coordinates has 0 for the
// missing ones.
//
// Threads: a point and its copies belong to one thread at a time (their identity does).
#ifndef UTI_COORD3D_H
#define UTI_COORD3D_H

#include <cstdlib>

#include "VRKBasExport.h"
#include "cls_Uid.h"
#include "mem_Alloc.h"

class cls_ClassRegistrar;
class cls_ReadVisitor;
class cls_WriteVisitor;

class VRKLNU_EXPORT uti_Coord3D : public mem_AllocationOperators {
 public:
  static unsigned TypeId() { return 0x2001C; }
  virtual unsigned DynTypeId() const { return TypeId(); }

  // The origin.
  uti_Coord3D() : m_C{0, 0, 0} {}
  uti_Coord3D(float x, float y, float z) : m_C{x, y, z} {}
  explicit uti_Coord3D(const cls_ReadVisitor& visitor);
  uti_Coord3D(const uti_Coord3D&) = default;
  uti_Coord3D& operator=(const uti_Coord3D&) = default;
  virtual ~uti_Coord3D();

  float X() const { return m_C[0]; }
  float Y() const { return m_C[1]; }
  float Z() const { return m_C[2]; }
  // The coordinate on `axis`: 0, 1 or 2; any other axis ends the process, as a bad index
  // into a cow_List does.
  float operator[](int axis) const {
    if (static_cast<unsigned>(axis) > 2) std::abort();
    return m_C[axis];
  }

  bool operator==(const uti_Coord3D& other) const;
  bool operator!=(const uti_Coord3D& other) const { return !(*this == other); }

  void DBWrite(const cls_WriteVisitor& visitor) const;
  const cls_Uid& Uid() const { return m_Uid; }

  // Declares the class: version 203, no base class, the embedded field "c".
  static void InitializeMetadata(cls_ClassRegistrar& registrar);

 private:
  float m_C[3];
  cls_Uid m_Uid;
  cls_Uid m_CoordsUid;  // the identity of the embedded list "c"
};

#endif  // UTI_COORD3D_H
