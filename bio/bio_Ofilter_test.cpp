#include "bio_Ofilter.h"

#include <gtest/gtest.h>

#include <cfloat>
#include <climits>
#include <cmath>
#include <cstring>
#include <memory>
#include <optional>
#include <string>
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

// A writer and the reader of what it wrote.
class FilterPair {
 public:
  virtual ~FilterPair() = default;
  virtual bio_Ofilter& Writer() = 0;
  // Called once, after the writes.
  virtual bio_Ifilter& Reader() = 0;
};

class InternalPair : public FilterPair {
 public:
  bio_Ofilter& Writer() override { return m_Writer; }
  bio_Ifilter& Reader() override { return m_Reader; }

 private:
  bio_Buffer m_Buffer{1 << 16};
  bio_OmemoryDevice m_Out{m_Buffer};
  bio_ImemoryDevice m_In{m_Buffer};
  bio_OinternalFilter m_Writer{m_Out};
  bio_IinternalFilter m_Reader{m_In};
};

// The host order is set before the writer is built and put back at the end.
class ExternalPair : public FilterPair {
 public:
  explicit ExternalPair(omi_Swapper::EndianType order) : m_Order(order) {}
  bio_Ofilter& Writer() override { return m_Writer; }
  bio_Ifilter& Reader() override {
    unsigned size;
    const char* bytes = m_Writer.GetBuffer(size);
    return m_Reader.emplace(const_cast<char*>(bytes), size);
  }

 private:
  struct HostOrder {
    explicit HostOrder(omi_Swapper::EndianType order) { bio_setExternalHostOrder(order); }
    ~HostOrder() { bio_setExternalHostOrder(omi_Swapper::HostEndian()); }
  } m_Order;
  bio_OexternalMemFilter m_Writer{0};
  std::optional<bio_IexternalMemFilter> m_Reader;
};

// A small quantum, so that the block grows many times on the way.
class MemPair : public FilterPair {
 public:
  bio_Ofilter& Writer() override { return m_Filter; }
  bio_Ifilter& Reader() override { return m_Filter; }

 private:
  bio_IOmemFilter m_Filter{16};
};

enum PairKind { kInternal, kExternal, kExternalBigEndian, kMemory };

std::unique_ptr<FilterPair> MakePair(PairKind kind) {
  switch (kind) {
    case kInternal:
      return std::make_unique<InternalPair>();
    case kExternal:
      return std::make_unique<ExternalPair>(omi_Swapper::LittleEndian);
    case kExternalBigEndian:
      return std::make_unique<ExternalPair>(omi_Swapper::BigEndian);
    default:
      return std::make_unique<MemPair>();
  }
}

class FilterPairTest : public ::testing::TestWithParam<PairKind> {};

template <class T>
bool Same(const T& a, const T& b) {
  return std::memcmp(&a, &b, sizeof a) == 0;
}

TEST_P(FilterPairTest, EveryTypeComesBack) {
  const std::unique_ptr<FilterPair> pair = MakePair(GetParam());
  bio_Ofilter& out = pair->Writer();
  const double doubles[] = {-0.0, DBL_MAX, 1e-300};
  const float floats[] = {FLT_MIN, -3.5f};
  const unsigned unsigneds[] = {0, UINT_MAX};
  const int ints[] = {INT_MIN, 7};
  const unsigned short unsignedShorts[] = {0, USHRT_MAX};
  const short shorts[] = {SHRT_MIN, -1};
  const unsigned char unsignedChars[] = {0, 0xFF};
  const char chars[] = {'\0', '\xFF'};
  const bool bools[] = {true, false};
  out << doubles[1] << floats[1] << unsigneds[1] << ints[0] << unsignedShorts[1] << shorts[0]
      << unsignedChars[1] << chars[1] << bools[0];
  out.putArray(doubles, 3);
  out.putArray(floats, 2);
  out.putArray(unsigneds, 2);
  out.putArray(ints, 2);
  out.putArray(unsignedShorts, 2);
  out.putArray(shorts, 2);
  out.putArray(unsignedChars, 2);
  out.putArray(chars, 2);
  out.putArray(bools, 2);
  out.putString("text");
  out.putString("");
  out << 5 << -2.5 << 1.25f << true;  // read back through the pointer readers
  out << omi_complex(0, 3, 4) << omi_complex(1, 2, 0.5) << omi_complex(2, 2, 90) << 'z';

  bio_Ifilter& in = pair->Reader();
  double d;
  float f;
  unsigned u;
  int i;
  unsigned short us;
  short s;
  unsigned char uc;
  char c;
  bool b;
  in >> d >> f >> u >> i >> us >> s >> uc >> c >> b;
  EXPECT_TRUE(Same(d, doubles[1]) && Same(f, floats[1]) && u == unsigneds[1] && i == ints[0] &&
              us == unsignedShorts[1] && s == shorts[0] && uc == unsignedChars[1] &&
              c == chars[1] && b);

  double doublesBack[3];
  float floatsBack[2];
  unsigned unsignedsBack[2];
  int intsBack[2];
  unsigned short unsignedShortsBack[2];
  short shortsBack[2];
  unsigned char unsignedCharsBack[2];
  char charsBack[2];
  bool boolsBack[2];
  in.getArray(doublesBack, 3);
  in.getArray(floatsBack, 2);
  in.getArray(unsignedsBack, 2);
  in.getArray(intsBack, 2);
  in.getArray(unsignedShortsBack, 2);
  in.getArray(shortsBack, 2);
  in.getArray(unsignedCharsBack, 2);
  in.getArray(charsBack, 2);
  in.getArray(boolsBack, 2);
  EXPECT_TRUE(Same(doublesBack, doubles) && Same(floatsBack, floats) &&
              Same(unsignedsBack, unsigneds) && Same(intsBack, ints) &&
              Same(unsignedShortsBack, unsignedShorts) && Same(shortsBack, shorts) &&
              Same(unsignedCharsBack, unsignedChars) && Same(charsBack, chars) &&
              Same(boolsBack, bools));

  char* text;
  char* empty;
  in >> text >> empty;
  EXPECT_STREQ(text, "text");
  EXPECT_STREQ(empty, "");
  int* pi;
  double* pd;
  float* pf;
  bool* pb;
  in >> pi >> pd >> pf >> pb;
  EXPECT_TRUE(*pi == 5 && *pd == -2.5 && *pf == 1.25f && *pb);
  for (void* block : {static_cast<void*>(text), static_cast<void*>(empty), static_cast<void*>(pi),
                      static_cast<void*>(pd), static_cast<void*>(pf), static_cast<void*>(pb)})
    mem_Free(block);

  // Tags 0 and 1 keep their numbers; any other tag is sent as modulus and argument in
  // radians under its own tag.
  omi_complex rectangular, polar, degrees;
  in >> rectangular >> polar >> degrees >> c;
  EXPECT_TRUE(rectangular.Tag() == 0 && rectangular.First() == 3 && rectangular.Second() == 4);
  EXPECT_TRUE(polar.Tag() == 1 && polar.First() == 2 && polar.Second() == 0.5);
  EXPECT_EQ(degrees.Tag(), 2);
  EXPECT_DOUBLE_EQ(degrees.First(), 2);
  EXPECT_DOUBLE_EQ(degrees.Second(), M_PI / 2);
  EXPECT_EQ(c, 'z');
}

std::string PairName(const ::testing::TestParamInfo<PairKind>& info) {
  static const char* const kNames[] = {"Internal", "External", "ExternalBigEndian", "Memory"};
  return kNames[info.param];
}

INSTANTIATE_TEST_SUITE_P(AllPairs, FilterPairTest,
                         ::testing::Values(kInternal, kExternal, kExternalBigEndian, kMemory),
                         PairName);

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
