#include "mrm_ManagerI.h"

mrm_ManagerI::mrm_ManagerI() {
  mrm_JobPhaseLabel::RegisterPrinter();
  OpenPhase(mrm_JobPhaseLabel(), kSpot);
}

mrm_ManagerI::~mrm_ManagerI() {
  for (omi_BtreeIterator<mrm_Label, mrm_LargeBlockPool*> it(m_Pools); !it.IsDone(); it.Next())
    delete it.CurrentValue();
  delete m_Schedule;
}

void mrm_ManagerI::BeginPhase(const mrm_Label& phase) {
  // Guard: with no schedule adopted there is nothing to walk.
  if (m_Schedule == nullptr || !m_Schedule->RunBeginPhase(phase)) return;
  const mrm_Array<mrm_PhaseNode*>& stack = m_Schedule->PhaseStack();
  const mrm_PhaseNode& opened = *stack.Last();
  for (int i = 0; i < opened.m_Pools.Count(); ++i)
    m_PoolLocations.Insert(opened.m_Pools[i].m_Label, mrm_IPair{stack.Count() - 1, i});
  OpenPhase(phase, kScheduled);
}

// A scheduled phase closes only as the innermost one open. Pools still active stay so, under
// a phase that is gone.
void mrm_ManagerI::EndPhase(const mrm_Label& phase) {
  const int opening = m_Phases.ConstFind(phase);
  if (opening == kNotOpen) return;
  if (opening == kScheduled) {
    const mrm_PhaseNode& closing = *m_Schedule->PhaseStack().Last();
    if (!m_Schedule->RunEndPhase(phase)) return;
    for (int i = 0; i < closing.m_Pools.Count(); ++i)
      m_PoolLocations.Remove(closing.m_Pools[i].m_Label);
  }
  m_Phases.Remove(phase);
}

void mrm_ManagerI::ResetSchedule() {
  if (m_Schedule != nullptr) m_Schedule->ResetSteps();
}

const mrm_PoolDecl* mrm_ManagerI::ScheduledPool(const mrm_Label& pool,
                                                const mrm_PhaseNode*& phase) const {
  const mrm_IPair where = m_PoolLocations.ConstFind(pool);
  if (where.phase == -1 || where.pool == -1) return nullptr;
  // Guard: a place recorded along an earlier schedule may lie outside the adopted one, and a
  // pool of a schedule never analysed has no selected alternative.
  const mrm_Array<mrm_PhaseNode*>& stack = m_Schedule->PhaseStack();
  if (where.phase >= stack.Count() || where.pool >= stack[where.phase]->m_Pools.Count())
    return nullptr;
  phase = stack[where.phase];
  const mrm_PoolDecl& declared = phase->m_Pools[where.pool];
  return declared.m_SelectedAlt >= 0 ? &declared : nullptr;
}

mrm_LargeBlockPool* mrm_ManagerI::StartPool(const mrm_Label& pool, const mrm_Label& phase,
                                            const mrm_Capacity& capacity, int alt) {
  if (!m_Phases.IsMember(phase)) return nullptr;
  mrm_LargeBlockPool* started = m_Pools.ConstFind(pool);
  if (started != nullptr && started->m_Active) return nullptr;
  if (started == nullptr) {
    started = new mrm_LargeBlockPool(&m_Blocks, pool);
    m_Pools.Insert(pool, started);
  }
  started->Start(phase, capacity, alt);
  return started;
}

mrm_LargeBlockPool* mrm_ManagerI::ActivePool(const mrm_Label& pool) const {
  mrm_LargeBlockPool* found = m_Pools.ConstFind(pool);
  return found != nullptr && found->m_Active ? found : nullptr;
}

// A pool whose phase has ended stays active.
void mrm_ManagerI::ShutdownPool(mrm_LargeBlockPool* pool) {
  if (pool == nullptr || !pool->m_Active || !m_Phases.IsMember(pool->m_PhaseLabel)) return;
  pool->m_Active = false;
}
