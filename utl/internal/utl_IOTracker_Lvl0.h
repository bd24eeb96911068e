// The i/o tracker that utl_IOTracker_Container makes when LUN_IO_TRACK asks for one: two
// tables of files, the rows of the reports, and the pool task that writes rows at a time
// step. See utl_IOTracker.h for what it reports.
#ifndef UTL_IOTRACKER_LVL0_H
#define UTL_IOTRACKER_LVL0_H

#include <atomic>
#include <cstdint>
#include <cstdio>

#include "cow_String.h"
#include "internal/utl_CycleClock.h"
#include "omi_Timer.h"
#include "thr_Mutex.h"
#include "utl_IOTracker.h"

// The counts of one file; times in seconds, sizes in megabytes of 1048576 bytes.
struct utl_IOFileRecord {
  int writeCount = 0;
  double writeMegabytes = 0, writeTime = 0;
  int readCount = 0;
  double readMegabytes = 0, readTime = 0;
  int eventBCount = 0;
  double eventBTime = 0;
  int eventACount = 0;
  double eventATime = 0;
  int location = 2;  // 0 scratch, 1 work, 2 not yet classified
  int64_t highestRecord = 0;
};

// Files by the client's ids. The id map and the entries grow by 24 at a time and keep their
// memory, so that an operation on a registered file allocates nothing.
class utl_IOTrackerTable {
 public:
  struct Entry {
    char name[1024];
    uint64_t started;  // the clock at the last Begin; 0 when none is pending
    utl_IOFileRecord record;
    utl_IOFileRecord previous;
    std::FILE* individual;  // the file table's own report, opened at its first row
    int recordWords;        // the unit table's record length
  };

  utl_IOTrackerTable() = default;
  utl_IOTrackerTable(const utl_IOTrackerTable&) = delete;
  utl_IOTrackerTable& operator=(const utl_IOTrackerTable&) = delete;
  // Closes the individual reports.
  ~utl_IOTrackerTable();

  // The entry of `id`; null for an id that was never registered, negative ones included.
  Entry* Find(int id) {
    return id >= 0 && id < m_IdCapacity && m_Ids[id] >= 0 ? &m_Entries[m_Ids[id]] : nullptr;
  }
  // Maps `id` to the entry of `name`, made and classified if the name is new (`*added` says
  // which): a name starting with `scratchDir` is scratch, any other is work. Null for a
  // negative id or one within 24 of INT_MAX.
  Entry* Register(const char* name, int id, const cow_String& scratchDir, bool* added);

  int Count() const { return m_Count; }
  Entry& At(int index) { return m_Entries[index]; }

 private:
  void GrowIds(int id);
  void GrowEntries();

  int m_IdCapacity = 0;
  int* m_Ids = nullptr;
  int m_Capacity = 0;
  int m_Count = 0;
  Entry* m_Entries = nullptr;
};

// Owns its tables and report streams. Its end writes the file summary and, with rows at a
// time step, waits for the task to finish (up to one step).
class utl_IOTracker_Lvl0 : public utl_IOTracker {
 public:
  // Reads LUN_IO_TIMEPOINTS, LUN_IO_TIMEINTERVAL, LUN_IO_INDIVIDUAL and the options `outdir`,
  // `tmpdir` and `job`; with time steps, adds a thread to the pool and hands it the task.
  utl_IOTracker_Lvl0();
  ~utl_IOTracker_Lvl0() override;

  void Mark(const char* text) override;
  void TimedMark() override;
  void SetSuffix(const char* text) override;
  void BeginEventA(int id) override;
  void EndEventA(int id) override;
  void CountEventA(int id) override;
  void BeginEventB(int id) override;
  void EndEventB(int id) override;
  void RegisterFile(const char* name, int id) override;
  void RegisterUnit(const char* name, int id, int recordWords) override;
  void RegisterUnitName(const char* name, int id) override;
  void BeginRead(int id) override;
  void EndRead(int id, int64_t bytes) override;
  void BeginUnitRecordRead(int id) override;
  void EndUnitRecordRead(int id) override;
  void BeginUnitRead(int id) override;
  void EndUnitRead(int id, int bytes) override;
  void BeginWrite(int id) override;
  void EndWrite(int id, int64_t bytes) override;
  void BeginUnitRecordWrite(int id) override;
  void EndUnitRecordWrite(int id, int record) override;
  void BeginUnitWrite(int id) override;
  void EndUnitWrite(int id, int bytes) override;
  bool IsStopping() const override;
  void SetTaskFinished() override;
  void RequestStop() override;

 private:
  enum Direction { kRead, kWrite };

  void StartTimedTask();
  // The report `kind` ("ioTotal", ...) named after the options and the suffix.
  cow_String ReportName(const char* kind) const;
  std::FILE* OpenReport(const char* kind) const;
  void WriteRows(const char* text);
  void WriteHeader(std::FILE* report) const;
  void WriteTotalRow(const char* text, double elapsed);
  void WriteIndividualRow(utl_IOTrackerTable::Entry& entry, const char* text, double elapsed);
  void OpenIndividual(utl_IOTrackerTable::Entry& entry) const;
  void WriteSummary();
  // Flushes `report` when the last flush is more than the interval ago; true if it did.
  bool FlushIfDue(std::FILE* report, double elapsed) const;
  // Starts the timer of a file of the file table, or of the unit table.
  void BeginFile(int id);
  void BeginUnit(int id);
  // Counts an event A or B of the file table that has ended, with its seconds.
  void EndEvent(int id, int utl_IOFileRecord::*count, double utl_IOFileRecord::*seconds);
  // Under the lock: the seconds since the entry's pending Begin (0 without one), which is
  // then no longer pending.
  double Lap(utl_IOTrackerTable::Entry& entry) const;
  void Restart(utl_IOTrackerTable::Entry* entry) const;
  // Under the lock: counts a transfer of `bytes` that has ended.
  void EndTransfer(utl_IOTrackerTable::Entry& entry, int64_t bytes, Direction direction) const;

  omi_Timer m_Clock;
  // Times the operations.
  utl_CycleClock m_Ticks;
  std::FILE* m_TotalFile = nullptr;
  double m_LastFlush = 0;
  std::FILE* m_IncrementFile = nullptr;
  bool m_ReportsOpened = false;
  double m_FlushInterval = 10.0;
  cow_String m_OutDir, m_ScratchDir, m_JobName, m_Suffix;
  utl_IOTrackerTable m_Files;
  utl_IOTrackerTable m_Units;
  bool m_MarksMode = true;
  bool m_Individual = false;
  // Read by the task without the lock.
  std::atomic<bool> m_StopRequested{false};
  // The task's last touch of the tracker: set with release, without the lock, so that the end
  // may free everything once it reads it.
  std::atomic<bool> m_TaskFinished{true};
  unsigned m_Pause = 1000;
  thr_Mutex m_Lock;
};

#endif  // UTL_IOTRACKER_LVL0_H
