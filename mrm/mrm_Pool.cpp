#include "mrm_Pool.h"

#include "internal/mrm_ManagerI.h"
#include "mrm_Manager.h"

void mrm_Pool::RaiseCharge(int rounded) {
  m_Provider->Expand(mrm_TruncateToInt(rounded - m_Provider->m_Consumption.pinnedBytes), m_BlockId);
}

void mrm_Pool::Restart(const mrm_SmallBlockCapacity& capacity) {
  m_Capacity = capacity;
  m_Consumption = mrm_SmallBlockConsumption();
  m_BlockId = mrm_NoMemBlock;
}

const mrm_SmallBlockCapacity mrm_GetCapacity(const mrm_Pool& pool) {
  return pool.m_Capacity;
}

const mrm_SmallBlockConsumption mrm_GetConsumption(const mrm_Pool& pool) {
  return pool.m_Consumption;
}

// ---- Factory ----

mrm_Pool* mrm_PoolFactory::Attach(mrm_LargeBlockPool* provider,
                                  const mrm_SmallBlockCapacity& capacity) {
  if (provider == nullptr) return nullptr;
  if (provider->m_SmallPool == nullptr) {
    provider->m_SmallPool = new mrm_Pool(provider, capacity);
  } else {
    provider->m_SmallPool->Restart(capacity);
  }
  return provider->m_SmallPool;
}

mrm_Pool* mrm_PoolFactory::Startup(const mrm_Label& pool) {
  const mrm_PhaseNode* phase = nullptr;
  const mrm_PoolDecl* declared = mrm_Manager::Impl().ScheduledPool(pool, phase);
  // Guard: a large-block declaration has no small-block figures to read.
  if (declared == nullptr || declared->m_Kind != mrm_PoolDecl::kSmallBlock) return nullptr;
  const int alt = declared->m_SelectedAlt;
  return Attach(mrm_Manager::Impl().StartPool(pool, phase->m_Label, declared->m_Alts[alt], alt),
                declared->m_SmallAlts[alt]);
}

mrm_Pool* mrm_PoolFactory::SpotStartup(const mrm_Label& pool, const mrm_Label& phase,
                                       const mrm_SmallBlockCapacity& capacity) {
  return Attach(mrm_Manager::Impl().StartPool(pool, phase, capacity.LargeBlockCapacity(), -1),
                capacity);
}

mrm_Pool* mrm_PoolFactory::GetPool(const mrm_Label& pool) {
  mrm_LargeBlockPool* provider = mrm_Manager::Impl().ActivePool(pool);
  return provider != nullptr ? provider->m_SmallPool : nullptr;
}

void mrm_PoolFactory::Shutdown(mrm_Pool* pool) {
  if (pool == nullptr) return;
  pool->m_Provider->FakeRelease(pool->m_BlockId);
  mrm_LargeBlockPoolFactory::Shutdown(pool->m_Provider);
}
