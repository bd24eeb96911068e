// The Blowfish block cipher as its designer published it: 64-bit blocks, 16 rounds, keys of
// 4 to 56 bytes, in ECB and CBC mode over whole blocks in memory. It is here to read and
// write data that existing files and programs hold in this form, for compatibility, not for
// protecting secrets: its 64-bit block and its age make it unfit for new protection.
//
//   uti_Blowfish cipher(key, keySize);
//   unsigned char iv[8] = {...};
//   cipher.EncryptCBC(buffer, size, iv);   // size a multiple of 8; iv now continues the chain
//
// A block is read as two 32-bit halves, most significant byte first, as in the published
// test vectors. No padding is added or removed: the caller brings whole blocks.
#ifndef UTI_BLOWFISH_H
#define UTI_BLOWFISH_H

#include <cstddef>
#include <cstdint>

#include "VRKBasExport.h"
#include "cow_String.h"
#include "mem_Alloc.h"

// A keyed cipher: 4 KiB of subkeys made at construction. A plain value; its operations are
// const, so one object may serve several threads at once on distinct buffers. Failures
// (a key of the wrong size, data that isn't whole blocks) throw nex_TextException before
// anything is changed.
class VRKLNU_EXPORT uti_Blowfish : public mem_AllocationOperators {
 public:
  static constexpr int kBlockSize = 8;
  static constexpr int kMinKeySize = 4;
  static constexpr int kMaxKeySize = 56;

  uti_Blowfish(const void* key, size_t size);
  explicit uti_Blowfish(const cow_String& key);

  // Each block of `data` by itself, in place.
  void EncryptECB(void* data, size_t size) const;
  void DecryptECB(void* data, size_t size) const;
  // Chained blocks in place, starting from `iv`, which ends as the last cipher block: a
  // following call with it goes on with the same chain.
  void EncryptCBC(void* data, size_t size, unsigned char iv[kBlockSize]) const;
  void DecryptCBC(void* data, size_t size, unsigned char iv[kBlockSize]) const;

 private:
  uint32_t Round(uint32_t x) const;
  void Encrypt(uint32_t& left, uint32_t& right) const;
  void Decrypt(uint32_t& left, uint32_t& right) const;

  uint32_t m_Subkeys[18];
  uint32_t m_Boxes[4][256];
};

#endif  // UTI_BLOWFISH_H
