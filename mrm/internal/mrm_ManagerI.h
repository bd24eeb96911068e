// The state behind mrm_Manager: the open phases, every large-block pool ever started, the
// table of all memory blocks, the adopted schedule, and where each pool of the open scheduled
// phases is declared.
#ifndef MRM_MANAGERI_H
#define MRM_MANAGERI_H

#include "mem_Alloc.h"
#include "mrm_BlockTable.h"
#include "mrm_Capacity.h"
#include "mrm_Label.h"
#include "mrm_LargeBlockPool.h"
#include "mrm_ScheduleI.h"
#include "omi_Btree.h"

// Where a pool is declared: an index into the schedule's stack of open phases and an index
// into that phase's pools.
struct mrm_IPair {
  int phase;
  int pool;
};

class mrm_ManagerI : public mem_AllocationOperators {
 public:
  // Registers the job phase's printer and opens the job phase outside the schedule, so that
  // pools can be started under it from the start.
  mrm_ManagerI();
  // Deletes the pools and the schedule. Memory that blocks still hold is not freed.
  ~mrm_ManagerI();
  mrm_ManagerI(const mrm_ManagerI&) = delete;
  mrm_ManagerI& operator=(const mrm_ManagerI&) = delete;

  // See mrm_Manager.
  void BeginPhase(const mrm_Label& phase);
  void SpotBeginPhase(const mrm_Label& phase) { OpenPhase(phase, kSpot); }
  void EndPhase(const mrm_Label& phase);
  void Adopt(mrm_ScheduleI* schedule) { m_Schedule = schedule; }
  void ResetSchedule();
  const mrm_Consumption& JobConsumption() const { return m_Blocks.m_Consumption; }

  // The declaration of a pool of the open scheduled phases, with its phase; null when it is
  // not declared there or has no selected alternative.
  const mrm_PoolDecl* ScheduledPool(const mrm_Label& pool, const mrm_PhaseNode*& phase) const;
  // Starts a pool under an open phase, restarting an inactive one with its figures kept;
  // null when the phase is not open or the pool is active.
  mrm_LargeBlockPool* StartPool(const mrm_Label& pool, const mrm_Label& phase,
                                const mrm_Capacity& capacity, int alt);
  mrm_LargeBlockPool* ActivePool(const mrm_Label& pool) const;
  void ShutdownPool(mrm_LargeBlockPool* pool);

 private:
  // How a phase was opened: by BeginPhase along the schedule, or by SpotBeginPhase.
  enum Opening { kNotOpen = -1, kSpot = 0, kScheduled = 1 };

  // Opens the phase unless it is open.
  void OpenPhase(const mrm_Label& phase, Opening opening) { m_Phases.Insert(phase, opening); }

  omi_Btree<mrm_Label, int> m_Phases{kNotOpen};  // the open phases, each with its Opening
  omi_Btree<mrm_Label, mrm_LargeBlockPool*> m_Pools{nullptr};
  mrm_BlockTable m_Blocks;
  mrm_ScheduleI* m_Schedule = nullptr;
  omi_Btree<mrm_Label, mrm_IPair> m_PoolLocations{mrm_IPair{-1, -1}};
};

#endif  // MRM_MANAGERI_H
