// An array of cells in blocks of 256 that come into being on first write, so that a few
// cells far apart cost little. Cells never written read as a value-initialized T.
//
//   omi_BlockedArray<unsigned> table;
//   table.SetCell(70000, 7u);
//   unsigned seven = table.GetCell(70000), zero = table.GetCell(3);
//
// T must be trivially copyable (the blocks are raw memory from the memory layer).
#ifndef OMI_BLOCKEDARRAY_H
#define OMI_BLOCKEDARRAY_H

#include <cstring>
#include <type_traits>

#include "mem_Alloc.h"

template <class T>
class omi_BlockedArray : public mem_AllocationOperators {
  static_assert(std::is_trivially_copyable<T>::value, "cells are raw memory");

 public:
  static const unsigned kCellsPerBlock = 256;

  omi_BlockedArray() = default;
  omi_BlockedArray(const omi_BlockedArray& other) { *this = other; }
  omi_BlockedArray& operator=(const omi_BlockedArray& other) {
    if (this == &other) return *this;
    Clear();
    for (unsigned block = 0; block < other.m_BlockCount; ++block) {
      if (const T* cells = other.m_Blocks[block]) {
        std::memcpy(&Cell(block * kCellsPerBlock), cells, kCellsPerBlock * sizeof(T));
      }
    }
    m_Size = other.m_Size;
    return *this;
  }
  ~omi_BlockedArray() { Clear(); }

  // Sets one cell, growing the array as needed.
  void SetCell(unsigned index, const T& value) { Cell(index) = value; }

  T GetCell(unsigned index) const {
    const T* cells = Block(index / kCellsPerBlock);
    return cells ? cells[index % kCellsPerBlock] : T();
  }

  // The cell for writing, with its block made if needed.
  T& Cell(unsigned index) {
    const unsigned block = index / kCellsPerBlock;
    if (block >= m_BlockCount) Grow(block + 1);
    if (m_Blocks[block] == nullptr) m_Blocks[block] = NewZeroed<T>(kCellsPerBlock);
    if (index >= m_Size) m_Size = index + 1;
    return m_Blocks[block][index % kCellsPerBlock];
  }

  // One past the highest cell written.
  unsigned Size() const { return m_Size; }

  // Releases every block.
  void Clear() {
    for (unsigned block = 0; block < m_BlockCount; ++block)
      mem_Free(m_Blocks[block]);
    mem_Free(m_Blocks);
    m_Blocks = nullptr;
    m_BlockCount = 0;
    m_Size = 0;
  }

  // Blocks by number, for walking the array: null for a block never written.
  unsigned BlockCount() const { return m_BlockCount; }
  const T* Block(unsigned block) const { return block < m_BlockCount ? m_Blocks[block] : nullptr; }

 private:
  template <class U>
  static U* NewZeroed(unsigned count) {
    void* block = mem_OperatorNewThrowBuiltin(count * sizeof(U));
    std::memset(block, 0, count * sizeof(U));
    return static_cast<U*>(block);
  }

  void Grow(unsigned needed) {
    const unsigned count = needed > 2 * m_BlockCount ? needed : 2 * m_BlockCount;
    T** grown = NewZeroed<T*>(count);
    if (m_BlockCount) std::memcpy(grown, m_Blocks, m_BlockCount * sizeof(T*));
    mem_Free(m_Blocks);
    m_Blocks = grown;
    m_BlockCount = count;
  }

  T** m_Blocks = nullptr;
  unsigned m_BlockCount = 0;
  unsigned m_Size = 0;
};

#endif  // OMI_BLOCKEDARRAY_H
