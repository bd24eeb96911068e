// The data of a schedule (behind the handle mrm_Schedule) and its analysis: the tree of phases
// with the pools each declares, the milestones, the peak per milestone, and the walk of the
// same tree while the job runs under mrm_Manager.
//
// The model of a job is strict: a phase's own pools live for the whole phase and its children
// run one after the other, so a phase needs its pools plus its largest child. Every wrong call
// is ignored in silence; only the run-time walk reports a refusal, by returning false.
#ifndef MRM_SCHEDULEI_H
#define MRM_SCHEDULEI_H

#include "mem_Alloc.h"
#include "mrm_Array.h"
#include "mrm_Capacity.h"
#include "mrm_Label.h"
#include "omi_Btree.h"

class aio_ostream;

// Pool label to alternative number.
using mrm_AltMap = omi_Btree<mrm_Label, int>;

// One pool as declared in one phase, with its alternatives in order, each at least as large as
// the one before. A small-block pool (kind 2) keeps its own figures beside the large-block
// capacity they convert to.
struct mrm_PoolDecl {
  enum Kind { kLargeBlock = 1, kSmallBlock = 2 };

  mrm_PoolDecl(const mrm_Label& label, int kind) : m_Label(label), m_Kind(kind) {}

  mrm_Label m_Label;
  int m_Kind;
  mrm_Array<mrm_Capacity> m_Alts;
  mrm_Array<mrm_SmallBlockCapacity> m_SmallAlts;
  int m_SelectedAlt = -1;  // set by the analysis
};

// One phase of the tree; children in order of first declaration.
struct mrm_PhaseNode : public mem_AllocationOperators {
  explicit mrm_PhaseNode(const mrm_Label& label) : m_Label(label) {}
  ~mrm_PhaseNode() {
    for (int i = 0; i < m_Children.Count(); ++i)
      delete m_Children[i];
  }
  mrm_PhaseNode(const mrm_PhaseNode&) = delete;
  mrm_PhaseNode& operator=(const mrm_PhaseNode&) = delete;

  mrm_Label m_Label;
  mrm_Array<mrm_PoolDecl> m_Pools;
  mrm_Array<mrm_PhaseNode*> m_Children;
  mrm_Capacity m_Exclusive;  // the phase's own pools
  mrm_Capacity m_Inclusive;  // its own pools and its largest child
};

// A number of blanks at the head of a report line; nothing when below 1.
struct mrm_Tab {
  int blanks;
  mrm_Tab operator+(mrm_Tab other) const { return {blanks + other.blanks}; }
};
aio_ostream& operator<<(aio_ostream& os, mrm_Tab tab);

class mrm_ScheduleI : public mem_AllocationOperators {
 public:
  // Only the job phase, open.
  mrm_ScheduleI();
  ~mrm_ScheduleI();
  mrm_ScheduleI(const mrm_ScheduleI&) = delete;
  mrm_ScheduleI& operator=(const mrm_ScheduleI&) = delete;

  // Declaring (see mrm_Schedule).
  void BeginPhase(const mrm_Label& phase);
  void EndPhase();
  void AddLargeBlockPool(const mrm_Label& pool, const mrm_Capacity& capacity, int alt);
  void AddPool(const mrm_Label& pool, const mrm_SmallBlockCapacity& capacity, int alt);
  void NameMilestone(int milestone, const char* tag);
  void DefMilestone(int milestone, const mrm_Label& pool, int alt);
  void DefHigherMilestone(int milestone, int source);

  // Analysis (see mrm_Schedule).
  void Analyze();
  void Finalize(int milestone);
  void XFinalize(int milestone);
  const mrm_Capacity& GetMilestoneCapacity(int milestone) const;
  void Print(aio_ostream& os) const;
  const char* GetMilestoneName(int milestone) const;

  void SetPrintUnits(double unit) { m_PrintUnitsInverse = 1.0 / unit; }
  double InPrintUnits(double value) const { return value * m_PrintUnitsInverse; }

  // The run-time walk over the declared tree. Steps are taken in the order of the calls,
  // whatever number their labels carry; false when the phase is not the next one declared.
  bool RunBeginPhase(const mrm_Label& phase);
  // False unless `phase` is the innermost open phase.
  bool RunEndPhase(const mrm_Label& phase);
  // Lets a finished schedule be walked again.
  void ResetSteps() { m_StepsRun = 0; }
  // The open phases, the job phase first.
  const mrm_Array<mrm_PhaseNode*>& PhaseStack() const { return m_PhaseStack; }

 private:
  bool IsMilestone(int milestone) const {
    return milestone >= 0 && milestone < m_MilestoneAlts.Count();
  }
  mrm_PhaseNode& Root() const { return *m_PhaseStack[0]; }
  mrm_PoolDecl* FindPoolDecl(const mrm_Label& pool, int alt, int kind);
  void AnalyzeAtMilestone(int milestone);
  static void Analyze1(mrm_PhaseNode& node, const mrm_AltMap& alts);
  static void AnalyzeExcl(mrm_PhaseNode& node, const mrm_AltMap& alts);
  // The step's selection at the highest milestone above `milestone` whose peak fits `limit`.
  void RiseWithinLimit(mrm_PhaseNode& step, int milestone, double limit);
  void BuildCriticalPath();
  void PrintMilestone(int milestone, aio_ostream& os) const;
  void PrintPhaseNode(const mrm_PhaseNode& node, aio_ostream& os, mrm_Tab tab) const;
  void PrintPool(const mrm_PoolDecl& pool, int alt, aio_ostream& os, mrm_Tab tab) const;

  bool m_Analyzed = false;
  bool m_Finalized = false;
  mrm_Array<mrm_PhaseNode*> m_PhaseStack;
  mrm_AltMap m_OpenPhases{0};
  mrm_AltMap m_OpenPools{0};
  mrm_Array<mrm_AltMap> m_MilestoneAlts;
  mrm_Array<const char*> m_MilestoneNames;  // the caller's texts, not copied
  mrm_Array<int> m_MilestoneSource;
  mrm_AltMap m_HighestAlt{-1};
  int m_LastMilestone = -1;
  mrm_Array<mrm_Capacity> m_MilestoneCapacity;
  mrm_Array<mrm_PhaseNode*> m_CriticalPath;
  int m_StepsRun = 0;
  double m_PrintUnitsInverse = 1.0;  // printed quantities are multiplied by it
};

#endif  // MRM_SCHEDULEI_H
