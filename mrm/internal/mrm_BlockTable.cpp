#include "mrm_BlockTable.h"

mrm_BlockTable::~mrm_BlockTable() {
  for (int i = 0; i < m_Slots.Count(); ++i)
    delete m_Slots[i];
}

mrm_BlockRec* mrm_BlockTable::Find(mrm_MemBlockID id) const {
  const int slot = m_IdToSlot.ConstFind(static_cast<int>(id));
  if (slot == -1) return nullptr;
  mrm_BlockRec* block = m_Slots[slot];
  // A released ID keeps its entry, and its slot may hold another block by now.
  return block != nullptr && block->m_Id == id ? block : nullptr;
}

mrm_BlockRec& mrm_BlockTable::Add(mrm_LargeBlockPool* owner, int size) {
  do {
    ++m_LastId;
  } while (m_LastId == 0 || m_IdToSlot.IsMember(static_cast<int>(m_LastId)));
  const mrm_MemBlockID id = static_cast<mrm_MemBlockID>(m_LastId);
  // The last free slot, or a new one at the end; it leaves the free list once it is filled.
  if (m_FreeSlots.Count() == 0) m_FreeSlots.Append(m_Slots.Count());
  const int slot = m_FreeSlots.Last();
  if (slot == m_Slots.Count()) m_Slots.Append(nullptr);
  mrm_BlockRec* block = new mrm_BlockRec(id, owner, mrm_RoundToBlock(size));
  m_Slots[slot] = block;
  m_FreeSlots.Pop();
  m_IdToSlot.Insert(static_cast<int>(id), slot);
  return *block;
}

void mrm_BlockTable::Remove(mrm_BlockRec& block) {
  const int slot = m_IdToSlot.ConstFind(static_cast<int>(block.m_Id));
  m_FreeSlots.Append(slot);
  m_Slots[slot] = nullptr;
  delete &block;
}
