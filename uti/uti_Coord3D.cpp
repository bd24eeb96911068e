#include "uti_Coord3D.h"

#include "cls_ClassRegistrar.h"
#include "cls_ReadVisitor.h"
#include "cls_WriteVisitor.h"
#include "cls_xpList.h"

namespace {

constexpr int kVersion = 203;
constexpr unsigned kNoBaseClass = 1;

cls_FieldHandle CoordsField() {
  return cls_FieldHandle(0, "c");
}

}  // namespace

uti_Coord3D::uti_Coord3D(const cls_ReadVisitor& visitor) : m_C{0, 0, 0}, m_Uid(visitor.GetUid()) {
  // The embedded list hands its stored identity to m_CoordsUid as it goes.
  const cls_xp1DArrayListFloat coords(cls_ReadVisitor(visitor, CoordsField()), &m_CoordsUid);
  for (int axis = 0; axis < 3 && axis < coords.Count(); ++axis)
    m_C[axis] = coords.ConstGet(axis);
}

uti_Coord3D::~uti_Coord3D() = default;

bool uti_Coord3D::operator==(const uti_Coord3D& other) const {
  return m_C[0] == other.m_C[0] && m_C[1] == other.m_C[1] && m_C[2] == other.m_C[2];
}

void uti_Coord3D::DBWrite(const cls_WriteVisitor& visitor) const {
  if (!visitor.StartWrite(TypeId(), m_Uid)) return;
  cow_List<float> values;
  for (float value : m_C)
    values.Append(value);
  const cls_xpListFloat coords(values, m_CoordsUid);
  coords.DBWrite(cls_WriteVisitor(visitor, CoordsField(), nullptr, &coords));
}

void uti_Coord3D::InitializeMetadata(cls_ClassRegistrar& registrar) {
  registrar
      .AddClassMD(new cls_TypeAdapter<uti_Coord3D>("uti_Coord3D", TypeId(), kVersion, kNoBaseClass))
      .AddAttribute(CoordsField(), cls_AttrObject, cls_xpListFloat::TypeId(),
                    cls_CollectionTypeFix(cls_CollList, static_cast<const float*>(nullptr)));
}
