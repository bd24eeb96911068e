// A set of unsigned numbers as bits, stored in blocks of 8192 bits that come into being on
// first use, so that a sparse set over a wide range stays small. The count of set bits is
// kept up to date by every change.
//
//   omi_BlkBitVect set;
//   set.SetBit(5); set.SetBit(70000);
//   omi_BlkBitVectTrav walk(&set);
//   unsigned bit;
//   for (bool found = walk.First(bit); found; found = walk.Next(bit)) use(bit);
//
// The set can also be read and written by 32-bit words (word i holds bits 32i to 32i+31,
// the lowest in bit 0), which is how it is written as text.
#ifndef OMI_BLKBITVECT_H
#define OMI_BLKBITVECT_H

#include "VRKBasExport.h"
#include "mem_Alloc.h"
#include "omi_BlockedArray.h"

class VRKLNU_EXPORT omi_BlkBitVect : public mem_AllocationOperators {
 public:
  omi_BlkBitVect() = default;
  omi_BlkBitVect(const omi_BlkBitVect& other) = default;
  omi_BlkBitVect& operator=(const omi_BlkBitVect& other) = default;
  virtual ~omi_BlkBitVect();

  // Empties the set and releases its blocks.
  void Clear();
  void SetBit(unsigned bit);
  void UnsetBit(unsigned bit);
  bool IsSet(unsigned bit) const;
  // Number of set bits.
  unsigned Count() const { return m_Count; }
  // Counts the set bits afresh, stores and returns the count.
  unsigned Recount();

  unsigned GetWord(unsigned index) const { return m_Words.GetCell(index); }
  // Stores a whole word, keeping the count.
  void SetWord(unsigned index, unsigned word);

 private:
  friend class omi_BlkBitVectTrav;

  omi_BlockedArray<unsigned> m_Words;
  unsigned m_Count = 0;
};

// Walks the set bits of a vector, which must outlive it. Each operation stores the bit it
// finds in its argument and returns whether it found one: First and Last the lowest and the
// highest, Next the lowest above the argument, Prev the highest below it.
class VRKLNU_EXPORT omi_BlkBitVectTrav {
 public:
  explicit omi_BlkBitVectTrav(const omi_BlkBitVect* vector) : m_Words(&vector->m_Words) {}

  bool First(unsigned& bit) const { return Up(0, bit); }
  bool Next(unsigned& bit) const { return Up(bit + 1ull, bit); }
  bool Last(unsigned& bit) const { return Down(0xffffffffll, bit); }
  bool Prev(unsigned& bit) const { return Down(bit - 1ll, bit); }

 private:
  // The lowest set bit at or above `from`, the highest at or below it.
  bool Up(unsigned long long from, unsigned& bit) const;
  bool Down(long long from, unsigned& bit) const;

  const omi_BlockedArray<unsigned>* m_Words;
};

#endif  // OMI_BLKBITVECT_H
