#include "omi_BlkBitVect.h"

namespace {

const unsigned kWordsPerBlock = omi_BlockedArray<unsigned>::kCellsPerBlock;
const long long kBitsPerBlock = 32ll * kWordsPerBlock;

}  // namespace

omi_BlkBitVect::~omi_BlkBitVect() = default;

void omi_BlkBitVect::Clear() {
  m_Words.Clear();
  m_Count = 0;
}

void omi_BlkBitVect::SetBit(unsigned bit) {
  SetWord(bit / 32, GetWord(bit / 32) | 1u << bit % 32);
}

void omi_BlkBitVect::UnsetBit(unsigned bit) {
  SetWord(bit / 32, GetWord(bit / 32) & ~(1u << bit % 32));
}

bool omi_BlkBitVect::IsSet(unsigned bit) const {
  return GetWord(bit / 32) >> bit % 32 & 1u;
}

unsigned omi_BlkBitVect::Recount() {
  m_Count = 0;
  for (unsigned block = 0; block < m_Words.BlockCount(); ++block) {
    if (const unsigned* words = m_Words.Block(block)) {
      for (unsigned i = 0; i < kWordsPerBlock; ++i)
        m_Count += __builtin_popcount(words[i]);
    }
  }
  return m_Count;
}

void omi_BlkBitVect::SetWord(unsigned index, unsigned word) {
  const unsigned old = GetWord(index);
  if (word == old) return;
  m_Words.SetCell(index, word);
  m_Count += __builtin_popcount(word) - __builtin_popcount(old);
}

bool omi_BlkBitVectTrav::Up(unsigned long long from, unsigned& bit) const {
  const unsigned long long end = m_Words->BlockCount() * kBitsPerBlock;
  while (from < end) {
    const unsigned* words = m_Words->Block(from / kBitsPerBlock);
    if (words == nullptr) {
      from = (from / kBitsPerBlock + 1) * kBitsPerBlock;
      continue;
    }
    const unsigned word = words[from / 32 % kWordsPerBlock] >> from % 32;
    if (word != 0) {
      bit = static_cast<unsigned>(from + __builtin_ctz(word));
      return true;
    }
    from = (from / 32 + 1) * 32;
  }
  return false;
}

bool omi_BlkBitVectTrav::Down(long long from, unsigned& bit) const {
  const long long last = m_Words->BlockCount() * kBitsPerBlock - 1;
  if (from > last) from = last;
  while (from >= 0) {
    const unsigned* words = m_Words->Block(from / kBitsPerBlock);
    if (words == nullptr) {
      from = from / kBitsPerBlock * kBitsPerBlock - 1;
      continue;
    }
    const unsigned word = words[from / 32 % kWordsPerBlock] << (31 - from % 32);
    if (word != 0) {
      bit = static_cast<unsigned>(from - __builtin_clz(word));
      return true;
    }
    from = from / 32 * 32 - 1;
  }
  return false;
}
