// How a report writes a number: a record of four 32-bit fields, public so that a caller can
// adjust any of them after construction.
//
//   VRKBasUtlNumFormat format(VRKBasUtlFixedFormat);
//   format.m_Width = 12;
//   cow_String text = format.Format(3.5);  // "    3.500000"
#ifndef VRKBASUTLNUMFORMAT_H
#define VRKBASUTLNUMFORMAT_H

#include "VRKBasExport.h"
#include "cow_String.h"

enum VRKBasUtlFormatEnum {
  VRKBasUtlGeneralFormat = 0,     // printf "%g"
  VRKBasUtlFixedFormat = 1,       // printf "%f"
  VRKBasUtlScientificFormat = 2,  // printf "%e"
};

class VRKLNU_EXPORT VRKBasUtlNumFormat {
 public:
  // The notation of the enum value, no width, precision 6, no forced decimal point.
  explicit VRKBasUtlNumFormat(VRKBasUtlFormatEnum notation = VRKBasUtlGeneralFormat);
  ~VRKBasUtlNumFormat();

  // The number in this format; a notation outside the enum reads as general.
  cow_String Format(double value) const;

  int m_Notation;   // a VRKBasUtlFormatEnum value
  int m_Width;      // the smallest field width, right-aligned; 0 for none
  int m_Precision;  // digits after the point, or significant digits for general
  int m_ShowPoint;  // nonzero: always write a decimal point
};

#endif  // VRKBASUTLNUMFORMAT_H
