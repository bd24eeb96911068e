#include "utl_RegionMassProps.h"

#include <algorithm>
#include <cstdlib>

#include "cls_ReadVisitor.h"
#include "cls_WriteVisitor.h"

namespace {

constexpr const char* kFields[] = {
    "m_Mass",       "m_Center.x",   "m_Center.y",   "m_Center.z",   "m_Inertia.xx",
    "m_Inertia.yy", "m_Inertia.zz", "m_Inertia.xy", "m_Inertia.yz", "m_Inertia.zx",
};
constexpr int kCenter = 1;
constexpr int kInertia = 4;

int Checked(int axis) {
  if (static_cast<unsigned>(axis) > 2) std::abort();
  return axis;
}

// The place among the values of the tensor's term (row, col).
int TermOf(int row, int col) {
  static const int kTerm[3][3] = {{0, 3, 5}, {3, 1, 4}, {5, 4, 2}};
  return kInertia + kTerm[Checked(row)][Checked(col)];
}

}  // namespace

utl_RegionMassProps::utl_RegionMassProps() : m_Values{} {}

utl_RegionMassProps::utl_RegionMassProps(double mass, const double (&center)[3],
                                         const double (&inertia)[6])
    : m_Values{mass} {
  std::copy(center, center + 3, m_Values + kCenter);
  std::copy(inertia, inertia + 6, m_Values + kInertia);
}

utl_RegionMassProps::utl_RegionMassProps(const cls_ReadVisitor& visitor) {
  for (int i = 0; i < kValues; ++i)
    m_Values[i] = visitor.Read(cls_FieldHandle(i, kFields[i]), 0.0);
  m_Uid = visitor.GetUid();
}

double utl_RegionMassProps::Center(int axis) const {
  return m_Values[kCenter + Checked(axis)];
}

double utl_RegionMassProps::Inertia(int row, int col) const {
  return m_Values[TermOf(row, col)];
}

utl_RegionMassProps& utl_RegionMassProps::operator+=(const utl_RegionMassProps& other) {
  utl_RegionMassProps sum;
  const double mass = Mass() + other.Mass();
  sum.m_Values[0] = mass;
  for (int i = 0; mass != 0 && i < 3; ++i)
    sum.m_Values[kCenter + i] = (Mass() * Center(i) + other.Mass() * other.Center(i)) / mass;
  const utl_RegionMassProps* const parts[] = {this, &other};
  for (const utl_RegionMassProps* part : parts) {
    // The part's tensor moved to the common centre: J + m (|d|^2 E - d d^T).
    double d[3];
    for (int i = 0; i < 3; ++i)
      d[i] = part->Center(i) - sum.Center(i);
    const double d2 = d[0] * d[0] + d[1] * d[1] + d[2] * d[2];
    for (int row = 0; row < 3; ++row) {
      for (int col = row; col < 3; ++col) {
        const double shift = (row == col ? d2 : 0) - d[row] * d[col];
        sum.m_Values[TermOf(row, col)] += part->Inertia(row, col) + part->Mass() * shift;
      }
    }
  }
  std::copy(sum.m_Values, sum.m_Values + kValues, m_Values);
  return *this;
}

bool utl_RegionMassProps::operator==(const utl_RegionMassProps& other) const {
  return std::equal(m_Values, m_Values + kValues, other.m_Values);
}

void utl_RegionMassProps::DBWrite(const cls_WriteVisitor& visitor) const {
  if (!visitor.StartWrite(TypeId(), m_Uid)) return;
  for (int i = 0; i < kValues; ++i)
    visitor.Write(cls_FieldHandle(i, kFields[i]), m_Values[i]);
}
