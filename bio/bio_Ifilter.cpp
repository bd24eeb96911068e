#include "bio_Ifilter.h"

#include <cerrno>
#include <cstring>
#include <new>

#include "bio_Idevice.h"
#include "bio_IexternalMemFilter.h"
#include "internal/bio_Transfer.h"
#include "omi_FatalError.h"
#include "omi_complex.h"

namespace {

constexpr unsigned kObjectBuckets = 2047;

// What a scalar read meets when the device has nothing more to give.
[[noreturn]] void RaiseBrokenConnection() {
  throw omi_FatalError("The other side of the connection exited breaking the socket connection",
                       errno);
}

template <class T>
bio_Ifilter& ReadNew(bio_Ifilter& in, T*& p) {
  p = ::new (mem_OperatorNewThrowBuiltin(sizeof(T))) T();
  return in >> *p;
}

}  // namespace

bio_Ifilter::bio_Ifilter(bio_Idevice* device) : objectTable(kObjectBuckets), device(device) {}

bio_Ifilter::~bio_Ifilter() = default;

void bio_Ifilter::getChars(char*& dst, unsigned n) {
  longMove(dst, n);
}

void bio_Ifilter::GetValue(void* value, bio_Element element) {
  if (!element.isBool) return shortMove(static_cast<char*>(value), element.size);
  char byte;
  shortMove(&byte, 1);
  *static_cast<bool*>(value) = byte != 0;
}

void bio_Ifilter::GetValues(void* values, unsigned n, bio_Element element) {
  char* bytes = static_cast<char*>(values);
  bio_inPieces(size_t{n} * element.size,
               [&](size_t offset, unsigned count) { longMove(bytes + offset, count); });
  if (element.isBool) bio_normalizeBools(static_cast<bool*>(values), n);
}

bio_Ifilter& bio_Ifilter::operator>>(char*& s) {
  int length;
  get(length);
  if (length < 0) throw omi_FatalError("bio_Ifilter: a string with a negative length", 0);
  // A buffer from another machine knows what it holds: a length past that is refused before
  // the block is made.
  if (auto* external = dynamic_cast<bio_IexternalMemFilter*>(this)) external->RequireString(length);
  s = static_cast<char*>(mem_OperatorNewThrowBuiltin(size_t(length) + 1));
  s[length] = '\0';
  char* bytes = s;
  getChars(bytes, static_cast<unsigned>(length));
  return *this;
}

void bio_Ifilter::longMove(char* dst, unsigned n) {
  bio_transfer(
      *device, n,
      [dst](const char* span, unsigned done, unsigned count) {
        std::memcpy(dst + done, span, count);
      },
      RaiseBrokenConnection);
}

void bio_Ifilter::shortMove(char* dst, unsigned n) {
  bio_transfer(
      *device, n,
      [dst](const char* span, unsigned done, unsigned count) {
        bio_copyBytes(dst + done, span, count);
      },
      RaiseBrokenConnection);
}

void bio_Ifilter::shortSwap(char* dst, unsigned n) {
  bio_transfer(
      *device, n,
      [dst, n](const char* span, unsigned done, unsigned count) {
        bio_copyReversed(dst + n - done - count, span, count);
      },
      RaiseBrokenConnection);
}

bio_Ifilter& operator>>(bio_Ifilter& in, bool*& p) {
  return ReadNew(in, p);
}
bio_Ifilter& operator>>(bio_Ifilter& in, short*& p) {
  return ReadNew(in, p);
}
bio_Ifilter& operator>>(bio_Ifilter& in, unsigned short*& p) {
  return ReadNew(in, p);
}
bio_Ifilter& operator>>(bio_Ifilter& in, int*& p) {
  return ReadNew(in, p);
}
bio_Ifilter& operator>>(bio_Ifilter& in, unsigned*& p) {
  return ReadNew(in, p);
}
bio_Ifilter& operator>>(bio_Ifilter& in, float*& p) {
  return ReadNew(in, p);
}
bio_Ifilter& operator>>(bio_Ifilter& in, double*& p) {
  return ReadNew(in, p);
}

bio_Ifilter& operator>>(bio_Ifilter& in, omi_complex& value) {
  int tag;
  double first, second;
  in >> tag >> first >> second;
  value = omi_complex(tag, first, second);
  return in;
}

bio_IinternalFilter::~bio_IinternalFilter() = default;
