#include "VRKBasUtlNumFormat.h"

#include <algorithm>
#include <cstdio>

VRKBasUtlNumFormat::VRKBasUtlNumFormat(VRKBasUtlFormatEnum notation)
    : m_Notation(notation), m_Width(0), m_Precision(6), m_ShowPoint(0) {}

VRKBasUtlNumFormat::~VRKBasUtlNumFormat() = default;

cow_String VRKBasUtlNumFormat::Format(double value) const {
  const char* format = m_ShowPoint ? "%#*.*g" : "%*.*g";
  if (m_Notation == VRKBasUtlFixedFormat) format = m_ShowPoint ? "%#*.*f" : "%*.*f";
  if (m_Notation == VRKBasUtlScientificFormat) format = m_ShowPoint ? "%#*.*e" : "%*.*e";
  const int width = std::min(std::max(m_Width, 0), 200);
  const int precision = std::min(std::max(m_Precision, 0), 100);
  char text[640];
  const int length = std::snprintf(text, sizeof text, format, width, precision, value);
  return cow_String(text, std::min<int>(length, sizeof text - 1));
}
