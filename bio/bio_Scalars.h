// The scalar types that the filters move, and the one description of an element that a
// filter's encoding is written for. bio_Ofilter and bio_Ifilter have one operation per type
// of bio_Scalars, in that order; a filter writes its encoding once, for any bio_Element, and
// bio_OfilterOf / bio_IfilterOf give it the operation of each type.
#ifndef BIO_SCALARS_H
#define BIO_SCALARS_H

#include <type_traits>

template <class... T>
struct bio_TypeList {};

// In the order of the filters' operations.
using bio_Scalars =
    bio_TypeList<double, float, unsigned, int, unsigned short, short, unsigned char, char, bool>;

// An element type as an encoding sees it.
struct bio_Element {
  unsigned size;      // bytes in memory: 1, 2, 4 or 8
  unsigned sizeLog2;  // the same as a power of two
  bool isSigned;      // a 16-bit value widens by its sign
  bool isBool;        // any non-zero byte reads as true
};

template <class T>
constexpr bio_Element bio_elementOf() {
  static_assert(sizeof(T) == 1 || sizeof(T) == 2 || sizeof(T) == 4 || sizeof(T) == 8);
  return {sizeof(T),
          sizeof(T) == 1   ? 0u
          : sizeof(T) == 2 ? 1u
          : sizeof(T) == 4 ? 2u
                           : 3u,
          std::is_signed<T>::value, std::is_same<T, bool>::value};
}

#endif  // BIO_SCALARS_H
