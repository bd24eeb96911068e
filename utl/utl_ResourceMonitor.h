// How much time and memory a run consumes, written as it goes to a resource log. The
// environment switches it on: without LUN_RESOURCE_MONITOR every call is a test of a flag
// and nothing is written.
//
//   utl_ResourceMonitor& monitor = utl_ResourceMonitor::Instance();
//   monitor.Initialize("solve", 0, nullptr, false, false);   // log "solve.use"
//   monitor.Mark("matrix assembled");                        // one line: time and memory
//   monitor.StartTimer(3, "factor"); factor(); monitor.StopTimer(3);
//   utl_ResourceMonitor::Finalize();                         // titles and timer summary
//
// LUN_RESOURCE_MONITOR set to any value turns the monitor on; these exact words add to it:
// "FULL" prints mark texts whole, "DEBUG" adds a column of Unix time, "METHOD" lets
// MarkMethod through and keeps texts to 40 characters, "FULLMETHOD" does both. Anything else
// ("1", or "full" in lower case) turns it on with none of these.
//
// The log starts with three header lines ("!Snapshot = ", "!Version = ", "!Host = ") from
// LUNARA_SEQ, LUNARA_VERSION, COMPUTERNAME and PROCESSOR_IDENTIFIER ("?" for each one unset),
// then holds one line per mark, flushed at once so that a killed run leaves it readable.
// The column titles come at the end, before the summary of the timers. Memory columns:
// WSP and WS are the peak and present resident set (VmHWM, VmRSS), PageFaults the minor and
// major faults, PeakPageFileUsage the highest anonymous resident plus swapped memory seen at
// a mark; the four quota-pool columns print 0, as this system has no such pools.
//
// Nothing is reported and nothing raises: a log that can't be opened leaves the monitor on
// without output. Not locked: one thread at a time uses it.
#ifndef UTL_RESOURCEMONITOR_H
#define UTL_RESOURCEMONITOR_H

#include <cstdint>
#include <cstdio>

#include "VRKBasExport.h"
#include "cow_String.h"
#include "omi_Singleton.h"

class utl_ResourceMonitor;
extern template class VRKLNU_EXPORT omi_SingletonBase<utl_ResourceMonitor>;

// Made inactive at the first Instance; Initialize decides whether it is on. Finalize destroys
// it, which ends the log. The library's stop leaves it alone.
class VRKLNU_EXPORT utl_ResourceMonitor : public omi_Singleton<utl_ResourceMonitor> {
 public:
  static constexpr int kTimerCount = 21;

  // One stopwatch of process CPU and wall time, in seconds.
  struct a_timer_record {
    bool inUse = false;
    cow_String name;
    double startUser = 0, startSystem = 0, startWall = 0;
    double totalUser = 0, totalSystem = 0, totalWall = 0;
    int calls = 0;
  };

  // Reads the environment and, if the monitor is on, opens the log `fileBase` (or, when that
  // is null or empty, `phaseName`) with ".use" or, for a non-zero `rank`, ".use.<rank>"
  // behind it, in the working directory unless the name says otherwise. Writes the header and
  // the mark "<phaseName>-Start", and runs timer 20, "Self", 1000 times to show what a timer
  // costs. `numberedPhase` numbers the marks behind the phase ("solve.3 "); `inKilobytes`
  // gives the memory in KiB instead of bytes. Only the first call counts.
  void Initialize(const char* phaseName, int rank, const char* fileBase, bool numberedPhase,
                  bool inKilobytes);
  // Writes one line: phase, wall seconds since Initialize, the text (cut to 40 characters,
  // "<first 19>_<last 20>", unless "FULL"), CPU seconds and memory.
  void Mark(const cow_String& text) {
    if (m_IsActive) WriteMark(text);
  }
  // A Mark only under "METHOD" or "FULLMETHOD".
  void MarkMethod(const cow_String& text) {
    if (m_MarkMethods) WriteMark(text);
  }
  // Timers 0 to 20; other indices are ignored. A start of a timer not in use names it and
  // zeroes it; a start of one in use keeps its name and totals and takes new start values.
  void StartTimer(int index, const cow_String& name);
  // Adds the time since the last start to the totals and counts one call.
  void StopTimer(int index);

  bool IsActive() const { return m_IsActive; }

 private:
  friend class omi_SingletonBase<utl_ResourceMonitor>;
  // The last sample of the process's memory, in bytes.
  struct Memory {
    int64_t peakWorkingSet = 0;
    int64_t workingSet = 0;
    int64_t pageFaults = 0;
    int64_t peakPagefile = 0;
  };

  utl_ResourceMonitor();
  // With the monitor on: the mark "<phaseName>-End", the titles, the timer summary.
  ~utl_ResourceMonitor();

  void WriteMark(const cow_String& text);
  void WriteHeader();
  void WriteSummary();
  void SampleMemory();
  // Whether the timer may be used: the monitor is on and the index is in range.
  bool TimerUsable(int index) const;

  a_timer_record m_Timers[kTimerCount];
  double m_StartTime = 0;
  bool m_IsInitialized = false;
  bool m_IsActive = false;
  bool m_FullMark = false;
  bool m_MarkMethods = false;
  bool m_UnixTimeColumn = false;
  bool m_NumberedPhase = false;
  bool m_InKilobytes = false;
  int m_PhaseCount = 1;
  cow_String m_PhaseName;
  std::FILE* m_Log = nullptr;
  int m_ProcessId = 0;
  Memory m_Memory;
};

#endif  // UTL_RESOURCEMONITOR_H
