#include "bio_Ofilter.h"

#include <cstring>

#include "bio_Odevice.h"
#include "internal/bio_Transfer.h"
#include "omi_complex.h"

namespace {

constexpr unsigned kObjectBuckets = 2047;

// A writer asks again when the device has no room: the device blocks or raises.
void NothingOnEmpty() {}

}  // namespace

bio_Ofilter::bio_Ofilter(bio_Odevice* device)
    : objectTable(kObjectBuckets), nextObject(1), device(device) {}

bio_Ofilter::~bio_Ofilter() = default;

void bio_Ofilter::putString(const char* s) {
  if (s == nullptr) s = "";
  const int length = static_cast<int>(std::strlen(s));
  put(length);
  longMove(s, static_cast<unsigned>(length));
}

template <class T>
void bio_Ofilter::PutHost(const T& value) {
  shortMove(reinterpret_cast<const char*>(&value), sizeof value);
}

template <class T>
void bio_Ofilter::PutHostArray(const T* values, unsigned n) {
  const char* bytes = reinterpret_cast<const char*>(values);
  bio_inPieces(size_t{n} * sizeof(T),
               [&](size_t offset, unsigned count) { longMove(bytes + offset, count); });
}

void bio_Ofilter::put(const double& value) {
  PutHost(value);
}
void bio_Ofilter::put(const float& value) {
  PutHost(value);
}
void bio_Ofilter::put(const unsigned& value) {
  PutHost(value);
}
void bio_Ofilter::put(const int& value) {
  PutHost(value);
}
void bio_Ofilter::put(const unsigned short& value) {
  PutHost(value);
}
void bio_Ofilter::put(const short& value) {
  PutHost(value);
}
void bio_Ofilter::put(const unsigned char& value) {
  PutHost(value);
}
void bio_Ofilter::put(const char& value) {
  PutHost(value);
}
void bio_Ofilter::put(const bool& value) {
  PutHost(value);
}

void bio_Ofilter::putArray(const double* values, unsigned n) {
  PutHostArray(values, n);
}
void bio_Ofilter::putArray(const float* values, unsigned n) {
  PutHostArray(values, n);
}
void bio_Ofilter::putArray(const unsigned* values, unsigned n) {
  PutHostArray(values, n);
}
void bio_Ofilter::putArray(const int* values, unsigned n) {
  PutHostArray(values, n);
}
void bio_Ofilter::putArray(const unsigned short* values, unsigned n) {
  PutHostArray(values, n);
}
void bio_Ofilter::putArray(const short* values, unsigned n) {
  PutHostArray(values, n);
}
void bio_Ofilter::putArray(const unsigned char* values, unsigned n) {
  PutHostArray(values, n);
}
void bio_Ofilter::putArray(const char* values, unsigned n) {
  PutHostArray(values, n);
}
void bio_Ofilter::putArray(const bool* values, unsigned n) {
  PutHostArray(values, n);
}

void bio_Ofilter::longMove(const char* src, unsigned n) {
  bio_transfer(
      *device, n,
      [src](char* span, unsigned done, unsigned count) { std::memcpy(span, src + done, count); },
      NothingOnEmpty);
}

void bio_Ofilter::shortMove(const char* src, unsigned n) {
  bio_transfer(
      *device, n,
      [src](char* span, unsigned done, unsigned count) { bio_copyBytes(span, src + done, count); },
      NothingOnEmpty);
}

void bio_Ofilter::shortSwap(const char* src, unsigned n) {
  bio_transfer(
      *device, n,
      [src, n](char* span, unsigned done, unsigned count) {
        bio_copyReversed(span, src + n - done - count, count);
      },
      NothingOnEmpty);
}

bio_Ofilter& operator<<(bio_Ofilter& out, const omi_complex& value) {
  const int tag = value.Tag();
  const bool stored = tag == omi_complex::Rectangular || tag == omi_complex::Polar;
  const double first = stored ? value.First() : value.ConvertedModulus();
  const double second = stored ? value.Second() : value.ConvertedArgument();
  return out << tag << first << second;
}

bio_OinternalFilter::~bio_OinternalFilter() = default;
