// A container of points in space as a persistent value. It holds its points either as a flat
// array of coordinates (x0, y0, z0, x1, ...), as it has them when built from such an array or
// read from a store, or as a list of uti_Coord3D, as it has them once points are appended or
// set one by one; the first such change turns the flat array into a list.
//
//   const float xyz[] = {0, 0, 0, 1, 0, 0};
//   uti_CoordCont3D nodes(xyz, 2);             // flat
//   nodes.Append(uti_Coord3D(1, 1, 0));        // now a list of 3 points
//   float x = nodes.ConstGet(2, 0);             // the coordinate of point 2 on axis 0
//
// Copies share the contents (copy-on-write) and the identity. Equality compares the
// coordinates. It is stored as a record of class uti_CoordCont3D (version 203): "numCoord",
// the number of points, and "tempCoord", all coordinates as one list of floats written through
// a cls_SimpleArrayPrim<float> (extent quantum 3) whose identity the container keeps; a flat
// container sends them in one write, a list one value at a time.
//
// A bad index ends the process as a bad index into a cow_List does. Threads: a container and
// its copies belong to one thread at a time.
#ifndef UTI_COORDCONT3D_H
#define UTI_COORDCONT3D_H

#include "VRKBasExport.h"
#include "VRKBasSharedContainers.h"
#include "cls_Uid.h"
#include "mem_Alloc.h"
#include "uti_Coord3D.h"

extern template class VRKLNU_EXPORT cow_List<uti_Coord3D>;

class VRKLNU_EXPORT uti_CoordCont3D : public mem_AllocationOperators {
 public:
  static unsigned TypeId() { return 0x2001D; }
  virtual unsigned DynTypeId() const { return TypeId(); }

  // No points.
  uti_CoordCont3D() = default;
  // `count` points from `xyz`, three coordinates each, kept flat.
  uti_CoordCont3D(const float* xyz, int count);
  explicit uti_CoordCont3D(const cls_ReadVisitor& visitor);
  uti_CoordCont3D(const uti_CoordCont3D&) = default;
  uti_CoordCont3D& operator=(const uti_CoordCont3D&) = default;
  virtual ~uti_CoordCont3D();

  int Count() const;
  // Point `index`; a flat container makes a new point (a new identity) each time.
  uti_Coord3D ConstGet(int index) const;
  // The coordinate of point `index` on `axis` (0, 1 or 2).
  float ConstGet(int index, int axis) const;
  // The coordinates, three a point, while the container is flat; null once it is a list.
  const float* ConstFlat() const;

  void Append(const uti_Coord3D& point);
  void Set(int index, const uti_Coord3D& point);

  bool operator==(const uti_CoordCont3D& other) const;
  bool operator!=(const uti_CoordCont3D& other) const { return !(*this == other); }

  void DBWrite(const cls_WriteVisitor& visitor) const;
  const cls_Uid& Uid() const { return m_Uid; }

  // Declares the class: version 203, no base class, "numCoord" and "tempCoord".
  static void InitializeMetadata(cls_ClassRegistrar& registrar);

 private:
  bool IsFlat() const { return m_Flat.Rows() > 0; }
  // Turns the flat array into the list of points.
  void MakeList();

  cow_2DArray<float> m_Flat;  // points by row, three columns; 0 rows once a list
  cow_List<uti_Coord3D> m_Points;
  cls_Uid m_Uid;
  cls_Uid m_CoordsUid;  // the identity of the stored list of coordinates
};

#endif  // UTI_COORDCONT3D_H
