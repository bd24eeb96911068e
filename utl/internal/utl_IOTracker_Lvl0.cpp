#include "internal/utl_IOTracker_Lvl0.h"

#include <algorithm>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <type_traits>

#include "VRKBasUtlPlatform.h"
#include "thr_ThreadPool.h"
#include "utl_CommandLine.h"

namespace {

constexpr double kMegabytesPerByte = 9.5367431640625e-07;
// The tables grow by this many entries, and the id map to a multiple of it.
constexpr int kGrowth = 24;

// The value of an option of the command line, empty when it isn't given.
cow_String Option(const char* name) {
  return utl_CommandLine::Instance().ConstGetValue(name, cow_String());
}

int EnvironmentInt(const char* name, int absent) {
  const char* value = std::getenv(name);
  return value != nullptr ? std::atoi(value) : absent;
}

template <class T>
T* NewArray(int count) {
  return static_cast<T*>(mem_OperatorNewThrowBuiltin(sizeof(T) * static_cast<size_t>(count)));
}

void CopyName(char (&to)[1024], const char* name) {
  std::strncpy(to, name, sizeof to - 1);
  to[sizeof to - 1] = '\0';
}

// Writes rows at a fixed step until the tracker stops.
class utl_IOTracker_TimedOutTask : public VRKBasAtiThreadTask {
 public:
  utl_IOTracker_TimedOutTask(utl_IOTracker* tracker, unsigned pause)
      : m_Tracker(tracker), m_Pause(pause) {}

  void Run(int) override {
    while (!m_Tracker->IsStopping()) {
      VRKBasUtlsleep(m_Pause);
      m_Tracker->TimedMark();
    }
    std::fputs("Completed TimedOutTask\n", stderr);
    std::fflush(stderr);
    m_Tracker->SetTaskFinished();
  }

 private:
  utl_IOTracker* m_Tracker;
  unsigned m_Pause;
};

}  // namespace

// ---- The tables ----

utl_IOTrackerTable::~utl_IOTrackerTable() {
  for (int i = 0; i < m_Count; ++i) {
    if (m_Entries[i].individual != nullptr) std::fclose(m_Entries[i].individual);
  }
  mem_Free(m_Entries);
  mem_Free(m_Ids);
}

void utl_IOTrackerTable::GrowIds(int id) {
  const int capacity = (id / kGrowth + 1) * kGrowth;
  int* ids = NewArray<int>(capacity);
  if (m_IdCapacity > 0) std::memcpy(ids, m_Ids, sizeof *ids * static_cast<size_t>(m_IdCapacity));
  std::fill(ids + m_IdCapacity, ids + capacity, -1);
  mem_Free(m_Ids);
  m_Ids = ids;
  m_IdCapacity = capacity;
}

// The entries move by copying their bytes.
static_assert(std::is_trivially_copyable<utl_IOTrackerTable::Entry>::value, "");

void utl_IOTrackerTable::GrowEntries() {
  const int capacity = m_Capacity + kGrowth;
  Entry* entries = NewArray<Entry>(capacity);
  if (m_Count > 0) std::memcpy(entries, m_Entries, sizeof *entries * static_cast<size_t>(m_Count));
  mem_Free(m_Entries);
  m_Entries = entries;
  m_Capacity = capacity;
}

utl_IOTrackerTable::Entry* utl_IOTrackerTable::Register(const char* name, int id,
                                                        const cow_String& scratchDir, bool* added) {
  *added = false;
  // The id map's size must stay an int: the highest ids are refused as negative ones are.
  if (id < 0 || id > INT_MAX - kGrowth) return nullptr;
  if (id >= m_IdCapacity) GrowIds(id);
  char copy[1024];
  CopyName(copy, name);
  for (int i = 0; i < m_Count; ++i) {
    if (std::strcmp(m_Entries[i].name, copy) == 0) {
      m_Ids[id] = i;
      return &m_Entries[i];
    }
  }
  if (m_Count == m_Capacity) GrowEntries();
  Entry& entry = m_Entries[m_Count];
  std::memcpy(entry.name, copy, sizeof copy);
  entry.started = 0;
  entry.record = utl_IOFileRecord();
  // A name that begins with the scratch directory is scratch; with no scratch directory,
  // every name does. Both are intended.
  entry.record.location =
      std::strncmp(scratchDir.c_str(), copy, static_cast<size_t>(scratchDir.Length())) == 0 ? 0 : 1;
  entry.previous = entry.record;
  entry.individual = nullptr;
  entry.recordWords = 0;
  m_Ids[id] = m_Count++;
  *added = true;
  return &entry;
}

// ---- Life ----

utl_IOTracker_Lvl0::utl_IOTracker_Lvl0() {
  m_Individual = EnvironmentInt("LUN_IO_INDIVIDUAL", 0) > 0;
  m_OutDir = Option("outdir");
  m_ScratchDir = Option("tmpdir");
  m_JobName = Option("job");
  m_Clock.Start();
  if (EnvironmentInt("LUN_IO_TIMEPOINTS", 0) == 2) StartTimedTask();
}

// The step is LUN_IO_TIMEINTERVAL hundredths of a second, at least one. A pool that can't
// give a thread leaves the tracker without rows.
void utl_IOTracker_Lvl0::StartTimedTask() {
  m_MarksMode = false;
  m_Pause = static_cast<unsigned>(std::max(1, EnvironmentInt("LUN_IO_TIMEINTERVAL", 100))) * 10;
  utl_IOTracker_TimedOutTask* task = nullptr;
  try {
    thr_ThreadPool& pool = thr_ThreadPool::Instance();
    pool.AddThreads(1);
    task = new utl_IOTracker_TimedOutTask(this, m_Pause);
    m_TaskFinished.store(false, std::memory_order_relaxed);
    if (pool.RunTask(task, false, 0)) return;
  } catch (...) {
  }
  delete task;
  m_TaskFinished.store(true, std::memory_order_relaxed);
}

utl_IOTracker_Lvl0::~utl_IOTracker_Lvl0() {
  RequestStop();
  WriteSummary();
  while (!m_TaskFinished.load(std::memory_order_acquire))
    VRKBasUtlsleep(100);
  if (m_IncrementFile != nullptr) std::fclose(m_IncrementFile);
  if (m_TotalFile != nullptr) std::fclose(m_TotalFile);
}

bool utl_IOTracker_Lvl0::IsStopping() const {
  return m_StopRequested.load(std::memory_order_relaxed);
}

void utl_IOTracker_Lvl0::SetTaskFinished() {
  m_TaskFinished.store(true, std::memory_order_release);
}

void utl_IOTracker_Lvl0::RequestStop() {
  thr_Hold<thr_Mutex> hold(m_Lock);
  m_StopRequested.store(true, std::memory_order_relaxed);
}

void utl_IOTracker_Lvl0::SetSuffix(const char* text) {
  thr_Hold<thr_Mutex> hold(m_Lock);
  m_Suffix = text;
}

// ---- Registering and counting ----

void utl_IOTracker_Lvl0::RegisterFile(const char* name, int id) {
  thr_Hold<thr_Mutex> hold(m_Lock);
  bool added;
  m_Files.Register(name, id, m_ScratchDir, &added);
}

void utl_IOTracker_Lvl0::RegisterUnit(const char* name, int id, int recordWords) {
  thr_Hold<thr_Mutex> hold(m_Lock);
  bool added;
  utl_IOTrackerTable::Entry* entry = m_Units.Register(name, id, m_ScratchDir, &added);
  if (added) entry->recordWords = recordWords;
}

void utl_IOTracker_Lvl0::RegisterUnitName(const char* name, int id) {
  thr_Hold<thr_Mutex> hold(m_Lock);
  bool added;
  m_Units.Register(name, id, m_ScratchDir, &added);
}

void utl_IOTracker_Lvl0::Restart(utl_IOTrackerTable::Entry* entry) const {
  if (entry != nullptr) entry->started = m_Ticks.Now();
}

double utl_IOTracker_Lvl0::Lap(utl_IOTrackerTable::Entry& entry) const {
  const uint64_t started = entry.started;
  entry.started = 0;
  return started != 0 ? m_Ticks.Seconds(m_Ticks.Now() - started) : 0.0;
}

void utl_IOTracker_Lvl0::EndTransfer(utl_IOTrackerTable::Entry& entry, int64_t bytes,
                                     Direction direction) const {
  utl_IOFileRecord& record = entry.record;
  const double megabytes = static_cast<double>(bytes) * kMegabytesPerByte;
  const double seconds = Lap(entry);
  if (direction == kWrite) {
    ++record.writeCount;
    record.writeMegabytes += megabytes;
    record.writeTime += seconds;
  } else {
    ++record.readCount;
    record.readMegabytes += megabytes;
    record.readTime += seconds;
  }
}

void utl_IOTracker_Lvl0::BeginFile(int id) {
  thr_Hold<thr_Mutex> hold(m_Lock);
  Restart(m_Files.Find(id));
}

void utl_IOTracker_Lvl0::EndEvent(int id, int utl_IOFileRecord::*count,
                                  double utl_IOFileRecord::*seconds) {
  thr_Hold<thr_Mutex> hold(m_Lock);
  if (utl_IOTrackerTable::Entry* entry = m_Files.Find(id)) {
    ++(entry->record.*count);
    entry->record.*seconds += Lap(*entry);
  }
}

void utl_IOTracker_Lvl0::BeginEventA(int id) {
  BeginFile(id);
}

void utl_IOTracker_Lvl0::EndEventA(int id) {
  EndEvent(id, &utl_IOFileRecord::eventACount, &utl_IOFileRecord::eventATime);
}

void utl_IOTracker_Lvl0::CountEventA(int id) {
  thr_Hold<thr_Mutex> hold(m_Lock);
  if (utl_IOTrackerTable::Entry* entry = m_Units.Find(id)) ++entry->record.eventACount;
}

void utl_IOTracker_Lvl0::BeginEventB(int id) {
  BeginFile(id);
}

void utl_IOTracker_Lvl0::EndEventB(int id) {
  EndEvent(id, &utl_IOFileRecord::eventBCount, &utl_IOFileRecord::eventBTime);
}

void utl_IOTracker_Lvl0::BeginRead(int id) {
  BeginFile(id);
}

void utl_IOTracker_Lvl0::EndRead(int id, int64_t bytes) {
  thr_Hold<thr_Mutex> hold(m_Lock);
  if (utl_IOTrackerTable::Entry* entry = m_Files.Find(id)) EndTransfer(*entry, bytes, kRead);
}

void utl_IOTracker_Lvl0::BeginWrite(int id) {
  BeginFile(id);
}

void utl_IOTracker_Lvl0::EndWrite(int id, int64_t bytes) {
  thr_Hold<thr_Mutex> hold(m_Lock);
  if (utl_IOTrackerTable::Entry* entry = m_Files.Find(id)) EndTransfer(*entry, bytes, kWrite);
}

void utl_IOTracker_Lvl0::BeginUnit(int id) {
  thr_Hold<thr_Mutex> hold(m_Lock);
  Restart(m_Units.Find(id));
}

void utl_IOTracker_Lvl0::BeginUnitRecordRead(int id) {
  BeginUnit(id);
}

void utl_IOTracker_Lvl0::EndUnitRecordRead(int id) {
  thr_Hold<thr_Mutex> hold(m_Lock);
  if (utl_IOTrackerTable::Entry* entry = m_Units.Find(id))
    EndTransfer(*entry, int64_t{entry->recordWords} * 4, kRead);
}

void utl_IOTracker_Lvl0::BeginUnitRead(int id) {
  BeginUnit(id);
}

void utl_IOTracker_Lvl0::EndUnitRead(int id, int bytes) {
  thr_Hold<thr_Mutex> hold(m_Lock);
  if (utl_IOTrackerTable::Entry* entry = m_Units.Find(id)) EndTransfer(*entry, bytes, kRead);
}

void utl_IOTracker_Lvl0::BeginUnitRecordWrite(int id) {
  BeginUnit(id);
}

void utl_IOTracker_Lvl0::EndUnitRecordWrite(int id, int record) {
  thr_Hold<thr_Mutex> hold(m_Lock);
  if (utl_IOTrackerTable::Entry* entry = m_Units.Find(id)) {
    EndTransfer(*entry, int64_t{entry->recordWords} * 4, kWrite);
    entry->record.highestRecord = std::max<int64_t>(entry->record.highestRecord, record);
  }
}

void utl_IOTracker_Lvl0::BeginUnitWrite(int id) {
  BeginUnit(id);
}

void utl_IOTracker_Lvl0::EndUnitWrite(int id, int bytes) {
  thr_Hold<thr_Mutex> hold(m_Lock);
  if (utl_IOTrackerTable::Entry* entry = m_Units.Find(id)) EndTransfer(*entry, bytes, kWrite);
}

// ---- Rows ----

void utl_IOTracker_Lvl0::Mark(const char* text) {
  thr_Hold<thr_Mutex> hold(m_Lock);
  if (m_MarksMode) WriteRows(text != nullptr ? text : "");
}

void utl_IOTracker_Lvl0::TimedMark() {
  thr_Hold<thr_Mutex> hold(m_Lock);
  WriteRows(nullptr);
}

cow_String utl_IOTracker_Lvl0::ReportName(const char* kind) const {
  cow_String name;
  if (!m_JobName.IsEmpty()) {
    if (!m_OutDir.IsEmpty()) name = m_OutDir + "/";
    name += m_JobName + ".";
  }
  name += kind;
  if (!m_Suffix.IsEmpty()) name += "_" + m_Suffix;
  return name;
}

std::FILE* utl_IOTracker_Lvl0::OpenReport(const char* kind) const {
  return std::fopen(ReportName(kind).c_str(), "we");
}

void utl_IOTracker_Lvl0::WriteHeader(std::FILE* report) const {
  if (report == nullptr) return;
  std::fputs("IO Tracking Totals\n", report);
  std::fputs(m_MarksMode ? "Code Mark, Elapsed Time" : "Elapsed Time", report);
  std::fputs(
      ", Work Write Count, Work Write MB, Work Write Time"
      ", Work Read Count, Work Read MB, Work Read Time"
      ", Scratch Write Count, Scratch Write MB, Scratch Write Time"
      ", Scratch Read Count, Scratch Read MB, Scratch Read Time\n",
      report);
}

// Individual rows, the totals, and the records as they stand for the increments. The ioInc
// report keeps its header alone: no row goes there, as intended.
void utl_IOTracker_Lvl0::WriteRows(const char* text) {
  const double elapsed = m_Clock.GetElapsedTime();
  if (m_Individual) {
    for (int i = 0; i < m_Files.Count(); ++i)
      WriteIndividualRow(m_Files.At(i), text, elapsed);
  }
  if (!m_ReportsOpened) {
    m_ReportsOpened = true;
    m_IncrementFile = OpenReport("ioInc");
    WriteHeader(m_IncrementFile);
    m_TotalFile = OpenReport("ioTotal");
    WriteHeader(m_TotalFile);
  }
  WriteTotalRow(text, elapsed);
  for (utl_IOTrackerTable* table : {&m_Files, &m_Units}) {
    for (int i = 0; i < table->Count(); ++i)
      table->At(i).previous = table->At(i).record;
  }
}

namespace {

// A row's first item: the mark text and the time, or the time alone.
void WriteRowStart(std::FILE* report, const char* text, double elapsed) {
  if (text != nullptr) {
    std::fprintf(report, "%s, %f", text, elapsed);
  } else {
    std::fprintf(report, "%f", elapsed);
  }
}

void WriteCounts(std::FILE* report, int count, double megabytes, double seconds) {
  std::fprintf(report, ", %d, %f, %f", count, megabytes, seconds);
}

}  // namespace

bool utl_IOTracker_Lvl0::FlushIfDue(std::FILE* report, double elapsed) const {
  if (elapsed - m_LastFlush <= m_FlushInterval) return false;
  std::fflush(report);
  return true;
}

void utl_IOTracker_Lvl0::WriteTotalRow(const char* text, double elapsed) {
  if (m_TotalFile == nullptr) return;
  utl_IOFileRecord work, scratch;
  for (utl_IOTrackerTable* table : {&m_Files, &m_Units}) {
    for (int i = 0; i < table->Count(); ++i) {
      const utl_IOFileRecord& record = table->At(i).record;
      utl_IOFileRecord& sum = record.location == 0 ? scratch : work;
      sum.writeCount += record.writeCount;
      sum.writeMegabytes += record.writeMegabytes;
      sum.writeTime += record.writeTime;
      sum.readCount += record.readCount;
      sum.readMegabytes += record.readMegabytes;
      sum.readTime += record.readTime;
    }
  }
  WriteRowStart(m_TotalFile, text, elapsed);
  for (const utl_IOFileRecord* sum : {&work, &scratch}) {
    WriteCounts(m_TotalFile, sum->writeCount, sum->writeMegabytes, sum->writeTime);
    WriteCounts(m_TotalFile, sum->readCount, sum->readMegabytes, sum->readTime);
  }
  std::fputc('\n', m_TotalFile);
  if (FlushIfDue(m_TotalFile, elapsed)) m_LastFlush = elapsed;
}

// The report "<outdir>/<file name>_ioTotal", or "<file name>_ioTotal" without an outdir,
// with the suffix behind; the two lines on standard error are the system's own.
void utl_IOTracker_Lvl0::OpenIndividual(utl_IOTrackerTable::Entry& entry) const {
  std::fprintf(stderr, "OpenCIndivualOut  --  file path = %s\n", entry.name);
  const char* slash = std::strrchr(entry.name, '/');
  cow_String name;
  if (!m_OutDir.IsEmpty()) name = m_OutDir + "/";
  name += slash != nullptr ? slash + 1 : entry.name;
  name += "_ioTotal";
  if (!m_Suffix.IsEmpty()) name += "_" + m_Suffix;
  std::fprintf(stderr, "   outFileName = %s\n", name.c_str());
  entry.individual = std::fopen(name.c_str(), "we");
}

void utl_IOTracker_Lvl0::WriteIndividualRow(utl_IOTrackerTable::Entry& entry, const char* text,
                                            double elapsed) {
  if (entry.individual == nullptr) OpenIndividual(entry);
  if (entry.individual == nullptr) return;
  const utl_IOFileRecord& record = entry.record;
  WriteRowStart(entry.individual, text, elapsed);
  WriteCounts(entry.individual, record.writeCount, record.writeMegabytes, record.writeTime);
  WriteCounts(entry.individual, record.readCount, record.readMegabytes, record.readTime);
  std::fputc('\n', entry.individual);
  FlushIfDue(entry.individual, elapsed);
}

void utl_IOTracker_Lvl0::WriteSummary() {
  thr_Hold<thr_Mutex> hold(m_Lock);
  std::FILE* summary = OpenReport("ioFileSummary");
  if (summary == nullptr) return;
  std::fputs("IO Summary for All Files\n\n", summary);
  for (int location : {1, 0}) {
    std::fputs(location == 1 ? "WORK DIRECTORY FILES\n" : "\n\nSCRATCH DIRECTORY FILES\n", summary);
    for (utl_IOTrackerTable* table : {&m_Files, &m_Units}) {
      for (int i = 0; i < table->Count(); ++i) {
        const utl_IOTrackerTable::Entry& entry = table->At(i);
        if (entry.record.location != location) continue;
        std::fprintf(summary, "%s, %f, %f, %f, %f\n", entry.name, entry.record.writeMegabytes,
                     entry.record.writeTime, entry.record.readMegabytes, entry.record.readTime);
      }
    }
  }
  std::fputc('\n', summary);
  std::fclose(summary);
}
