// The MD5 message digest (RFC 1321), for reading and writing data that existing files and
// programs identify by it. MD5 is broken as a cryptographic hash: it is here for
// compatibility with existing data, not for protecting secrets or proving integrity
// against anyone who would forge it.
//
//   uti_MD5 md5;
//   md5.Update(header, headerSize);
//   md5.Update(body, bodySize);          // pieces of any size: the same as one call over all
//   cow_String hex = md5.HexDigest();    // 32 lower-case hex digits
//
// Digest and HexDigest don't end the computation: later Updates go on from where they were,
// and Reset starts again from nothing.
#ifndef UTI_MD5_H
#define UTI_MD5_H

#include <cstddef>
#include <cstdint>

#include "VRKBasExport.h"
#include "cow_String.h"
#include "mem_Alloc.h"

// A digest being computed. A plain value, copyable (a copy goes on by itself); one thread at
// a time. No failures but running out of memory for the hex text.
class VRKLNU_EXPORT uti_MD5 : public mem_AllocationOperators {
 public:
  static constexpr int kDigestSize = 16;

  uti_MD5() { Reset(); }

  // Forgets all bytes given so far.
  void Reset();
  // Adds `size` bytes at `data` to the message.
  void Update(const void* data, size_t size);
  void Update(const cow_String& text) { Update(text.c_str(), static_cast<size_t>(text.Length())); }

  // The digest of the bytes given since the start or the last Reset.
  void Digest(unsigned char digest[kDigestSize]) const;
  // The same as 32 lower-case hex digits.
  cow_String HexDigest() const;
  // The hex digest of one piece of data.
  static cow_String HexDigestOf(const void* data, size_t size);

 private:
  // Runs the compression over `count` blocks of 64 bytes.
  void Compress(const unsigned char* blocks, size_t count);

  uint32_t m_State[4];
  uint64_t m_Length;            // bytes given
  unsigned char m_Pending[64];  // the start of an unfinished block: m_Length % 64 bytes
};

#endif  // UTI_MD5_H
