#include "uti_FormatMap.h"

template class thr_ThreadSingletonBase<uti_FormatMap>;

namespace {

// The thread singleton registry destroys the map at this level.
constexpr thr_ThreadObjectDestructLevel kDestructLevel = 17;
// Fields that a named format leaves as built.
constexpr int kKeep = -1;

void Add(cow_Map<cow_String, VRKBasUtlNumFormat>& formats, const char* name, int notation,
         int width, int precision, int showPoint) {
  VRKBasUtlNumFormat format(VRKBasUtlFixedFormat);
  int* const fields[] = {&format.m_Notation, &format.m_Width, &format.m_Precision,
                         &format.m_ShowPoint};
  const int values[] = {notation, width, precision, showPoint};
  for (int i = 0; i < 4; ++i) {
    if (values[i] != kKeep) *fields[i] = values[i];
  }
  formats.Insert(name, format);
}

}  // namespace

uti_FormatMap::uti_FormatMap() : thr_ThreadSingleton<uti_FormatMap>(kDestructLevel) {
  Add(m_Formats, "defaultFormat", kKeep, kKeep, kKeep, kKeep);
  Add(m_Formats, "floatStepFormat", 2, 1, 6, kKeep);
  Add(m_Formats, "geometryFormat", kKeep, 12, 6, 0);
  Add(m_Formats, "fieldReportFormat", kKeep, kKeep, 0, kKeep);
}

uti_FormatMap::~uti_FormatMap() = default;
