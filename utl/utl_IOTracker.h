// Measures a run's file traffic: for each file, how many reads and writes, how many
// megabytes (of 1048576 bytes) and how much time. The client's i/o layers report each
// operation; the totals, split between files in the scratch directory (the `tmpdir` option)
// and all others (work files), go to report files at each code mark or at a fixed time step.
//
//   if (utl_IOTracker* tracker = utl_IOTracker_Container::Instance().GetTracker()) {
//     tracker->RegisterFile(path, id);      // once per file, before any operation on `id`
//     tracker->BeginWrite(id);
//     ... write ...
//     tracker->EndWrite(id, bytes);
//   }
//   utl_IOTracker_Mark("mesh written");     // a row in the reports
//
// The environment switches it on; otherwise the container holds no tracker and a client pays
// for one test:
//   LUN_IO_TRACK         a number of 1 or more turns tracking on.
//   LUN_IO_TIMEPOINTS    2: rows come from a pool thread at a fixed step instead of the marks.
//   LUN_IO_TIMEINTERVAL  that step in hundredths of a second (default 100).
//   LUN_IO_INDIVIDUAL    above 0: each file of the file table also gets a report of its own.
//
// Reports, named after the `job` option in the `outdir` option's directory ("<outdir>/<job>."
// or "<job>." in front of the name below; without `job`, the bare name in the working
// directory), with the text of SetSuffix behind a "_":
//   ioTotal        "IO Tracking Totals", the titles, and a row per mark: the mark text (in
//                  marks mode), the seconds since tracking began, and count, megabytes and
//                  seconds of work writes, work reads, scratch writes and scratch reads so far.
//   ioInc          the same two header lines and nothing else.
//   ioFileSummary  written when tracking ends: megabytes and seconds of each file's writes
//                  and reads, work files first.
// The first two appear at the first row; a run with no row writes only the summary. Rows
// are flushed at most every 10 seconds.
#ifndef UTL_IOTRACKER_H
#define UTL_IOTRACKER_H

#include <cstdint>

#include "VRKBasExport.h"
#include "mem_Alloc.h"
#include "thr_GlobalSingleton.h"

// What a client's i/o layer reports. A file is known by an id the client chooses, in one of
// two tables: the file table, whose transfers give their size in bytes, and the unit table,
// whose files may have a fixed record length (a transfer of one record). A name registered
// again, under another id or in the same table, shares the first registration's counts.
// Operations on an id that was never registered in their table do nothing. Events A and B
// are counted and timed for the client and appear in no report.
//
// All operations may be called from any thread; they are serialised by one lock. An End adds
// the time since the entry's last Begin, and none without one.
// Nothing raises, and a report that can't be written is left out.
class VRKLNU_EXPORT utl_IOTracker : public mem_AllocationOperators {
 public:
  virtual ~utl_IOTracker();

  // A row in the reports with the text, unless rows come at a time step.
  virtual void Mark(const char* text) = 0;
  // A row without text: what the time step writes.
  virtual void TimedMark() = 0;
  // Text that the reports' names get behind a "_"; only names not yet opened take it. Takes
  // no lock: set it before the first row from another thread.
  virtual void SetSuffix(const char* text) = 0;

  virtual void BeginEventA(int id) = 0;  // file table
  virtual void EndEventA(int id) = 0;    // file table
  virtual void CountEventA(int id) = 0;  // unit table: one event, no time
  virtual void BeginEventB(int id) = 0;  // file table
  virtual void EndEventB(int id) = 0;    // file table

  // Enters `name` in the file table under `id`.
  virtual void RegisterFile(const char* name, int id) = 0;
  // Enters `name` in the unit table under `id` with records of `recordWords` 4-byte words.
  virtual void RegisterUnit(const char* name, int id, int recordWords) = 0;
  // Enters `name` in the unit table under `id`, keeping any record length it has.
  virtual void RegisterUnitName(const char* name, int id) = 0;

  virtual void BeginRead(int id) = 0;
  virtual void EndRead(int id, int64_t bytes) = 0;
  virtual void BeginUnitRecordRead(int id) = 0;
  // One record read.
  virtual void EndUnitRecordRead(int id) = 0;
  virtual void BeginUnitRead(int id) = 0;
  virtual void EndUnitRead(int id, int bytes) = 0;
  virtual void BeginWrite(int id) = 0;
  virtual void EndWrite(int id, int64_t bytes) = 0;
  virtual void BeginUnitRecordWrite(int id) = 0;
  // One record written, at record number `record`; the file's highest record number is kept.
  virtual void EndUnitRecordWrite(int id, int record) = 0;
  virtual void BeginUnitWrite(int id) = 0;
  virtual void EndUnitWrite(int id, int bytes) = 0;

  // The time-step task's side of ending: it runs until IsStopping, then SetTaskFinished.
  virtual bool IsStopping() const = 0;
  virtual void SetTaskFinished() = 0;
  virtual void RequestStop() = 0;
};

class utl_IOTracker_Container;
extern template class VRKLNU_EXPORT thr_GlobalSingletonBase<utl_IOTracker_Container>;

// Holds the process's tracker, made from the environment at the container's first Instance
// (utl_File makes it when it creates a file); null when tracking is off. Owns the tracker,
// whose end writes the file summary; package utl's stop finalizes the container.
class VRKLNU_EXPORT utl_IOTracker_Container : public thr_GlobalSingleton<utl_IOTracker_Container> {
 public:
  utl_IOTracker* GetTracker() const { return m_Tracker; }

 private:
  friend class thr_GlobalSingletonBase<utl_IOTracker_Container>;
  utl_IOTracker_Container();
  ~utl_IOTracker_Container();

  utl_IOTracker* m_Tracker = nullptr;
};

// A row in the reports with `text`, if tracking is on.
extern "C" VRKLNU_EXPORT void utl_IOTracker_Mark(const char* text);

#endif  // UTL_IOTRACKER_H
