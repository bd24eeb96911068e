#include "bio_IexternalMemFilter.h"

#include <cassert>

#include "internal/bio_ExternalForm.h"

namespace {

// Reads each element through the filter's scalar slot: shorts are widened and bools
// normalized in the external form, so their arrays are no single move.
template <class T>
void GetEach(bio_Ifilter& in, T* values, unsigned n) {
  for (unsigned i = 0; i < n; ++i)
    in.get(values[i]);
}

}  // namespace

bio_IexternalMemFilter::bio_IexternalMemFilter(char* buffer, size_t size)
    : bio_Ifilter(nullptr),
      begin(buffer),
      end(buffer + size),
      cursor(buffer),
      m_Swap(bio_externalFormSwaps()) {}

bio_IexternalMemFilter::~bio_IexternalMemFilter() = default;

// The path of every read. Inline, so that it stays out of the exported interface and the
// reads inline it instead of calling it through the PLT.
inline void bio_IexternalMemFilter::Get(void* dst, size_t count, unsigned sizeLog2) {
  const size_t bytes = count << sizeLog2;
  assert(bytes <= static_cast<size_t>(end - cursor) && "read past the end of the buffer");
  bio_moveElements(dst, cursor, count, sizeLog2, m_Swap);
  cursor += bytes;
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
  GetEach(*this, values, n);
}
void bio_IexternalMemFilter::getArray(short* values, unsigned n) {
  GetEach(*this, values, n);
}
void bio_IexternalMemFilter::getArray(bool* values, unsigned n) {
  GetEach(*this, values, n);
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
