// The read program shared by the reader fuzz targets: bytes taken from the end of the input
// choose a sequence of typed reads, the rest of the input is what the reader reads. Every
// typed read of a filter takes part: the nine scalars, arrays of any length of the nine
// types, strings, new values through a pointer, complex numbers, raw bytes and peeks.
//
// A read may raise omi_FatalError (the bytes were cut short, or the device ran dry) or
// std::bad_alloc (a string longer than the memory limit the target sets); both are the
// readers' documented failures and the program goes on with the next read. Anything else, a
// crash or a sanitizer report, is a finding.
#ifndef BIO_FUZZREADS_H
#define BIO_FUZZREADS_H

#include <fuzzer/FuzzedDataProvider.h>

#include <algorithm>
#include <memory>
#include <new>
#include <tuple>
#include <type_traits>
#include <utility>
#include <vector>

#include "bio_Ifilter.h"
#include "mem_Alloc.h"
#include "omi_FatalError.h"
#include "omi_complex.h"

// Exposes the protected peek of a reader.
template <class Filter>
struct bio_FuzzPeeking : Filter {
  using Filter::Filter;
  using Filter::shortSwap;
};

namespace bio_fuzz {

using Scalars =
    std::tuple<double, float, unsigned, int, unsigned short, short, unsigned char, char, bool>;
using Pointed = std::tuple<bool, short, unsigned short, int, unsigned, float, double>;

// A count of elements: mostly small, sometimes any 32-bit value.
inline unsigned Count(FuzzedDataProvider& choices) {
  return choices.ConsumeBool() ? choices.ConsumeIntegralInRange<unsigned>(0, 64)
                               : choices.ConsumeIntegral<unsigned>();
}

// Room for `n` elements, held to one more than the bytes there are: a reader that keeps to
// its bytes never writes past it, and one that doesn't is caught by the sanitizer.
template <class T>
std::unique_ptr<T[]> Room(unsigned n, size_t bytes) {
  return std::unique_ptr<T[]>(new T[std::max<size_t>(1, std::min<size_t>(n, bytes + 1))]);
}

template <class T>
void Scalar(bio_Ifilter& in) {
  T value;
  in >> value;
}

template <class T>
void Array(bio_Ifilter& in, unsigned n, size_t bytes) {
  std::unique_ptr<T[]> values = Room<T>(n, bytes);
  in.getArray(values.get(), n);
}

// The block is the caller's as soon as it is made, also when the read then fails.
template <class T>
void Owned(bio_Ifilter& in) {
  T* block = nullptr;
  try {
    in >> block;
  } catch (...) {
    mem_Free(block);
    throw;
  }
  mem_Free(block);
}

template <class Tuple, class Read, size_t... I>
void ByType(size_t type, Read read, std::index_sequence<I...>) {
  ((type == I ? read(static_cast<std::tuple_element_t<I, Tuple>*>(nullptr)) : void()), ...);
}

template <class Tuple, class Read>
void ByType(FuzzedDataProvider& choices, Read read) {
  constexpr size_t kTypes = std::tuple_size<Tuple>::value;
  ByType<Tuple>(choices.ConsumeIntegralInRange<size_t>(0, kTypes - 1), read,
                std::make_index_sequence<kTypes>());
}

template <class Filter>
void ReadOnce(bio_FuzzPeeking<Filter>& in, FuzzedDataProvider& choices, size_t bytes) {
  switch (choices.ConsumeIntegralInRange<int>(0, 6)) {
    case 0:
      return ByType<Scalars>(
          choices, [&](auto* type) { Scalar<std::remove_pointer_t<decltype(type)>>(in); });
    case 1: {
      const unsigned n = Count(choices);
      return ByType<Scalars>(
          choices, [&](auto* type) { Array<std::remove_pointer_t<decltype(type)>>(in, n, bytes); });
    }
    case 2:
      return Owned<char>(in);
    case 3:
      return ByType<Pointed>(choices,
                             [&](auto* type) { Owned<std::remove_pointer_t<decltype(type)>>(in); });
    case 4: {
      omi_complex value;
      in >> value;
      return;
    }
    case 5: {
      const unsigned n = Count(choices);
      std::unique_ptr<char[]> raw = Room<char>(n, bytes);
      char* dst = raw.get();
      return in.getChars(dst, n);
    }
    default: {
      char peeked[16];
      return in.shortSwap(peeked, choices.ConsumeIntegralInRange<unsigned>(0, sizeof peeked));
    }
  }
}

}  // namespace bio_fuzz

// The bytes for the reader, from the front of the input; the rest is left to choose reads.
inline std::vector<char> bio_FuzzBytes(FuzzedDataProvider& input) {
  return input.ConsumeBytes<char>(input.ConsumeIntegralInRange<size_t>(0, input.remaining_bytes()));
}

// Runs reads on `in` while `choices` has bytes for them; `bytes` is what the reader holds.
template <class Filter>
void bio_FuzzReads(bio_FuzzPeeking<Filter>& in, FuzzedDataProvider& choices, size_t bytes) {
  for (int reads = choices.ConsumeIntegralInRange<int>(0, 64); reads > 0; --reads) {
    try {
      bio_fuzz::ReadOnce(in, choices, bytes);
    } catch (const omi_FatalError&) {
    } catch (const std::bad_alloc&) {
    }
  }
}

#endif  // BIO_FUZZREADS_H
