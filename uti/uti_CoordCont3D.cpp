#include "uti_CoordCont3D.h"

#include <cstring>

#include "cls_ClassRegistrar.h"
#include "cls_ReadVisitor.h"
#include "cls_SimpleArrayPrim.h"
#include "cls_WriteVisitor.h"

template class cow_List<uti_Coord3D>;

namespace {

constexpr int kVersion = 203;
constexpr unsigned kNoBaseClass = 1;
constexpr int kExtentQuantum = 3;

cls_FieldHandle NumCoordField() {
  return cls_FieldHandle(-1, "numCoord");
}
cls_FieldHandle TempCoordField() {
  return cls_FieldHandle(-1, "tempCoord");
}

}  // namespace

uti_CoordCont3D::uti_CoordCont3D(const float* xyz, int count) : m_Flat(count > 0 ? count : 0, 3) {
  if (count > 0) std::memcpy(&m_Flat.Get(0, 0), xyz, sizeof(float) * 3 * count);
}

uti_CoordCont3D::uti_CoordCont3D(const cls_ReadVisitor& visitor) {
  // The record's count of points is read as written; the stored list's own size is what
  // counts.
  visitor.Read(NumCoordField(), 0);
  m_Uid = visitor.GetUid();
  // The list hands its stored identity to m_CoordsUid when it goes.
  cls_SimpleArrayPrim<float> coords(cls_ReadVisitor(visitor, TempCoordField()), &m_CoordsUid);
  const int count = coords.Size() / 3;
  if (count <= 0) return;
  m_Flat = cow_2DArray<float>(count, 3);
  coords.Read(&m_Flat.Get(0, 0), 3 * count);
}

uti_CoordCont3D::~uti_CoordCont3D() = default;

int uti_CoordCont3D::Count() const {
  return IsFlat() ? m_Flat.Rows() : m_Points.Count();
}

uti_Coord3D uti_CoordCont3D::ConstGet(int index) const {
  if (!IsFlat()) return m_Points.ConstGet(index);
  return uti_Coord3D(m_Flat.ConstGet(index, 0), m_Flat.ConstGet(index, 1),
                     m_Flat.ConstGet(index, 2));
}

float uti_CoordCont3D::ConstGet(int index, int axis) const {
  return IsFlat() ? m_Flat.ConstGet(index, axis) : m_Points.ConstGet(index)[axis];
}

const float* uti_CoordCont3D::ConstFlat() const {
  return IsFlat() ? m_Flat.ConstData() : nullptr;
}

void uti_CoordCont3D::MakeList() {
  if (!IsFlat()) return;
  cow_List<uti_Coord3D> points(cow_ListPresize, m_Flat.Rows());
  for (int i = 0; i < m_Flat.Rows(); ++i)
    points.Append(ConstGet(i));
  m_Points = points;
  m_Flat = cow_2DArray<float>();
}

void uti_CoordCont3D::Append(const uti_Coord3D& point) {
  MakeList();
  m_Points.Append(point);
}

void uti_CoordCont3D::Set(int index, const uti_Coord3D& point) {
  MakeList();
  m_Points.Get(index) = point;
}

bool uti_CoordCont3D::operator==(const uti_CoordCont3D& other) const {
  if (Count() != other.Count()) return false;
  for (int i = 0; i < Count(); ++i) {
    for (int axis = 0; axis < 3; ++axis) {
      if (ConstGet(i, axis) != other.ConstGet(i, axis)) return false;
    }
  }
  return true;
}

void uti_CoordCont3D::DBWrite(const cls_WriteVisitor& visitor) const {
  cls_SimpleArrayPrim<float> coords(m_CoordsUid, kExtentQuantum);
  if (!visitor.StartWrite(TypeId(), m_Uid)) return;
  visitor.Write(NumCoordField(), Count());
  coords.DBWrite(cls_WriteVisitor(visitor, TempCoordField(), nullptr, nullptr));
  if (IsFlat()) {
    coords.Write(m_Flat.ConstData(), 3 * Count());
    return;
  }
  for (int i = 0; i < m_Points.Count(); ++i) {
    for (int axis = 0; axis < 3; ++axis) {
      const float value = m_Points.ConstGet(i)[axis];
      coords.Write(&value, 1);
    }
  }
}

void uti_CoordCont3D::InitializeMetadata(cls_ClassRegistrar& registrar) {
  registrar
      .AddClassMD(
          new cls_TypeAdapter<uti_CoordCont3D>("uti_CoordCont3D", TypeId(), kVersion, kNoBaseClass))
      .AddAttribute(NumCoordField(), cls_AttrInt, 1, cls_CollNone)
      .AddAttribute(TempCoordField(), cls_AttrCollection, cls_SimpleArrayPrim<float>::TypeId(),
                    cls_CollectionTypeFix(cls_CollList, static_cast<const float*>(nullptr)));
}
