// The mass properties of a region of a model: its mass, its centre of mass and its inertia
// tensor about that centre, as a persistent value written field by field.
//
//   utl_RegionMassProps plate(12.0, {0.5, 0.25, 0}, {0.3, 1.1, 1.4, 0, 0, 0});
//   utl_RegionMassProps bolt(0.2, {1, 0, 0}, {1e-4, 1e-4, 1e-5, 0, 0, 0});
//   plate += bolt;                 // both, about their common centre of mass
//   double ixx = plate.Inertia(0, 0);
//
// The inertia tensor J = integral of (|r|^2 E - r r^T) dm, r measured from the centre of
// mass, in the model's axes: its diagonal holds the moments of inertia, and its off-diagonal
// terms are the products of inertia with their sign reversed (J_xy = -integral of x y dm).
// It is symmetric and kept as six terms, given in the order xx, yy, zz, xy, yz, zx.
// Combining regions adds the masses, takes the mass-weighted centre, and moves each tensor to
// the new centre by the parallel-axis rule; a combination of no mass has its centre at the
// origin.
//
// Stored as a record of class 0x2001E with the fields "m_Mass", "m_Center.x", "m_Center.y",
// "m_Center.z" and "m_Inertia.xx", ".yy", ".zz", ".xy", ".yz", ".zx", all doubles; a field
// missing from a record reads as 0. Copies share the identity. A value belongs to one thread
// at a time.
#ifndef UTL_REGIONMASSPROPS_H
#define UTL_REGIONMASSPROPS_H

#include "VRKBasExport.h"
#include "cls_Uid.h"
#include "mem_Alloc.h"

class cls_ReadVisitor;
class cls_WriteVisitor;

class VRKLNU_EXPORT utl_RegionMassProps : public mem_AllocationOperators {
 public:
  static unsigned TypeId() { return 0x2001E; }
  unsigned DynTypeId() const { return TypeId(); }

  // No mass, centre at the origin, no inertia.
  utl_RegionMassProps();
  // `inertia` in the order xx, yy, zz, xy, yz, zx.
  utl_RegionMassProps(double mass, const double (&center)[3], const double (&inertia)[6]);
  explicit utl_RegionMassProps(const cls_ReadVisitor& visitor);

  double Mass() const { return m_Values[0]; }
  // The centre of mass on `axis`, 0 to 2.
  double Center(int axis) const;
  // The term (row, col) of the inertia tensor, rows and columns 0 to 2. An axis, row or
  // column out of range ends the process, as a bad index into a cow_List does.
  double Inertia(int row, int col) const;

  // Adds `other` to this region: see the rules above.
  utl_RegionMassProps& operator+=(const utl_RegionMassProps& other);
  // Equal masses, centres and tensors; the identity is not compared.
  bool operator==(const utl_RegionMassProps& other) const;
  bool operator!=(const utl_RegionMassProps& other) const { return !(*this == other); }

  void DBWrite(const cls_WriteVisitor& visitor) const;
  const cls_Uid& Uid() const { return m_Uid; }

 private:
  static constexpr int kValues = 10;

  // The mass, the centre (x, y, z) and the tensor (xx, yy, zz, xy, yz, zx): the fields in
  // their stored order.
  double m_Values[kValues];
  cls_Uid m_Uid;
};

#endif  // UTL_REGIONMASSPROPS_H
