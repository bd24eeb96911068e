#include "mrm_LargeBlockPool.h"

#include <algorithm>

#include "internal/mrm_BlockTable.h"
#include "internal/mrm_ManagerI.h"
#include "mrm_Manager.h"
#include "mrm_Pool.h"

namespace {

// The unpinned figure of a release type; null for a block in no unpinned state.
double* UnpinnedBytes(mrm_Consumption& consumption, mrm_ReleaseType type) {
  if (type == mrm_ReleaseType1) return &consumption.unpinnedBytes1;
  if (type == mrm_ReleaseType0) return &consumption.unpinnedBytes0;
  return nullptr;
}

// One pinned block more (+1) or less (-1). The unpinned figure of the block's release type
// moves the other way: pinning takes an unpinned block's bytes out of it, and unpinning, with
// the type set first, puts them in.
void Charge(mrm_Consumption& consumption, const mrm_BlockRec& block, int direction) {
  const double delta = direction * static_cast<double>(block.m_Size);
  consumption.numPinned += direction;
  consumption.pinnedBytes += delta;
  if (double* unpinned = UnpinnedBytes(consumption, block.m_ReleaseType)) *unpinned -= delta;
  consumption.peakPinnedBytes = std::max(consumption.peakPinnedBytes, consumption.pinnedBytes);
}

}  // namespace

mrm_LargeBlockPool::mrm_LargeBlockPool(mrm_BlockTable* table, const mrm_Label& label)
    : m_Table(table), m_Label(label) {}

mrm_LargeBlockPool::~mrm_LargeBlockPool() {
  delete m_SmallPool;
}

void mrm_LargeBlockPool::Start(const mrm_Label& phase, const mrm_Capacity& capacity, int alt) {
  m_PhaseLabel = phase;
  m_AltNumber = alt;
  m_Capacity = capacity;
  m_Active = true;
}

mrm_BlockRec* mrm_LargeBlockPool::Find(mrm_MemBlockID id) const {
  return m_Table->Find(id);
}

void mrm_LargeBlockPool::Account(const mrm_BlockRec& block, int direction) {
  Charge(m_Table->m_Consumption, block, direction);
  Charge(m_Consumption, block, direction);
}

mrm_BlockRec& mrm_LargeBlockPool::DeclareBlock(int size) {
  mrm_BlockRec& block = m_Table->Add(this, size);
  ++m_Consumption.numBlocks;
  ++m_Table->m_Consumption.numBlocks;
  return block;
}

mrm_MemBlockID mrm_LargeBlockPool::Declare(int size) {
  return DeclareBlock(size).m_Id;
}

bool mrm_LargeBlockPool::Acquire(mrm_MemBlockID id) {
  mrm_BlockRec* block = Find(id);
  if (block == nullptr) return true;  // guard: an unknown block gets no memory
  // Guard: a block that holds memory keeps it; a second block would leak and count twice.
  if (block->m_HasMemory) return false;
  block->m_Memory = mem_OperatorNewThrowBuiltin(block->m_Size);
  block->m_HasMemory = block->m_Pinned = true;
  Account(*block, +1);
  return false;
}

bool mrm_LargeBlockPool::Unpin(mrm_MemBlockID id, mrm_ReleaseType type) {
  mrm_BlockRec* block = Find(id);
  if (block == nullptr) return false;  // guard: unknown block
  block->m_Pinned = false;
  block->m_ReleaseType = type;
  Account(*block, -1);
  return false;
}

bool mrm_LargeBlockPool::Pin(mrm_MemBlockID id) {
  mrm_BlockRec* block = Find(id);
  if (block == nullptr) return false;  // guard: unknown block
  block->m_Pinned = true;
  Account(*block, +1);
  block->m_ReleaseType = mrm_NotUnpinned;
  return false;
}

bool mrm_LargeBlockPool::Discard(mrm_MemBlockID id) {
  mrm_BlockRec* block = Find(id);
  if (block != nullptr) DiscardBlock(*block);  // guard: unknown block
  return false;
}

// An unpinned block is first counted back up as pinned, so that its unpinned charge is taken
// back before the final step down.
void mrm_LargeBlockPool::DiscardBlock(mrm_BlockRec& block) {
  if (!block.m_HasMemory) return;
  mem_Free(block.m_Memory);
  block.m_Memory = nullptr;
  block.m_HasMemory = false;
  if (!block.m_Pinned) {
    Account(block, +1);
    block.m_ReleaseType = mrm_NotUnpinned;
  }
  Account(block, -1);
  block.m_Pinned = false;
  block.m_Discarded = true;
}

bool mrm_LargeBlockPool::Release(mrm_MemBlockID& id) {
  mrm_BlockRec* block = Find(id);
  if (block == nullptr) return false;  // guard: unknown block
  DiscardBlock(*block);
  Forget(*block, id);
  return false;
}

void mrm_LargeBlockPool::Forget(mrm_BlockRec& block, mrm_MemBlockID& id) {
  --m_Consumption.numBlocks;
  --m_Table->m_Consumption.numBlocks;
  m_Table->Remove(block);
  id = mrm_NoMemBlock;
}

void mrm_LargeBlockPool::FakeRelease(mrm_MemBlockID& id) {
  if (id == mrm_NoMemBlock) return;
  mrm_BlockRec* block = Find(id);
  if (block == nullptr) return;  // guard: unknown block
  Account(*block, -1);
  Forget(*block, id);
}

// The block stands for memory that mrm_Pool holds elsewhere: it has no memory of its own, and
// grows by `size` while staying one pinned block.
void mrm_LargeBlockPool::Expand(int size, mrm_MemBlockID& id) {
  if (id == mrm_NoMemBlock) {
    mrm_BlockRec& block = DeclareBlock(size);
    id = block.m_Id;
    block.m_HasMemory = block.m_Pinned = true;
    Account(block, +1);
    return;
  }
  mrm_BlockRec* block = Find(id);
  if (block == nullptr) return;  // guard: unknown block
  const int64_t old = block->m_Size;
  block->m_Size = size;
  --m_Table->m_Consumption.numPinned;  // Account counts the block again
  --m_Consumption.numPinned;
  Account(*block, +1);
  block->m_Size = old + size;
}

void* mrm_LargeBlockPool::GetPointer(mrm_MemBlockID id) {
  const mrm_BlockRec* block = Find(id);
  return block != nullptr && block->m_Pinned ? block->m_Memory : nullptr;
}

int mrm_LargeBlockPool::GetSize(mrm_MemBlockID id) const {
  const mrm_BlockRec* block = Find(id);
  return block != nullptr ? static_cast<int>(block->m_Size) : 0;  // guard: unknown block
}

bool mrm_LargeBlockPool::TransferMemory(mrm_MemBlockID id, mrm_LargeBlockPool& from,
                                        mrm_LargeBlockPool& to) {
  mrm_BlockRec* block = from.Find(id);
  if (block == nullptr) return true;  // guard: an unknown block moves nothing
  if (block->m_Pinned) {
    from.Account(*block, -1);
    to.Account(*block, +1);
  } else if (block->m_HasMemory) {
    double* fromBytes = UnpinnedBytes(from.m_Consumption, block->m_ReleaseType);
    double* toBytes = UnpinnedBytes(to.m_Consumption, block->m_ReleaseType);
    if (fromBytes != nullptr) {
      *fromBytes -= block->m_Size;
      *toBytes += block->m_Size;
    }
  }
  --from.m_Consumption.numBlocks;
  ++to.m_Consumption.numBlocks;
  block->m_Owner = &to;
  return true;
}

const mrm_Capacity mrm_GetCapacity(const mrm_LargeBlockPool& pool) {
  return pool.m_Capacity;
}

const mrm_Consumption mrm_GetConsumption(const mrm_LargeBlockPool& pool) {
  return pool.m_Consumption;
}

// ---- Factory ----

mrm_LargeBlockPool* mrm_LargeBlockPoolFactory::Startup(const mrm_Label& pool) {
  const mrm_PhaseNode* phase = nullptr;
  const mrm_PoolDecl* declared = mrm_Manager::Impl().ScheduledPool(pool, phase);
  if (declared == nullptr) return nullptr;
  const int alt = declared->m_SelectedAlt;
  return mrm_Manager::Impl().StartPool(pool, phase->m_Label, declared->m_Alts[alt], alt);
}

mrm_LargeBlockPool* mrm_LargeBlockPoolFactory::SpotStartup(const mrm_Label& pool,
                                                           const mrm_Label& phase,
                                                           const mrm_Capacity& capacity) {
  return mrm_Manager::Impl().StartPool(pool, phase, capacity, -1);
}

mrm_LargeBlockPool* mrm_LargeBlockPoolFactory::GetPool(const mrm_Label& pool) {
  return mrm_Manager::Impl().ActivePool(pool);
}

void mrm_LargeBlockPoolFactory::Shutdown(mrm_LargeBlockPool* pool) {
  mrm_Manager::Impl().ShutdownPool(pool);
}
