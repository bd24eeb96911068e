// Large-block pools: memory of a job in blocks of whole multiples of 64 KiB, each declared,
// acquired (and so pinned), unpinned and pinned again, discarded and released by its ID. A
// pool only accounts: it compares nothing with its capacity, so a run that exceeds its plan
// goes on and shows the excess in its consumption and peak.
//
//   mrm_LargeBlockPool* pool = mrm_LargeBlockPoolFactory::Startup(matrixLabel);
//   if (pool != nullptr) {
//     mrm_MemBlockID id = pool->Declare(8 << 20);
//     pool->Acquire(id);                          // pinned: GetPointer gives the memory
//     fill(pool->GetPointer(id), pool->GetSize(id));
//     pool->Unpin(id, mrm_ReleaseType1);          // kept, but not to be reached
//     pool->Pin(id);
//     pool->Release(id);                          // frees it; id becomes 0
//     mrm_LargeBlockPoolFactory::Shutdown(pool);
//   }
//
// Pools belong to mrm_Manager: started under an open phase, shut down (kept, with their
// figures) and started again later. Unknown block IDs, released ones included, leave every
// operation without effect. The bool results are true only when Acquire got no memory.
// Allocation failure raises through the memory layer with the counts already changed.
// Threads: the job's thread only.
#ifndef MRM_LARGEBLOCKPOOL_H
#define MRM_LARGEBLOCKPOOL_H

#include "VRKBasExport.h"
#include "mem_Alloc.h"
#include "mrm_Capacity.h"
#include "mrm_Label.h"

class mrm_BlockTable;
class mrm_ManagerI;
class mrm_Pool;
class mrm_PoolFactory;
struct mrm_BlockRec;

// The ID of a block; 0 means no block. IDs are never given out twice.
enum mrm_MemBlockID : unsigned { mrm_NoMemBlock = 0 };

// How a block was unpinned: the library only keeps the two kinds apart in the figures
// unpinnedBytes0 and unpinnedBytes1; mrm_NotUnpinned is a block in no unpinned state.
enum mrm_ReleaseType { mrm_ReleaseType0 = 0, mrm_ReleaseType1 = 1, mrm_NotUnpinned = 2 };

class VRKLNU_EXPORT mrm_LargeBlockPool : public mem_AllocationOperators {
 public:
  mrm_LargeBlockPool(const mrm_LargeBlockPool&) = delete;
  mrm_LargeBlockPool& operator=(const mrm_LargeBlockPool&) = delete;

  // A new block of `size` bytes rounded up to whole blocks, with no memory yet.
  mrm_MemBlockID Declare(int size);
  // Gets the block's memory (not cleared) and pins it. True when no memory could be had: for
  // an unknown block, since the memory layer raises rather than give none.
  bool Acquire(mrm_MemBlockID id);
  // Keeps the memory but puts it out of reach, counted as unpinned bytes of `type`.
  bool Unpin(mrm_MemBlockID id, mrm_ReleaseType type);
  bool Pin(mrm_MemBlockID id);
  // Frees the memory; the block stays declared and can be acquired again.
  bool Discard(mrm_MemBlockID id);
  // Discards the block and forgets it; `id` becomes 0.
  bool Release(mrm_MemBlockID& id);
  // The memory of a pinned block, else null.
  void* GetPointer(mrm_MemBlockID id);
  // The block's size; 0 for an unknown block.
  int GetSize(mrm_MemBlockID id) const;
  // The alternative the pool was started at; -1 for a pool started outside the schedule.
  int GetAltNumber() const { return m_AltNumber; }

  // Moves the block and its figures from one pool to the other; the job's figures stay.
  // Always true; an unknown block moves nothing.
  static bool TransferMemory(mrm_MemBlockID id, mrm_LargeBlockPool& from, mrm_LargeBlockPool& to);
  static int RoundToBlock(int n) { return mrm_RoundToBlock(n); }
  static int RoundToBlock_inl(int n) { return mrm_RoundToBlock(n); }
  // Kept in the interface; does nothing.
  void TestCheckMyScope() {}

 private:
  friend class mrm_ManagerI;
  friend class mrm_Pool;
  friend class mrm_PoolFactory;
  friend VRKLNU_EXPORT const mrm_Capacity mrm_GetCapacity(const mrm_LargeBlockPool& pool);
  friend VRKLNU_EXPORT const mrm_Consumption mrm_GetConsumption(const mrm_LargeBlockPool& pool);

  mrm_LargeBlockPool(mrm_BlockTable* table, const mrm_Label& label);
  // Deletes the small-block pool on top; only the manager deletes a pool.
  ~mrm_LargeBlockPool();

  // (Re)starts the pool under `phase` at alternative `alt`; label and consumption stay.
  void Start(const mrm_Label& phase, const mrm_Capacity& capacity, int alt);
  // A new block: Declare without the ID.
  mrm_BlockRec& DeclareBlock(int size);
  // The block, or null for an ID the table doesn't hold.
  mrm_BlockRec* Find(mrm_MemBlockID id) const;
  // Moves the figures of this pool and of the job by one pinned block, up (+1) or down (-1).
  void Account(const mrm_BlockRec& block, int direction);
  // Frees the block's memory and takes its charge back.
  void DiscardBlock(mrm_BlockRec& block);
  // Drops the block from the table and the counts; `id` becomes 0.
  void Forget(mrm_BlockRec& block, mrm_MemBlockID& id);
  // For mrm_Pool: releases a block that only stands for memory held elsewhere.
  void FakeRelease(mrm_MemBlockID& id);
  // For mrm_Pool: charges `size` more bytes to the block `id`, declared on first use.
  void Expand(int size, mrm_MemBlockID& id);

  mrm_BlockTable* m_Table;
  mrm_Capacity m_Capacity;
  mrm_Label m_Label;
  mrm_Label m_PhaseLabel;
  int m_AltNumber = -1;
  mrm_Consumption m_Consumption;
  bool m_Active = false;
  mrm_Pool* m_SmallPool = nullptr;
};

// The ways to start and stop large-block pools. All pools live in mrm_Manager.
class VRKLNU_EXPORT mrm_LargeBlockPoolFactory {
 public:
  // Starts the pool as the adopted schedule declares it in the open phases, at its selected
  // alternative. Null when it is not declared there, not finalized, or already active.
  static mrm_LargeBlockPool* Startup(const mrm_Label& pool);
  // Starts a pool outside the schedule under the open phase `phase`; null when that phase
  // is not open or the pool is active.
  static mrm_LargeBlockPool* SpotStartup(const mrm_Label& pool, const mrm_Label& phase,
                                         const mrm_Capacity& capacity);
  // The active pool of that label, else null (a pointer where a null reference would be
  // undefined).
  static mrm_LargeBlockPool* GetPool(const mrm_Label& pool);
  // Makes the pool inactive; its blocks and figures stay. Nothing for null, an inactive pool,
  // or a pool whose phase has ended (it stays active).
  static void Shutdown(mrm_LargeBlockPool* pool);
};

VRKLNU_EXPORT const mrm_Capacity mrm_GetCapacity(const mrm_LargeBlockPool& pool);
VRKLNU_EXPORT const mrm_Consumption mrm_GetConsumption(const mrm_LargeBlockPool& pool);

#endif  // MRM_LARGEBLOCKPOOL_H
