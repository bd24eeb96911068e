// The memory resource manager of a job: it adopts the finalized schedule, walks its phases
// with the job, keeps every pool and the table of all memory blocks, and holds the print
// table of the label kinds. One per process, built at the first Instance() and destroyed by
// the package's last stop (VRKLnuMrm_finalize).
//
//   mrm_Manager& manager = mrm_Manager::Instance();
//   manager.Adopt(plan);                          // plan: an analysed, finalized mrm_Schedule
//   manager.BeginPhase(mrm_StepPhaseLabel(1));
//   ... mrm_LargeBlockPoolFactory::Startup(...), use, Shutdown ...
//   manager.EndPhase(mrm_StepPhaseLabel(1));
//   mrm_Consumption used = manager.ConstGetJobConsumption();
//
// The manager accounts and does not enforce: nothing is compared with the plan, and wrong
// calls are ignored. The job phase is open from the start, outside the schedule.
// Threads: nothing is locked; the manager belongs to the thread that runs the job, and the
// first Instance() must come from start-up code.
#ifndef MRM_MANAGER_H
#define MRM_MANAGER_H

#include "VRKBasExport.h"
#include "mrm_Capacity.h"
#include "mrm_Label.h"
#include "mrm_Schedule.h"
#include "omi_Singleton.h"

class mrm_Manager;
class mrm_ManagerI;
extern template class VRKLNU_EXPORT omi_SingletonBase<mrm_Manager>;

class VRKLNU_EXPORT mrm_Manager : public omi_Singleton<mrm_Manager> {
 public:
  // Opens the next phase of the adopted schedule: a step directly under the job (steps are
  // taken in order, whatever their numbers), or a child of the innermost open phase. Its
  // pools become reachable through the factories' Startup. Ignored for any other label, or
  // with no schedule adopted.
  void BeginPhase(const mrm_Label& phase);
  // Opens a phase outside the schedule, for pools started with SpotStartup.
  void SpotBeginPhase(const mrm_Label& phase);
  // Closes an open phase; a scheduled one only when it is the innermost. Its pools that are
  // still active are not shut down.
  void EndPhase(const mrm_Label& phase);
  // Takes the plan over from the handle, which no longer deletes it. A plan adopted before is
  // not deleted: adopt once per job.
  void Adopt(mrm_Schedule& schedule);
  // The job's figures: the sum over all pools.
  const mrm_Consumption ConstGetJobConsumption() const;

  // The print table of the label kinds, keys 0 to 30; other keys are ignored (null).
  void RegisterLabelPrinter(const short& key, mrm_LabelPrinter const& printer);
  mrm_LabelPrinter GetPrinterPtr(const short& key) const;

  // For tests: starts again with no pools, blocks, phases or schedule (the print table stays).
  void TestReboot();
  // For tests: lets the adopted schedule's steps be walked again from the first.
  void TestResetSchedule();

 private:
  friend class omi_SingletonBase<mrm_Manager>;
  friend class mrm_LargeBlockPoolFactory;
  friend class mrm_PoolFactory;

  static constexpr int kPrinterSlots = 31;

  mrm_Manager();
  ~mrm_Manager();

  static mrm_ManagerI& Impl() { return *Instance().m_Impl; }

  mrm_LabelPrinter m_Printers[kPrinterSlots] = {};
  mrm_ManagerI* m_Impl = nullptr;
};

#endif  // MRM_MANAGER_H
