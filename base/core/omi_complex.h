// A complex number kept in the form it was given: a tag and two numbers. Tag 0 holds the
// real and imaginary parts, tag 1 the modulus and the argument in radians, tag 2 the
// modulus and the argument in degrees; any other tag reads as tag 0. The Converted queries
// give each view whatever the stored form.
#ifndef OMI_COMPLEX_H
#define OMI_COMPLEX_H

#include "VRKBasExport.h"

class VRKLNU_EXPORT omi_complex {
 public:
  enum { Rectangular = 0, Polar = 1, PolarDegrees = 2 };

  omi_complex() = default;
  omi_complex(int tag, double first, double second)
      : m_Tag(tag), m_First(first), m_Second(second) {}

  int Tag() const { return m_Tag; }
  double First() const { return m_First; }
  double Second() const { return m_Second; }

  double ConvertedReal() const;
  double ConvertedImag() const;
  double ConvertedModulus() const;
  // In radians, in (-pi, pi] for a rectangular value.
  double ConvertedArgument() const;

 private:
  bool IsPolar() const { return m_Tag == Polar || m_Tag == PolarDegrees; }
  double ArgumentInRadians() const;

  int m_Tag = Rectangular;
  double m_First = 0.0;
  double m_Second = 0.0;
};

#endif  // OMI_COMPLEX_H
