#include "bio_IexternalMemFilter.h"

#include <cstdio>

#include "internal/bio_ExternalForm.h"
#include "internal/bio_Transfer.h"
#include "omi_FatalError.h"

namespace {

// Reads each element through the filter's scalar slot: shorts are widened in the external
// form, so their arrays are no single move.
template <class T>
void GetEach(bio_Ifilter& in, T* values, unsigned n) {
  for (unsigned i = 0; i < n; ++i)
    in.get(values[i]);
}

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
    : bio_Ifilter(nullptr),
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

void bio_IexternalMemFilter::get(double& value) {
  Get(&value, 1, 3);
}
void bio_IexternalMemFilter::get(float& value) {
  Get(&value, 1, 2);
}
void bio_IexternalMemFilter::get(unsigned& value) {
  Get(&value, 1, 2);
}
void bio_IexternalMemFilter::get(int& value) {
  Get(&value, 1, 2);
}
void bio_IexternalMemFilter::get(unsigned char& value) {
  Get(&value, 1, 0);
}
void bio_IexternalMemFilter::get(char& value) {
  Get(&value, 1, 0);
}

// Shorts come as four bytes; the value is their low half.
void bio_IexternalMemFilter::get(unsigned short& value) {
  unsigned wide;
  Get(&wide, 1, 2);
  value = static_cast<unsigned short>(wide);
}

void bio_IexternalMemFilter::get(short& value) {
  int wide;
  Get(&wide, 1, 2);
  value = static_cast<short>(wide);
}

void bio_IexternalMemFilter::get(bool& value) {
  unsigned char byte;
  Get(&byte, 1, 0);
  value = byte != 0;
}

void bio_IexternalMemFilter::getArray(double* values, unsigned n) {
  Get(values, n, 3);
}
void bio_IexternalMemFilter::getArray(float* values, unsigned n) {
  Get(values, n, 2);
}
void bio_IexternalMemFilter::getArray(unsigned* values, unsigned n) {
  Get(values, n, 2);
}
void bio_IexternalMemFilter::getArray(int* values, unsigned n) {
  Get(values, n, 2);
}
void bio_IexternalMemFilter::getArray(unsigned char* values, unsigned n) {
  Get(values, n, 0);
}
void bio_IexternalMemFilter::getArray(char* values, unsigned n) {
  Get(values, n, 0);
}
void bio_IexternalMemFilter::getArray(unsigned short* values, unsigned n) {
  Require(n, 2);
  GetEach(*this, values, n);
}
void bio_IexternalMemFilter::getArray(short* values, unsigned n) {
  Require(n, 2);
  GetEach(*this, values, n);
}
void bio_IexternalMemFilter::getArray(bool* values, unsigned n) {
  Get(values, n, 0);
  bio_normalizeBools(values, n);
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
