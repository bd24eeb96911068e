// The moves of the internal filters between a device's spans and the caller's memory.
#ifndef BIO_TRANSFER_H
#define BIO_TRANSFER_H

#include <cstddef>

// Copies `count` bytes one by one, up to 8 a turn. Scalars take this path; written out like
// this, the compiler makes no call to memcpy of it.
inline void bio_copyBytes(char* dst, const char* src, unsigned count) {
  while (count > 0) {
    const unsigned turn = count < 8 ? count : 8;
    // clang-format off
    switch (turn) {
      case 8: dst[7] = src[7]; [[fallthrough]];
      case 7: dst[6] = src[6]; [[fallthrough]];
      case 6: dst[5] = src[5]; [[fallthrough]];
      case 5: dst[4] = src[4]; [[fallthrough]];
      case 4: dst[3] = src[3]; [[fallthrough]];
      case 3: dst[2] = src[2]; [[fallthrough]];
      case 2: dst[1] = src[1]; [[fallthrough]];
      default: dst[0] = src[0];
    }
    // clang-format on
    dst += turn;
    src += turn;
    count -= turn;
  }
}

// Copies `count` bytes with their order reversed: dst[k] is src[count - 1 - k].
inline void bio_copyReversed(char* dst, const char* src, unsigned count) {
  for (unsigned k = 0; k < count; ++k)
    dst[k] = src[count - 1 - k];
}

// Moves `n` bytes through the spans of `device`: `copy(span, done, count)` moves `count`
// bytes between the span and the caller's bytes from `done` on. An empty span is asked for
// again, unless `onEmpty` (called then) raises.
template <class Device, class Copy, class OnEmpty>
void bio_transfer(Device& device, unsigned n, Copy copy, OnEmpty onEmpty) {
  for (unsigned done = 0; done < n;) {
    char* span = nullptr;
    unsigned count = device.span(span);
    if (count == 0) {
      onEmpty();
      continue;
    }
    if (count > n - done) count = n - done;
    copy(span, done, count);
    device.advance(count);
    done += count;
  }
}

// Makes every byte of a bool array that was read as it came 0 or 1, as the scalar read
// does, so that no bool holds another value.
inline void bio_normalizeBools(bool* values, unsigned n) {
  unsigned char* bytes = reinterpret_cast<unsigned char*>(values);
  for (unsigned i = 0; i < n; ++i)
    bytes[i] = bytes[i] != 0;
}

// Calls `move(offset, count)` over `bytes` in pieces that an unsigned count can hold.
template <class Move>
void bio_inPieces(size_t bytes, Move move) {
  constexpr size_t kPiece = size_t{1} << 30;
  for (size_t offset = 0; offset < bytes; offset += kPiece)
    move(offset, static_cast<unsigned>(bytes - offset < kPiece ? bytes - offset : kPiece));
}

#endif  // BIO_TRANSFER_H
