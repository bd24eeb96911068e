#include "omi_complex.h"

#include <cmath>

double omi_complex::ArgumentInRadians() const {
  return m_Tag == PolarDegrees ? m_Second * (M_PI / 180.0) : m_Second;
}

double omi_complex::ConvertedReal() const {
  return IsPolar() ? m_First * std::cos(ArgumentInRadians()) : m_First;
}

double omi_complex::ConvertedImag() const {
  return IsPolar() ? m_First * std::sin(ArgumentInRadians()) : m_Second;
}

double omi_complex::ConvertedModulus() const {
  return IsPolar() ? m_First : std::hypot(m_First, m_Second);
}

double omi_complex::ConvertedArgument() const {
  return IsPolar() ? ArgumentInRadians() : std::atan2(m_Second, m_First);
}
