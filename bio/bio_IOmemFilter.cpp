#include "bio_IOmemFilter.h"

#include <cassert>
#include <cerrno>
#include <cstring>

#include "internal/bio_Transfer.h"
#include "omi_FatalError.h"

bio_IOmemFilter::bio_IOmemFilter(size_t quantum)
    : bio_OfilterOf(nullptr), bio_IfilterOf(nullptr), quantum(quantum) {
  // The block grows in multiples of the quantum, so 0 would divide by zero later.
  if (quantum == 0) throw omi_FatalError("bio_IOmemFilter: the quantum must not be 0", EINVAL);
  base = writeCursor = readCursor = static_cast<char*>(mem_OperatorNewThrowBuiltin(quantum));
  limit = base + quantum;
}

bio_IOmemFilter::~bio_IOmemFilter() {
  mem_Free(base);
}

// A block of the capacity plus `n` bytes, rounded up to the quantum, holding what was written.
void bio_IOmemFilter::Grow(unsigned n) {
  const size_t wanted = (static_cast<size_t>(limit - base) + n + quantum - 1) / quantum * quantum;
  char* block = static_cast<char*>(mem_OperatorNewThrowBuiltin(wanted));
  const size_t written = static_cast<size_t>(writeCursor - base);
  const size_t read = static_cast<size_t>(readCursor - base);
  std::memcpy(block, base, written);
  mem_Free(base);
  base = block;
  limit = block + wanted;
  writeCursor = block + written;
  readCursor = block + read;
}

// Room for `n` bytes at the write cursor, which moves past them. This and the helpers below
// are inline, so that they stay out of the exported interface and the scalar paths inline
// them instead of calling them through the PLT.
inline char* bio_IOmemFilter::Append(unsigned n) {
  if (n > static_cast<size_t>(limit - writeCursor)) Grow(n);
  char* at = writeCursor;
  writeCursor += n;
  return at;
}

// The next `n` written bytes at the read cursor, which moves past them.
inline const char* bio_IOmemFilter::Take(unsigned n) {
  assert(n <= static_cast<size_t>(writeCursor - readCursor) && "read past the written bytes");
  const char* at = readCursor;
  readCursor += n;
  return at;
}

void bio_IOmemFilter::PutValue(const void* value, bio_Element element) {
  std::memcpy(Append(element.size), value, element.size);
}

// The byte of a bool is loaded as such, so that a bool never holds another value than 0 or 1.
void bio_IOmemFilter::GetValue(void* value, bio_Element element) {
  const char* bytes = Take(element.size);
  if (element.isBool)
    *static_cast<bool*>(value) = *bytes != 0;
  else
    std::memcpy(value, bytes, element.size);
}

void bio_IOmemFilter::longMove(const char* src, unsigned n) {
  std::memcpy(Append(n), src, n);
}

void bio_IOmemFilter::shortMove(const char* src, unsigned n) {
  bio_copyBytes(Append(n), src, n);
}

void bio_IOmemFilter::shortSwap(const char* src, unsigned n) {
  bio_copyReversed(Append(n), src, n);
}

void bio_IOmemFilter::longMove(char* dst, unsigned n) {
  std::memcpy(dst, Take(n), n);
}

void bio_IOmemFilter::shortMove(char* dst, unsigned n) {
  bio_copyBytes(dst, Take(n), n);
}

void bio_IOmemFilter::shortSwap(char* dst, unsigned n) {
  bio_copyReversed(dst, Take(n), n);
}
