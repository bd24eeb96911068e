// The external form shared by bio_OexternalMemFilter and bio_IexternalMemFilter: elements of
// 1, 2, 4 or 8 bytes, little-endian on every host.
#ifndef BIO_EXTERNALFORM_H
#define BIO_EXTERNALFORM_H

#include <cstddef>
#include <cstring>

#include "VRKBasExport.h"
#include "omi_Swapper.h"

// Whether the external filters must reverse the bytes of wider elements, that is whether the
// host is big-endian. Each external filter takes the answer once, when it is built.
VRKLNU_EXPORT bool bio_externalFormSwaps();

// Test hook: the byte order that external filters built from now on take the host to have.
// With BigEndian on a little-endian machine, the byte-reversing path runs and must give the
// same bytes. Not for use outside tests.
VRKLNU_EXPORT void bio_setExternalHostOrder(omi_Swapper::EndianType order);

// The size, as a power of two, of the element that shortSwap moves for `n` bytes: 2, 4 and 8
// bytes are one element, any other count moves a single byte.
inline unsigned bio_swapSizeLog2(unsigned n) {
  return n == 2 ? 1 : n == 4 ? 2 : n == 8 ? 3 : 0;
}

// Copies `count` elements of 1 << sizeLog2 bytes from `src` to `dst`. With `swap`, the bytes
// of each wider element are reversed; otherwise, and for bytes, it is one memcpy. The same
// move serves both directions, since reversing is its own inverse. Moving nothing touches
// neither side, which may then be null (a reader with no buffer).
inline void bio_moveElements(void* dst, const void* src, size_t count, unsigned sizeLog2,
                             bool swap) {
  const size_t bytes = count << sizeLog2;
  if (!swap || sizeLog2 == 0) {
    if (bytes != 0) std::memcpy(dst, src, bytes);
    return;
  }
  char* to = static_cast<char*>(dst);
  const char* from = static_cast<const char*>(src);
  const size_t size = size_t{1} << sizeLog2;
  for (size_t at = 0; at < bytes; at += size)
    for (size_t k = 0; k < size; ++k)
      to[at + k] = from[at + size - 1 - k];
}

#endif  // BIO_EXTERNALFORM_H
