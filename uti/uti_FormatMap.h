// The named number formats of reports, one map per thread:
//
//   const VRKBasUtlNumFormat& format =
//       uti_FormatMap::Instance().Map().ConstGet("geometryFormat");
//   cow_String text = format.Format(0.25);   // "    0.250000"
//
// Each thread's map starts with four fixed-point formats: "defaultFormat" as built,
// "floatStepFormat" (notation 2, width 1, precision 6), "geometryFormat" (width 12,
// precision 6, no forced point) and "fieldReportFormat" (precision 0). A program may change
// them and add its own. The map is made at a thread's first Instance and destroyed by the
// thread singleton registry when the thread or the library ends; it needs no lock.
#ifndef UTI_FORMATMAP_H
#define UTI_FORMATMAP_H

#include "VRKBasExport.h"
#include "VRKBasSharedContainers.h"
#include "VRKBasUtlNumFormat.h"
#include "thr_ThreadSingleton.h"

class uti_FormatMap;
extern template class VRKLNU_EXPORT thr_ThreadSingletonBase<uti_FormatMap>;

class VRKLNU_EXPORT uti_FormatMap : public thr_ThreadSingleton<uti_FormatMap> {
 public:
  cow_Map<cow_String, VRKBasUtlNumFormat>& Map() { return m_Formats; }

 private:
  friend class thr_ThreadSingletonBase<uti_FormatMap>;
  uti_FormatMap();
  ~uti_FormatMap();

  cow_Map<cow_String, VRKBasUtlNumFormat> m_Formats;
};

#endif  // UTI_FORMATMAP_H
