// The table of all memory blocks of a job, kept by mrm_Manager: block IDs to records through a
// tree, records in slots that are reused last-in first-out, and the job's consumption, which
// is the sum of all pools'. A released ID stays in the tree so that it is never given out
// again, also after the IDs wrap.
#ifndef MRM_BLOCKTABLE_H
#define MRM_BLOCKTABLE_H

#include <cstdint>

#include "mem_Alloc.h"
#include "mrm_Array.h"
#include "mrm_Capacity.h"
#include "mrm_Label.h"
#include "mrm_LargeBlockPool.h"
#include "omi_Btree.h"

struct mrm_BlockRec : public mem_AllocationOperators {
  mrm_BlockRec(mrm_MemBlockID id, mrm_LargeBlockPool* owner, int size)
      : m_Id(id), m_Owner(owner), m_Size(size) {}

  mrm_MemBlockID m_Id;
  mrm_LargeBlockPool* m_Owner;
  void* m_Memory = nullptr;  // null unless acquired
  int64_t m_Size;            // a multiple of 65536
  bool m_HasMemory = false;
  bool m_Pinned = false;
  mrm_ReleaseType m_ReleaseType = mrm_NotUnpinned;
  bool m_Discarded = false;
};

class mrm_BlockTable {
 public:
  mrm_BlockTable() = default;
  // Deletes the records. Memory that blocks still hold is not freed: it may still be in the
  // job's hands. Intended.
  ~mrm_BlockTable();
  mrm_BlockTable(const mrm_BlockTable&) = delete;
  mrm_BlockTable& operator=(const mrm_BlockTable&) = delete;

  // The block, or null for an ID that was never given out or has been released.
  mrm_BlockRec* Find(mrm_MemBlockID id) const;
  // A record for a new block of `owner`, `size` rounded up to whole blocks, under the next
  // free ID in the next free slot.
  mrm_BlockRec& Add(mrm_LargeBlockPool* owner, int size);
  // Deletes the record and frees its slot; its ID stays taken.
  void Remove(mrm_BlockRec& block);

  mrm_Consumption m_Consumption;  // the job's: the sum over all pools

 private:
  omi_Btree<mrm_Int, int> m_IdToSlot{-1};
  mrm_Array<mrm_BlockRec*> m_Slots;  // null in a free slot
  mrm_Array<int> m_FreeSlots;
  uint32_t m_LastId = 0;  // 0: none given out yet
};

#endif  // MRM_BLOCKTABLE_H
