#include "bio_IexternalMemFilter.h"

#include <cstdint>
#include <cstdio>
#include <cstring>

#include "internal/bio_ExternalForm.h"
#include "internal/bio_Transfer.h"
#include "omi_FatalError.h"

namespace {

// Out of the reads' way: the buffer ends before `bytes` of `what`.
[[noreturn]] __attribute__((noinline, cold)) void RaiseTruncated(const char* what, size_t bytes,
                                                                 size_t left) {
  char text[160];
  std::snprintf(text, sizeof text,
                "bio_IexternalMemFilter: input truncated: %s of %zu byte%s with %zu left", what,
                bytes, bytes == 1 ? "" : "s", left);
  throw omi_FatalError(text, 0);
}

}  // namespace

bio_IexternalMemFilter::bio_IexternalMemFilter(char* buffer, size_t size)
    : bio_IfilterOf(nullptr),
      begin(buffer),
      end(buffer + size),
      cursor(buffer),
      m_Swap(bio_externalFormSwaps()) {}

bio_IexternalMemFilter::~bio_IexternalMemFilter() = default;

// Every read is held against the end of the buffer first; one comparison, with the raise
// out of line. Inline, so that it stays out of the exported interface and the reads inline
// it instead of calling it through the PLT.
inline void bio_IexternalMemFilter::Require(size_t count, unsigned sizeLog2) const {
  const size_t bytes = count << sizeLog2;
  const size_t left = static_cast<size_t>(end - cursor);
  if (__builtin_expect(bytes > left, 0))
    RaiseTruncated(count == 1 ? "a value" : "an array", bytes, left);
}

// The path of every read.
inline void bio_IexternalMemFilter::Get(void* dst, size_t count, unsigned sizeLog2) {
  Require(count, sizeLog2);
  bio_moveElements(dst, cursor, count, sizeLog2, m_Swap);
  cursor += count << sizeLog2;
}

void bio_IexternalMemFilter::RequireString(int length) const {
  const size_t left = static_cast<size_t>(end - cursor);
  if (static_cast<size_t>(length) > left) RaiseTruncated("a string", length, left);
}

void bio_IexternalMemFilter::GetValue(void* value, bio_Element element) {
  if (element.sizeLog2 == 1) {
    uint32_t wide;
    Get(&wide, 1, 2);
    const uint16_t low = static_cast<uint16_t>(wide);
    std::memcpy(value, &low, 2);
    return;
  }
  if (element.isBool) {
    unsigned char byte;
    Get(&byte, 1, 0);
    *static_cast<bool*>(value) = byte != 0;
    return;
  }
  Get(value, 1, element.sizeLog2);
}

void bio_IexternalMemFilter::GetValues(void* values, unsigned n, bio_Element element) {
  if (element.sizeLog2 != 1) {
    Get(values, n, element.sizeLog2);
    if (element.isBool) bio_normalizeBools(static_cast<bool*>(values), n);
    return;
  }
  Require(n, 2);
  char* bytes = static_cast<char*>(values);
  for (unsigned i = 0; i < n; ++i)
    GetValue(bytes + size_t{i} * 2, element);
}

void bio_IexternalMemFilter::longMove(char* dst, unsigned n) {
  Get(dst, n, 0);
}

void bio_IexternalMemFilter::shortMove(char* dst, unsigned n) {
  longMove(dst, n);
}

void bio_IexternalMemFilter::shortSwap(char* dst, unsigned n) {
  char* const at = cursor;
  Get(dst, 1, bio_swapSizeLog2(n));
  cursor = at;
}
