// A job's memory plan: the phases it passes through, how they nest, the pools each phase
// needs, and for each pool its size under several alternatives. A milestone is one consistent
// choice of alternatives; the analysis gives the job's peak at each, the job picks the richest
// that fits the machine, and mrm_Manager then runs the job against the plan.
//
//   mrm_Schedule plan;
//   plan.NameMilestone(0, "small"); plan.NameMilestone(1, "large");
//   plan.DefMilestone(1, matrix, 1);                  // before alternative 1 is declared
//   plan.BeginPhase(mrm_StepPhaseLabel(1));            // steps only, directly under the job
//   plan.AddLargeBlockPool(matrix, mrm_Capacity().SetLoHi(0, 8e6), 0);
//   plan.AddLargeBlockPool(matrix, mrm_Capacity().SetLoHi(0, 6e7), 1);
//   plan.EndPhase();
//   plan.Analyze();
//   int m = plan.GetMilestoneCapacity(1).hi <= budget ? 1 : 0;
//   plan.Finalize(m);
//   mrm_Manager::Instance().Adopt(plan);
//
// The order of calls: milestones and their definitions of alternatives above 0 first, then
// the phases and pools, each BeginPhase matched by EndPhase, then Analyze, then Finalize or
// XFinalize, then mrm_Manager::Adopt. Every wrong call is ignored in silence: nothing here
// throws or reports. The model: a phase's own pools live for the whole phase, and its
// children run one after the other, so a phase needs its pools plus its largest child.
// Threads: a schedule belongs to the one thread that plans and runs the job.
#ifndef MRM_SCHEDULE_H
#define MRM_SCHEDULE_H

#include "VRKBasExport.h"
#include "mem_Alloc.h"
#include "mrm_Capacity.h"
#include "mrm_Label.h"

class aio_ostream;
class mrm_ScheduleI;

class VRKLNU_EXPORT mrm_Schedule : public mem_AllocationOperators {
 public:
  // Only the job phase, open.
  mrm_Schedule();
  // Deletes the plan unless mrm_Manager has adopted it. An adopted plan belongs to the manager:
  // the handle reaches it only as long as the manager keeps it.
  ~mrm_Schedule();
  mrm_Schedule(const mrm_Schedule&) = delete;
  mrm_Schedule& operator=(const mrm_Schedule&) = delete;

  // Declares a phase under the innermost open one and opens it. Ignored: a phase already
  // open; directly under the job, any label but a step (the same step label twice gives two
  // steps); elsewhere a label the parent already has, which opens nothing, so the matching
  // EndPhase closes the parent early.
  void BeginPhase(const mrm_Label& phase);
  // Closes the innermost open phase; nothing when only the job is open.
  void EndPhase();
  // Alternative `alt` of a pool of the innermost phase. Alternative 0 declares the pool;
  // each further one must follow the last without a gap, be at least as large (`hi`), and be
  // named by a milestone already. Otherwise the call is ignored.
  void AddLargeBlockPool(const mrm_Label& pool, const mrm_Capacity& capacity, int alt);
  // The same for a small-block pool, compared on `outToClientHi` and planned at the
  // large-block capacity it converts to. Ignored on a label declared here as a large-block
  // pool, and the other way round.
  void AddPool(const mrm_Label& pool, const mrm_SmallBlockCapacity& capacity, int alt);
  // Appends a milestone; its number is its position, whatever number is given. The tag is
  // not copied: the caller keeps it alive.
  void NameMilestone(int milestone, const char* tag);
  // Sets which alternative of `pool` the latest-named milestone takes (only that one; the
  // last definition wins).
  void DefMilestone(int milestone, const mrm_Label& pool, int alt);
  // Copies into `milestone` the definitions of `source` that it doesn't define itself, and
  // records the source, which should have a lower number (see Finalize).
  void DefHigherMilestone(int milestone, int source);

  // The peak of the job at every milestone, in order. A second call appends a second set of
  // peaks that GetMilestoneCapacity does not give.
  void Analyze();
  // The peak at `milestone` (`hi`), after Analyze; a capacity of 0 otherwise.
  const mrm_Capacity& GetMilestoneCapacity(int milestone) const;
  // Fixes the plan on an analysed milestone, letting each step rise to the highest later
  // milestone at which it still fits under the peak of `milestone` (a milestone copied from
  // another only once the step has reached that one). The peak stays the milestone's.
  void Finalize(int milestone);
  // Fixes the plan exactly on `milestone`; needs no Analyze.
  void XFinalize(int milestone);
  // The plan as a report: milestones, the critical path, and the phase tree.
  void Print(aio_ostream& os) const;
  // The tag of a milestone; null for a number that names none.
  const char* GetMilestoneName(int milestone) const;
  // Printed quantities are divided by `unit` (1 by default; 1048576 prints MiB).
  void SetPrintUnits(double unit);
  double InPrintUnits(double value) const;

 private:
  friend class mrm_Manager;

  mrm_ScheduleI* m_Impl;
  bool m_Owned = true;
};

#endif  // MRM_SCHEDULE_H
