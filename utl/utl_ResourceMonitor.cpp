#include "utl_ResourceMonitor.h"

#include <sys/resource.h>
#include <unistd.h>

#include <cinttypes>
#include <cstdlib>
#include <cstring>

#include "VRKBasUtlFilePath.h"
#include "omi_Timer.h"

template class omi_SingletonBase<utl_ResourceMonitor>;

namespace {

const char* EnvironmentOr(const char* name, const char* absent) {
  const char* value = std::getenv(name);
  return value != nullptr ? value : absent;
}

double Seconds(const timeval& time) {
  return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
}

// The process's user and kernel seconds.
struct CpuTimes {
  double user = 0;
  double system = 0;
};

CpuTimes ProcessTimes() {
  rusage usage;
  getrusage(RUSAGE_SELF, &usage);
  return {Seconds(usage.ru_utime), Seconds(usage.ru_stime)};
}

// The value of a "Name:   1234 kB" line of /proc/self/status, in bytes; -1 when absent.
int64_t StatusBytes(const char* status, const char* field) {
  const char* line = std::strstr(status, field);
  return line != nullptr ? std::strtoll(line + std::strlen(field), nullptr, 10) * 1024 : -1;
}

// A mark text of more than 40 characters as its first 19, "_" and its last 20.
cow_String Shortened(const cow_String& text) {
  if (text.Length() <= 40) return text;
  cow_String shortened(text.c_str(), 19);
  shortened += "_";
  shortened += text.c_str() + text.Length() - 20;
  return shortened;
}

}  // namespace

utl_ResourceMonitor::utl_ResourceMonitor() = default;

utl_ResourceMonitor::~utl_ResourceMonitor() {
  if (!m_IsActive) return;
  Mark(m_PhaseName + "-End");
  WriteSummary();
  if (m_Log != nullptr) std::fclose(m_Log);
}

void utl_ResourceMonitor::Initialize(const char* phaseName, int rank, const char* fileBase,
                                     bool numberedPhase, bool inKilobytes) {
  if (m_IsInitialized) return;
  m_PhaseName = phaseName;
  m_NumberedPhase = numberedPhase;
  m_InKilobytes = inKilobytes;
  m_IsInitialized = true;
  m_PhaseCount = 1;
  const char* mode = std::getenv("LUN_RESOURCE_MONITOR");
  if (mode == nullptr) return;
  m_IsActive = true;
  // "MALLINFO" is accepted as it stands and changes nothing, as any other value.
  const cow_String word(mode);
  m_FullMark = word == "FULL" || word == "FULLMETHOD";
  m_UnixTimeColumn = word == "DEBUG";
  m_MarkMethods = word == "METHOD" || word == "FULLMETHOD";

  m_StartTime = omi_gettimestamp();
  for (a_timer_record& timer : m_Timers)
    timer.inUse = false;
  cow_String name(fileBase != nullptr && *fileBase != '\0' ? fileBase : phaseName);
  name += ".use";
  if (rank != 0) name += "." + cow_String(rank);
  m_Log = std::fopen(VRKBasUtlFilePath(name).AbsolutePathName().c_str(), "w");
  WriteHeader();
  m_ProcessId = static_cast<int>(getpid());
  Mark(m_PhaseName + "-Start");
  for (int i = 0; i < 1000; ++i) {
    StartTimer(20, "Self");
    StopTimer(20);
  }
}

void utl_ResourceMonitor::WriteHeader() {
  if (m_Log == nullptr) return;
  std::fprintf(m_Log, "!Snapshot = %s\n", EnvironmentOr("LUNARA_SEQ", "?"));
  std::fprintf(m_Log, "!Version = %s\n", EnvironmentOr("LUNARA_VERSION", "?"));
  std::fprintf(m_Log, "!Host = %s %s\n", EnvironmentOr("COMPUTERNAME", "?"),
               EnvironmentOr("PROCESSOR_IDENTIFIER", "?"));
}

// Working set and its peak are the resident set and its high-water mark; the page file's use
// is anonymous resident memory plus swap, and its peak the highest seen at a sample. A status
// that can't be read leaves the last sample as it was.
void utl_ResourceMonitor::SampleMemory() {
  char status[4096];
  std::FILE* file = std::fopen("/proc/self/status", "re");
  if (file == nullptr) return;
  const size_t length = std::fread(status, 1, sizeof status - 1, file);
  std::fclose(file);
  status[length] = '\0';
  const int64_t peak = StatusBytes(status, "VmHWM:");
  const int64_t resident = StatusBytes(status, "VmRSS:");
  const int64_t anonymous = StatusBytes(status, "RssAnon:");
  const int64_t swapped = StatusBytes(status, "VmSwap:");
  if (peak < 0 || resident < 0 || anonymous < 0 || swapped < 0) return;
  m_Memory.peakWorkingSet = peak;
  m_Memory.workingSet = resident;
  if (anonymous + swapped > m_Memory.peakPagefile) m_Memory.peakPagefile = anonymous + swapped;
  rusage usage;
  getrusage(RUSAGE_SELF, &usage);
  m_Memory.pageFaults = usage.ru_minflt + usage.ru_majflt;
}

void utl_ResourceMonitor::WriteMark(const cow_String& text) {
  SampleMemory();
  const CpuTimes cpu = ProcessTimes();
  const double now = omi_gettimestamp();
  const int count = m_PhaseCount++;
  if (m_Log == nullptr) return;
  if (m_NumberedPhase) {
    std::fprintf(m_Log, "%s.%-2d", m_PhaseName.c_str(), count);
  } else {
    std::fprintf(m_Log, "%s", m_PhaseName.c_str());
  }
  if (m_UnixTimeColumn) std::fprintf(m_Log, " %7.1f", now);
  std::fprintf(m_Log, " %7.1f", now - m_StartTime);
  if (m_FullMark) {
    std::fprintf(m_Log, " %s", text.c_str());
  } else {
    std::fprintf(m_Log, " %40.40s", Shortened(text).c_str());
  }
  const int64_t unit = m_InKilobytes ? 1024 : 1;
  const int64_t quotaPool = 0;
  std::fprintf(m_Log,
               " %7.1f %6.1f %10" PRId64 " %10" PRId64 " %.1f %" PRId64 " %" PRId64 " %" PRId64
               " %" PRId64 " %" PRId64 " %" PRId64 " %d %d %d %d \n",
               cpu.user, cpu.system, m_Memory.peakWorkingSet / unit, m_Memory.workingSet / unit,
               cpu.user + cpu.system, quotaPool, quotaPool, quotaPool, quotaPool,
               m_Memory.pageFaults, m_Memory.peakPagefile / unit, 0, 0, 0, m_ProcessId);
  std::fflush(m_Log);
}

bool utl_ResourceMonitor::TimerUsable(int index) const {
  return m_IsActive && index >= 0 && index < kTimerCount;
}

void utl_ResourceMonitor::StartTimer(int index, const cow_String& name) {
  if (!TimerUsable(index)) return;
  a_timer_record& timer = m_Timers[index];
  if (!timer.inUse) {
    timer = a_timer_record();
    timer.inUse = true;
    timer.name = name;
  }
  const CpuTimes cpu = ProcessTimes();
  timer.startUser = cpu.user;
  timer.startSystem = cpu.system;
  timer.startWall = omi_gettimestamp();
}

void utl_ResourceMonitor::StopTimer(int index) {
  if (!TimerUsable(index)) return;
  a_timer_record& timer = m_Timers[index];
  const CpuTimes cpu = ProcessTimes();
  ++timer.calls;
  timer.totalUser += cpu.user - timer.startUser;
  timer.totalSystem += cpu.system - timer.startSystem;
  timer.totalWall += omi_gettimestamp() - timer.startWall;
}

void utl_ResourceMonitor::WriteSummary() {
  if (m_Log == nullptr) return;
  std::fputs(m_UnixTimeColumn ? "!Phase,UnixTime,Wall,Mark,UserCPU,SysCPU,WSP,WS,"
                              : "!Phase,Wall,Mark,UserCPU,SysCPU,WSP,WS,",
             m_Log);
  std::fputs("CPU,QPPP,QPP,QNPPP,QNPP,PageFaults,PeakPageFileUsage,0,0,0,ProcessID\n", m_Log);
  std::fputs("!Timer Summary                     # calls     CPU/call      CPU       Elapsed\n",
             m_Log);
  for (int index = 0; index < kTimerCount; ++index) {
    const a_timer_record& timer = m_Timers[index];
    if (!timer.inUse || timer.calls < 1) continue;
    const double cpu = timer.totalUser + timer.totalSystem;
    std::fprintf(m_Log, "!Timer %d :   %20s   %d      %.4f      %.4f      %.1f \n", index,
                 timer.name.c_str(), timer.calls, cpu / timer.calls, cpu, timer.totalWall);
  }
}
