#include "uti_Blowfish.h"

#include <cstring>
#include <string>

#include "internal/uti_BlowfishTables.h"
#include "nex_TextException.h"

namespace {

inline uint32_t LoadBig(const unsigned char* p) {
  return uint32_t{p[0]} << 24 | uint32_t{p[1]} << 16 | uint32_t{p[2]} << 8 | uint32_t{p[3]};
}

inline void StoreBig(unsigned char* p, uint32_t value) {
  for (int i = 0; i < 4; ++i)
    p[i] = static_cast<unsigned char>(value >> (24 - 8 * i));
}

void CheckBlocks(size_t size) {
  if (size % uti_Blowfish::kBlockSize != 0) {
    NEX_THROW(nex_TextException(nex_Translate(
        "uti_Blowfish: %s bytes are not whole blocks of 8 bytes", std::to_string(size).c_str())));
  }
}

// Runs `code` on each block of `data` as its two halves, in place.
template <class Code>
void EachBlock(void* data, size_t size, Code code) {
  CheckBlocks(size);
  unsigned char* block = static_cast<unsigned char*>(data);
  for (unsigned char* end = block + size; block != end; block += uti_Blowfish::kBlockSize) {
    uint32_t left = LoadBig(block), right = LoadBig(block + 4);
    code(left, right);
    StoreBig(block, left);
    StoreBig(block + 4, right);
  }
}

}  // namespace

// The subkeys start as the digits of pi and take the key's bytes, cycled, 32 bits at a time;
// then a zero block is enciphered again and again, each result replacing the next two
// subkey or box words in order.
uti_Blowfish::uti_Blowfish(const void* key, size_t size) {
  if (size < kMinKeySize || size > kMaxKeySize) {
    NEX_THROW(nex_TextException(
        nex_Translate("uti_Blowfish: a key of %s bytes is outside the 4 to 56 allowed",
                      std::to_string(size).c_str())));
  }
  std::memcpy(m_Subkeys, uti_kBlowfishSubkeys, sizeof m_Subkeys);
  std::memcpy(m_Boxes, uti_kBlowfishBoxes, sizeof m_Boxes);
  const unsigned char* bytes = static_cast<const unsigned char*>(key);
  size_t next = 0;
  for (uint32_t& subkey : m_Subkeys) {
    uint32_t word = 0;
    for (int i = 0; i < 4; ++i, next = (next + 1) % size)
      word = word << 8 | bytes[next];
    subkey ^= word;
  }
  uint32_t left = 0, right = 0;
  const auto fill = [&](uint32_t* words, int count) {
    for (int i = 0; i < count; i += 2) {
      Encrypt(left, right);
      words[i] = left;
      words[i + 1] = right;
    }
  };
  fill(m_Subkeys, 18);
  for (auto& box : m_Boxes)
    fill(box, 256);
}

uti_Blowfish::uti_Blowfish(const cow_String& key)
    : uti_Blowfish(key.c_str(), static_cast<size_t>(key.Length())) {}

inline uint32_t uti_Blowfish::Round(uint32_t x) const {
  return ((m_Boxes[0][x >> 24] + m_Boxes[1][(x >> 16) & 255]) ^ m_Boxes[2][(x >> 8) & 255]) +
         m_Boxes[3][x & 255];
}

// Sixteen rounds, each half in turn taking the round function of the other and a subkey;
// the halves leave swapped.
inline void uti_Blowfish::Encrypt(uint32_t& left, uint32_t& right) const {
  uint32_t l = left ^ m_Subkeys[0], r = right;
  for (int i = 1; i < 17; i += 2) {
    r ^= Round(l) ^ m_Subkeys[i];
    l ^= Round(r) ^ m_Subkeys[i + 1];
  }
  left = r ^ m_Subkeys[17];
  right = l;
}

// The same rounds with the subkeys in reverse order.
inline void uti_Blowfish::Decrypt(uint32_t& left, uint32_t& right) const {
  uint32_t l = left ^ m_Subkeys[17], r = right;
  for (int i = 16; i > 0; i -= 2) {
    r ^= Round(l) ^ m_Subkeys[i];
    l ^= Round(r) ^ m_Subkeys[i - 1];
  }
  left = r ^ m_Subkeys[0];
  right = l;
}

void uti_Blowfish::EncryptECB(void* data, size_t size) const {
  EachBlock(data, size, [this](uint32_t& l, uint32_t& r) { Encrypt(l, r); });
}

void uti_Blowfish::DecryptECB(void* data, size_t size) const {
  EachBlock(data, size, [this](uint32_t& l, uint32_t& r) { Decrypt(l, r); });
}

void uti_Blowfish::EncryptCBC(void* data, size_t size, unsigned char iv[kBlockSize]) const {
  uint32_t chainL = LoadBig(iv), chainR = LoadBig(iv + 4);
  EachBlock(data, size, [&](uint32_t& l, uint32_t& r) {
    l ^= chainL;
    r ^= chainR;
    Encrypt(l, r);
    chainL = l;
    chainR = r;
  });
  StoreBig(iv, chainL);
  StoreBig(iv + 4, chainR);
}

void uti_Blowfish::DecryptCBC(void* data, size_t size, unsigned char iv[kBlockSize]) const {
  uint32_t chainL = LoadBig(iv), chainR = LoadBig(iv + 4);
  EachBlock(data, size, [&](uint32_t& l, uint32_t& r) {
    const uint32_t cipherL = l, cipherR = r;
    Decrypt(l, r);
    l ^= chainL;
    r ^= chainR;
    chainL = cipherL;
    chainR = cipherR;
  });
  StoreBig(iv, chainL);
  StoreBig(iv + 4, chainR);
}
