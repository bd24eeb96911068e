#include "mrm_ScheduleI.h"

#include <algorithm>

#include "aio_ofstream.h"
#include "aio_ostream.h"

namespace {

constexpr mrm_Tab T2{2};
constexpr mrm_Tab T4{4};

// What GetMilestoneCapacity gives for a milestone with no analysis.
constexpr mrm_Capacity kNoCapacity;

mrm_PhaseNode* FindChild(const mrm_PhaseNode& parent, const mrm_Label& label) {
  for (int i = 0; i < parent.m_Children.Count(); ++i) {
    if (parent.m_Children[i]->m_Label == label) return parent.m_Children[i];
  }
  return nullptr;
}

// Sets the key's value, replacing one that is there.
void Replace(mrm_AltMap& map, const mrm_Label& key, int value) {
  map.Remove(key);
  map.Insert(key, value);
}

}  // namespace

aio_ostream& operator<<(aio_ostream& os, mrm_Tab tab) {
  for (int i = 0; i < tab.blanks; ++i)
    os.put(' ');
  return os;
}

mrm_ScheduleI::mrm_ScheduleI() {
  m_PhaseStack.Append(nullptr);
  m_PhaseStack[0] = new mrm_PhaseNode(mrm_JobPhaseLabel());
}

mrm_ScheduleI::~mrm_ScheduleI() {
  delete &Root();
}

// ---- Declaring ----

void mrm_ScheduleI::BeginPhase(const mrm_Label& phase) {
  if (m_OpenPhases.IsMember(phase)) return;
  mrm_PhaseNode& top = *m_PhaseStack.Last();
  if (&top == &Root()) {
    if (phase.ConstGetTypeKey() != mrm_StepPhaseLabel::TypeKey()) return;
  } else if (FindChild(top, phase) != nullptr) {
    // Nothing is opened, so the caller's EndPhase closes `top` early. Intended.
    return;
  }
  top.m_Children.Append(nullptr);
  mrm_PhaseNode* node = top.m_Children.Last() = new mrm_PhaseNode(phase);
  m_PhaseStack.Append(node);
  m_OpenPhases.Insert(phase, 1);
}

void mrm_ScheduleI::EndPhase() {
  if (m_PhaseStack.Count() == 1) return;
  const mrm_PhaseNode& top = *m_PhaseStack.Pop();
  for (int i = 0; i < top.m_Pools.Count(); ++i)
    m_OpenPools.Remove(top.m_Pools[i].m_Label);
  m_OpenPhases.Remove(top.m_Label);
}

// The declaration that alternative `alt` of the pool extends, created in the innermost phase
// for alternative 0; null when the call is to be ignored. Alternatives come strictly in order,
// and one above 0 only once a milestone names it.
mrm_PoolDecl* mrm_ScheduleI::FindPoolDecl(const mrm_Label& pool, int alt, int kind) {
  if (alt != 0 && alt > m_HighestAlt.ConstFind(pool)) return nullptr;
  mrm_PhaseNode& top = *m_PhaseStack.Last();
  if (m_OpenPools.IsMember(pool)) {
    for (int i = 0; i < top.m_Pools.Count(); ++i) {
      mrm_PoolDecl& declared = top.m_Pools[i];
      if (declared.m_Label != pool) continue;
      return declared.m_Kind == kind && alt == declared.m_Alts.Count() ? &declared : nullptr;
    }
  }
  if (alt != 0) return nullptr;
  // A pool open in an enclosing phase may be declared again here.
  m_OpenPools.Insert(pool, 1);
  top.m_Pools.Append(mrm_PoolDecl(pool, kind));
  return &top.m_Pools.Last();
}

void mrm_ScheduleI::AddLargeBlockPool(const mrm_Label& pool, const mrm_Capacity& capacity,
                                      int alt) {
  mrm_PoolDecl* declared = FindPoolDecl(pool, alt, mrm_PoolDecl::kLargeBlock);
  if (declared == nullptr || (alt != 0 && capacity.hi < declared->m_Alts[alt - 1].hi)) return;
  declared->m_Alts.Append(capacity);
}

void mrm_ScheduleI::AddPool(const mrm_Label& pool, const mrm_SmallBlockCapacity& capacity,
                            int alt) {
  mrm_PoolDecl* declared = FindPoolDecl(pool, alt, mrm_PoolDecl::kSmallBlock);
  if (declared == nullptr ||
      (alt != 0 && capacity.outToClientHi < declared->m_SmallAlts[alt - 1].outToClientHi))
    return;
  declared->m_SmallAlts.Append(capacity);
  declared->m_Alts.Append(capacity.LargeBlockCapacity());
}

// A milestone's number is its position; the number given is not used.
void mrm_ScheduleI::NameMilestone(int, const char* tag) {
  m_MilestoneNames.Append(tag);
  m_MilestoneSource.Append(-1);
  m_MilestoneAlts.Append(mrm_AltMap(-1));
}

void mrm_ScheduleI::DefMilestone(int milestone, const mrm_Label& pool, int alt) {
  // Only the latest can be defined. Guard: with none named, -1 would pass that test and
  // write before the first milestone.
  if (!IsMilestone(milestone) || milestone != m_MilestoneAlts.Count() - 1) return;
  const int highest = m_HighestAlt.ConstFind(pool);
  if (highest == -1) {
    m_HighestAlt.Insert(pool, alt);
  } else if (highest < alt) {
    Replace(m_HighestAlt, pool, alt);
  }
  Replace(m_MilestoneAlts[milestone], pool, alt);
}

void mrm_ScheduleI::DefHigherMilestone(int milestone, int source) {
  aio_cerr.flush();  // a stray flush, kept
  // Guard: both must be named milestones; reading others would leave the arrays.
  if (!IsMilestone(milestone) || !IsMilestone(source)) return;
  mrm_AltMap& alts = m_MilestoneAlts[milestone];
  // Pools defined on `milestone` already keep their alternatives: Insert leaves them.
  for (omi_BtreeIterator<mrm_Label, int> it(m_MilestoneAlts[source]); !it.IsDone(); it.Next())
    alts.Insert(it.CurrentKey(), it.CurrentValue());
  m_MilestoneSource[milestone] = source;
}

// ---- The run-time walk ----

bool mrm_ScheduleI::RunBeginPhase(const mrm_Label& phase) {
  if (m_OpenPhases.IsMember(phase)) return false;
  mrm_PhaseNode& top = *m_PhaseStack.Last();
  mrm_PhaseNode* node;
  if (&top == &Root()) {
    if (phase.ConstGetTypeKey() != mrm_StepPhaseLabel::TypeKey()) return false;
    // Guard: a step past the last one declared is refused rather than read past the array.
    if (m_StepsRun >= top.m_Children.Count()) return false;
    node = top.m_Children[m_StepsRun++];
  } else {
    node = FindChild(top, phase);
    if (node == nullptr) return false;
  }
  m_PhaseStack.Append(node);
  return true;
}

bool mrm_ScheduleI::RunEndPhase(const mrm_Label& phase) {
  // Guard: the job phase is never closed, so that the stack is never read empty.
  if (m_PhaseStack.Count() == 1 || phase != m_PhaseStack.Last()->m_Label) return false;
  m_PhaseStack.Pop();
  return true;
}

// ---- Analysis ----

// The phase's own pools at the milestone whose alternatives are `alts`. A pool with one
// alternative never consults the map; a milestone asking for more than a pool has gets its
// last one, and a pool it doesn't name (-1) gets alternative 0.
void mrm_ScheduleI::AnalyzeExcl(mrm_PhaseNode& node, const mrm_AltMap& alts) {
  node.m_Exclusive.lo = node.m_Exclusive.hi = 0;
  for (int i = 0; i < node.m_Pools.Count(); ++i) {
    mrm_PoolDecl& pool = node.m_Pools[i];
    const int count = pool.m_Alts.Count();
    // Guard: clamping also keeps any other negative number inside the array.
    const int alt = count > 1 ? std::clamp(alts.ConstFind(pool.m_Label), 0, count - 1) : 0;
    node.m_Exclusive.hi += pool.m_Alts[alt].hi;
    pool.m_SelectedAlt = alt;
  }
}

// inclusive = exclusive + the largest inclusive of the children, which run one at a time.
void mrm_ScheduleI::Analyze1(mrm_PhaseNode& node, const mrm_AltMap& alts) {
  AnalyzeExcl(node, alts);
  node.m_Inclusive.lo = node.m_Inclusive.hi = 0;
  for (int i = 0; i < node.m_Children.Count(); ++i) {
    mrm_PhaseNode& child = *node.m_Children[i];
    Analyze1(child, alts);
    node.m_Inclusive.hi = std::max(node.m_Inclusive.hi, child.m_Inclusive.hi);
  }
  node.m_Inclusive.hi += node.m_Exclusive.hi;
}

void mrm_ScheduleI::AnalyzeAtMilestone(int milestone) {
  Analyze1(Root(), m_MilestoneAlts[milestone]);
  m_Analyzed = true;
  m_LastMilestone = milestone;
}

// Appends each milestone's peak. A second call appends a second set behind the first, which
// GetMilestoneCapacity goes on giving.
void mrm_ScheduleI::Analyze() {
  for (int milestone = 0; milestone < m_MilestoneAlts.Count(); ++milestone) {
    AnalyzeAtMilestone(milestone);
    m_MilestoneCapacity.Append(Root().m_Inclusive);
  }
}

const mrm_Capacity& mrm_ScheduleI::GetMilestoneCapacity(int milestone) const {
  // Guard: a milestone with no analysis has nothing to give but a capacity of 0.
  if (milestone < 0 || milestone >= m_MilestoneCapacity.Count()) return kNoCapacity;
  return m_MilestoneCapacity[milestone];
}

// The job's own pools stay at `milestone`; each step then rises to the highest later
// milestone at which it still fits in the room that the largest step leaves, so that the peak
// stays the milestone's own.
void mrm_ScheduleI::Finalize(int milestone) {
  // Guard: only an analysed milestone has a peak to finalize on.
  if (!IsMilestone(milestone) || milestone >= m_MilestoneCapacity.Count()) return;
  mrm_PhaseNode& root = Root();
  AnalyzeExcl(root, m_MilestoneAlts[milestone]);
  const double limit = m_MilestoneCapacity[milestone].hi - root.m_Exclusive.hi;
  root.m_Inclusive.lo = root.m_Inclusive.hi = 0;
  for (int i = 0; i < root.m_Children.Count(); ++i) {
    mrm_PhaseNode& step = *root.m_Children[i];
    RiseWithinLimit(step, milestone, limit);
    root.m_Inclusive.hi = std::max(root.m_Inclusive.hi, step.m_Inclusive.hi);
  }
  root.m_Inclusive.hi += root.m_Exclusive.hi;
  BuildCriticalPath();
  m_LastMilestone = milestone;
  m_Finalized = true;
}

// Every later milestone is tried, not only up to the first that fails: a later one may fit
// again. A milestone copied from another is open only once the step has reached that one.
void mrm_ScheduleI::RiseWithinLimit(mrm_PhaseNode& step, int milestone, double limit) {
  int best = milestone;
  int lastTried = -1;
  for (int k = milestone + 1; k < m_MilestoneAlts.Count(); ++k) {
    const int source = m_MilestoneSource[k];
    if (source != -1 && source > best) continue;
    Analyze1(step, m_MilestoneAlts[k]);
    lastTried = k;
    if (!(step.m_Inclusive.hi > limit)) best = k;
  }
  // Each analysis overwrote the selection: the winner must be the last one analysed.
  if (best != lastTried) Analyze1(step, m_MilestoneAlts[best]);
}

void mrm_ScheduleI::XFinalize(int milestone) {
  if (!IsMilestone(milestone)) return;  // guard: no such milestone to analyse
  AnalyzeAtMilestone(milestone);
  BuildCriticalPath();
  m_LastMilestone = milestone;
  m_Finalized = true;
}

// From the job phase down, the child with the largest inclusive amount, the earlier on a tie.
// A second finalizing appends a second path behind the first.
void mrm_ScheduleI::BuildCriticalPath() {
  m_CriticalPath.Append(&Root());
  while (m_CriticalPath.Last()->m_Children.Count() > 0) {
    const mrm_Array<mrm_PhaseNode*>& children = m_CriticalPath.Last()->m_Children;
    mrm_PhaseNode* best = children[0];
    double maximum = 0;
    for (int i = 0; i < children.Count(); ++i) {
      if (children[i]->m_Inclusive.hi > maximum) {
        best = children[i];
        maximum = best->m_Inclusive.hi;
      }
    }
    m_CriticalPath.Append(best);
  }
}

// ---- The report ----

const char* mrm_ScheduleI::GetMilestoneName(int milestone) const {
  return IsMilestone(milestone) ? m_MilestoneNames[milestone] : nullptr;  // guard
}

void mrm_ScheduleI::Print(aio_ostream& os) const {
  os << "\n\nmrm_Schedule --> Begin print\n\n";
  if (m_Analyzed) {
    if (m_Finalized) {
      os << T2 << "Has been Finalized ";
    } else {
      os << "Has been analyzed, last ";
    }
    os << T2 << "at Milestone Number " << m_LastMilestone << ",  "
       << GetMilestoneName(m_LastMilestone) << "\n\n";
  } else {
    os << T2 << "Not analyzed\n";
  }
  os << T2 << "Milestone specification: \n";
  for (int milestone = 0; milestone < m_MilestoneAlts.Count(); ++milestone)
    PrintMilestone(milestone, os);
  os << aio_endl;
  if (m_Analyzed) {
    os << T2 << "The critical phase path is:\n";
    for (int i = 0; i < m_CriticalPath.Count(); ++i) {
      const mrm_PhaseNode& node = *m_CriticalPath[i];
      os << T2 << "  Phase: " << node.m_Label
         << "    Inclusive=" << InPrintUnits(node.m_Inclusive.hi)
         << "    Exclusive =" << InPrintUnits(node.m_Exclusive.hi) << aio_endl;
    }
    os << "\n";
  }
  os << T2 << "The complete schedule follows\n";
  if (m_Analyzed) {
    os << "  Note: the alts are resolved (has been analyzed/finalized) and only selected alts "
          "are shown\n";
  }
  os << T2 << "Phase Inclusion is indicated by indentation\n\n";
  PrintPhaseNode(Root(), os, T4);
  os << "mrm_Schedule --> End print\n\n";
}

void mrm_ScheduleI::PrintMilestone(int milestone, aio_ostream& os) const {
  os << aio_endl << T4 << "Milestone Number " << milestone
     << "  Tag=" << m_MilestoneNames[milestone];
  // Guard: a schedule analysed by XFinalize alone has no peaks to print.
  if (m_Analyzed && milestone < m_MilestoneCapacity.Count())
    os << "  Memory=" << InPrintUnits(m_MilestoneCapacity[milestone].hi);
  os << aio_endl;
  if (m_MilestoneSource[milestone] != -1)
    os << T4 << "    (Copied from milestone " << m_MilestoneSource[milestone] << "  )\n";
  for (omi_BtreeIterator<mrm_Label, int> it(m_MilestoneAlts[milestone]); !it.IsDone(); it.Next())
    os << T4 << "   " << it.CurrentKey() << "--> alt " << it.CurrentValue() << aio_endl;
  os << aio_endl;
}

// Once analysed, only the selected alternative of each pool is shown.
void mrm_ScheduleI::PrintPhaseNode(const mrm_PhaseNode& node, aio_ostream& os, mrm_Tab tab) const {
  os << tab << "Phase: " << node.m_Label;
  if (m_Analyzed) {
    os << "        Inclusive=" << InPrintUnits(node.m_Inclusive.hi)
       << "  Exclusive =" << InPrintUnits(node.m_Exclusive.hi);
  }
  os << aio_endl;
  for (int i = 0; i < node.m_Pools.Count(); ++i) {
    const mrm_PoolDecl& pool = node.m_Pools[i];
    for (int alt = 0; alt < pool.m_Alts.Count(); ++alt) {
      if (!m_Analyzed || alt == pool.m_SelectedAlt) PrintPool(pool, alt, os, tab);
    }
  }
  for (int i = 0; i < node.m_Children.Count(); ++i)
    PrintPhaseNode(*node.m_Children[i], os, tab + T4);
}

// The overhead factor is printed as the fraction given, not scaled to print units.
void mrm_ScheduleI::PrintPool(const mrm_PoolDecl& pool, int alt, aio_ostream& os,
                              mrm_Tab tab) const {
  const mrm_Capacity& capacity = pool.m_Alts[alt];
  os << tab << "        " << pool.m_Label << "   Lo=" << InPrintUnits(capacity.lo)
     << "   Hi=" << InPrintUnits(capacity.hi);
  if (alt != 0) os << "   Alt=" << alt;
  os << aio_endl;
  if (pool.m_Kind != mrm_PoolDecl::kSmallBlock) return;
  const mrm_SmallBlockCapacity& small = pool.m_SmallAlts[alt];
  os << tab << "         on small block pool:  "
     << "outToClientHi=" << InPrintUnits(small.outToClientHi)
     << "   outToClientLo=" << InPrintUnits(small.outToClientLo)
     << "   overheadFactor=" << small.overheadFactor - 1.0
     << "   overheadMin=" << InPrintUnits(small.overheadMin) << aio_endl;
}
