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

void bio_Ofilter::PutValue(const void* value, bio_Element element) {
  shortMove(static_cast<const char*>(value), element.size);
}

void bio_Ofilter::PutValues(const void* values, unsigned n, bio_Element element) {
  const char* bytes = static_cast<const char*>(values);
  bio_inPieces(size_t{n} * element.size,
               [&](size_t offset, unsigned count) { longMove(bytes + offset, count); });
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
