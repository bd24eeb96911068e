#include "bio_Ofilter.h"

#include <gtest/gtest.h>

#include <array>
#include <cfloat>
#include <climits>
#include <cmath>
#include <cstring>
#include <string>
#include <tuple>
#include <type_traits>
#include <typeinfo>
#include <vector>

#include "bio_IOmemFilter.h"
#include "bio_Idevice.h"
#include "bio_IexternalMemFilter.h"
#include "bio_Ifilter.h"
#include "bio_Odevice.h"
#include "bio_OexternalMemFilter.h"
#include "internal/bio_ExternalForm.h"
#include "mem_Alloc.h"
#include "omi_complex.h"

namespace {

template <class T>
bool Same(const T& a, const T& b) {
  return std::memcmp(&a, &b, sizeof a) == 0;
}

// Values of every type, with the extremes of each.
const auto kValues =
    std::make_tuple(std::array<double, 3>{-0.0, DBL_MAX, 1e-300},
                    std::array<float, 2>{FLT_MIN, -3.5f}, std::array<unsigned, 2>{0, UINT_MAX},
                    std::array<int, 2>{INT_MIN, 7}, std::array<unsigned short, 2>{0, USHRT_MAX},
                    std::array<short, 2>{SHRT_MIN, -1}, std::array<unsigned char, 2>{0, 0xFF},
                    std::array<char, 2>{'\0', '\xFF'}, std::array<bool, 2>{true, false});

template <class T>
void ExpectScalarBack(bio_Ifilter& in, const T& value) {
  T back;
  in >> back;
  EXPECT_TRUE(Same(back, value)) << typeid(T).name();
}

template <class T, size_t N>
void ExpectArrayBack(bio_Ifilter& in, const std::array<T, N>& values) {
  std::array<T, N> back;
  in.getArray(back.data(), N);
  EXPECT_TRUE(Same(back, values)) << typeid(T).name();
}

// Through the reader into a new block, for the types that have one (all but the chars).
template <class T>
void ExpectNewValueBack(bio_Ifilter& in, const T& value) {
  if constexpr (sizeof(T) > 1 || std::is_same_v<T, bool>) {
    T* back = nullptr;
    in >> back;
    EXPECT_TRUE(Same(*back, value)) << typeid(T).name();
    mem_Free(back);
  } else {
    ExpectScalarBack(in, value);
  }
}

void WriteEveryType(bio_Ofilter& out) {
  std::apply(
      [&](const auto&... values) {
        ((out << values.back()), ...);
        (out.putArray(values.data(), values.size()), ...);
        ((out << values.front()), ...);
      },
      kValues);
  out.putString("text");
  out.putString("");
  out << omi_complex(0, 3, 4) << omi_complex(1, 2, 0.5) << omi_complex(2, 2, 90) << 'z';
}

void ExpectEveryType(bio_Ifilter& in) {
  std::apply(
      [&](const auto&... values) {
        (ExpectScalarBack(in, values.back()), ...);
        (ExpectArrayBack(in, values), ...);
        (ExpectNewValueBack(in, values.front()), ...);
      },
      kValues);
  char* text;
  char* empty;
  in >> text >> empty;
  EXPECT_STREQ(text, "text");
  EXPECT_STREQ(empty, "");
  mem_Free(text);
  mem_Free(empty);

  // Tags 0 and 1 keep their numbers; any other tag is sent as modulus and argument in
  // radians under its own tag.
  omi_complex rectangular, polar, degrees;
  char c;
  in >> rectangular >> polar >> degrees >> c;
  EXPECT_TRUE(rectangular.Tag() == 0 && rectangular.First() == 3 && rectangular.Second() == 4);
  EXPECT_TRUE(polar.Tag() == 1 && polar.First() == 2 && polar.Second() == 0.5);
  EXPECT_EQ(degrees.Tag(), 2);
  EXPECT_DOUBLE_EQ(degrees.First(), 2);
  EXPECT_DOUBLE_EQ(degrees.Second(), M_PI / 2);
  EXPECT_EQ(c, 'z');
}

// The internal filters on a memory device, and a memory filter with a small quantum, so that
// its block grows many times on the way.
TEST(FilterPairTest, InternalAndMemoryFilters) {
  bio_Buffer buffer(1 << 16);
  bio_OmemoryDevice out(buffer);
  bio_ImemoryDevice in(buffer);
  bio_OinternalFilter writer(out);
  bio_IinternalFilter reader(in);
  WriteEveryType(writer);
  ExpectEveryType(reader);
  bio_IOmemFilter filter(16);
  WriteEveryType(filter);
  ExpectEveryType(filter);
}

// A bool array stores true for any non-zero byte, as the scalar read does, on both readers.
TEST(FilterPairTest, BoolArraysReadAnyNonZeroByteAsTrue) {
  char bytes[] = {0, 1, 2, '\xFF'};
  auto stored = [](bio_Ifilter&& in) {
    bool values[4];
    in.getArray(values, 4);
    return std::string(reinterpret_cast<const char*>(values), sizeof values);
  };
  bio_Buffer buffer(16);
  std::memcpy(buffer.data, bytes, sizeof bytes);
  buffer.writePos = sizeof bytes;
  bio_ImemoryDevice device(buffer);
  EXPECT_EQ(stored(bio_IinternalFilter(device)), std::string("\0\1\1\1", 4));
  EXPECT_EQ(stored(bio_IexternalMemFilter(bytes, sizeof bytes)), std::string("\0\1\1\1", 4));
}

class ExternalFilterPairTest : public ::testing::TestWithParam<omi_Swapper::EndianType> {
 protected:
  void TearDown() override { bio_setExternalHostOrder(omi_Swapper::HostEndian()); }
};

TEST_P(ExternalFilterPairTest, ExternalFilters) {
  bio_setExternalHostOrder(GetParam());
  bio_OexternalMemFilter writer(0);
  WriteEveryType(writer);
  unsigned size;
  char* bytes = const_cast<char*>(writer.GetBuffer(size));
  bio_IexternalMemFilter reader(bytes, size);
  ExpectEveryType(reader);
}

INSTANTIATE_TEST_SUITE_P(HostOrders, ExternalFilterPairTest,
                         ::testing::Values(omi_Swapper::LittleEndian, omi_Swapper::BigEndian));

// The slot of a virtual function in its class's table of virtual functions, counting the
// destructor once: the Itanium C++ ABI of Linux gives the destructor two entries, and a
// pointer to a virtual member holds 1 plus its entry's offset.
template <class F>
long Slot(F function) {
  struct {
    ptrdiff_t pointer, adjustment;
  } raw;
  static_assert(sizeof function == sizeof raw, "Itanium layout of a member pointer");
  std::memcpy(&raw, &function, sizeof raw);
  return static_cast<long>(static_cast<size_t>(raw.pointer - 1) / sizeof(void*)) - 1;
}

template <class... T>
struct Types {};
using Scalars =
    Types<double, float, unsigned, int, unsigned short, short, unsigned char, char, bool>;

// The slots of the filters in order: those that clients built against the library call.
struct IfilterSlots : bio_Ifilter {
  template <class... T>
  static std::vector<long> All(Types<T...>) {
    return {Slot(&IfilterSlots::getChars),
            Slot(static_cast<void (bio_Ifilter::*)(T&)>(&bio_Ifilter::get))...,
            Slot(static_cast<void (bio_Ifilter::*)(T*, unsigned)>(&bio_Ifilter::getArray))...,
            Slot(&IfilterSlots::longMove),
            Slot(&IfilterSlots::shortMove),
            Slot(&IfilterSlots::shortSwap)};
  }
};

struct OfilterSlots : bio_Ofilter {
  template <class... T>
  static std::vector<long> All(Types<T...>) {
    return {
        Slot(&OfilterSlots::putString),
        Slot(static_cast<void (bio_Ofilter::*)(const T&)>(&bio_Ofilter::put))...,
        Slot(&OfilterSlots::longMove),
        Slot(&OfilterSlots::shortMove),
        Slot(&OfilterSlots::shortSwap),
        Slot(static_cast<void (bio_Ofilter::*)(const T*, unsigned)>(&bio_Ofilter::putArray))...};
  }
};

TEST(FilterSlotsTest, VirtualOperationsKeepTheirOrder) {
  std::vector<long> expected;
  for (long slot = 1; slot <= 22; ++slot)
    expected.push_back(slot);
  EXPECT_EQ(IfilterSlots::All(Scalars()), expected);
  EXPECT_EQ(OfilterSlots::All(Scalars()), expected);
}

}  // namespace
