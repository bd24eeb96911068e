#include "bio_OexternalMemFilter.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/mman.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <vector>

#include "bio_IexternalMemFilter.h"
#include "internal/bio_ExternalForm.h"
#include "mem_Alloc.h"
#include "omi_FatalError.h"

namespace {

using Bytes = std::vector<unsigned char>;

Bytes Output(bio_OexternalMemFilter& writer) {
  unsigned size;
  const char* bytes = writer.GetBuffer(size);
  return Bytes(bytes, bytes + size);
}

// Each test runs with the filters taking the host as the machine is (little-endian here) and
// as big-endian, which runs the byte-reversing path. Values are then given as a big-endian
// host holds them, and must come out as the same bytes. Numbers that the filter computes
// itself (widened shorts, string lengths) are in the machine's order, so they are checked
// on the machine's path only, below.
class ExternalFormTest : public ::testing::TestWithParam<omi_Swapper::EndianType> {
 protected:
  void SetUp() override { bio_setExternalHostOrder(GetParam()); }
  void TearDown() override { bio_setExternalHostOrder(omi_Swapper::HostEndian()); }

  // The value as the host that the filters assume holds it in memory.
  template <class T>
  static T Held(T value) {
    if (GetParam() == omi_Swapper::HostEndian()) return value;
    unsigned char bytes[sizeof(T)];
    std::memcpy(bytes, &value, sizeof bytes);
    std::reverse(bytes, bytes + sizeof bytes);
    std::memcpy(&value, bytes, sizeof bytes);
    return value;
  }

  template <class T>
  void ExpectImage(T value, const Bytes& image) {
    bio_OexternalMemFilter writer(0);
    writer << Held(value);
    EXPECT_EQ(Output(writer), image) << +value;
  }
};

// The round trips are in the filter pair tests.
TEST_P(ExternalFormTest, ScalarsHaveTheirByteImages) {
  ExpectImage(1.5, {0, 0, 0, 0, 0, 0, 0xF8, 0x3F});
  ExpectImage(-2.0f, {0, 0, 0, 0xC0});
  ExpectImage(0x01020304u, {4, 3, 2, 1});
  ExpectImage(-2, {0xFE, 0xFF, 0xFF, 0xFF});
  ExpectImage<unsigned char>(0xAB, {0xAB});
  ExpectImage('a', {0x61});
  ExpectImage(true, {1});
  ExpectImage(false, {0});
}

TEST_P(ExternalFormTest, ArraysAreTheirElementsInOrderWithNoCount) {
  const int ints[] = {Held(1), Held(-1)};
  const double doubles[] = {Held(1.5)};
  const char chars[] = {'x', 'y'};
  bio_OexternalMemFilter writer(0);
  writer.putArray(ints, 2);
  writer.putArray(doubles, 1);
  writer.putArray(chars, 2);
  EXPECT_EQ(Output(writer),
            (Bytes{1, 0, 0, 0, 0xFF, 0xFF, 0xFF, 0xFF, 0, 0, 0, 0, 0, 0, 0xF8, 0x3F, 'x', 'y'}));
}

// shortSwap peeks: it reads one element in the external order and leaves the cursor.
TEST_P(ExternalFormTest, ShortSwapPeeksAtTheNextElement) {
  struct Peeker : bio_IexternalMemFilter {
    using bio_IexternalMemFilter::bio_IexternalMemFilter;
    using bio_IexternalMemFilter::shortSwap;
  };
  unsigned char bytes[] = {4, 3, 2, 1};
  Peeker reader(reinterpret_cast<char*>(bytes), sizeof bytes);
  unsigned first = 0, second = 0, read = 0;
  reader.shortSwap(reinterpret_cast<char*>(&first), 4);
  reader.shortSwap(reinterpret_cast<char*>(&second), 4);
  reader >> read;
  EXPECT_EQ(first, Held(0x01020304u));
  EXPECT_EQ(second, first);
  EXPECT_EQ(read, first);
}

INSTANTIATE_TEST_SUITE_P(HostOrders, ExternalFormTest,
                         ::testing::Values(omi_Swapper::LittleEndian, omi_Swapper::BigEndian));

TEST(OexternalMemFilterTest, ShortsWidenBoolsNormalizeAndStringsCarryTheirLength) {
  const short shorts[] = {-1, 2};
  const bool bools[] = {true, false};
  bool two;  // a bool holding 2, which only a bad cast or a memcpy can make
  const unsigned char byte = 2;
  std::memcpy(&two, &byte, 1);
  bio_OexternalMemFilter writer(0);
  writer << short(-1) << static_cast<unsigned short>(65535) << two;
  writer.putString("ab");
  writer.putString("");
  writer.putArray(shorts, 2);
  writer.putArray(bools, 2);
  EXPECT_EQ(Output(writer), (Bytes{0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0, 0, 1,     // scalars
                                   2,    0,    0,    0,    'a',  'b',  0, 0, 0, 0,  // strings
                                   0xFF, 0xFF, 0xFF, 0xFF, 2,    0,    0, 0, 1, 0}));
}

TEST(OexternalMemFilterTest, ThreeMiBComeBackInOrderAsOneBlockAndWritingGoesOn) {
  constexpr unsigned kInts = 3u << 18;  // 3 MiB
  bio_OexternalMemFilter writer(0);
  unsigned size = 1;
  writer.GetBuffer(size);
  EXPECT_EQ(size, 0u);
  for (unsigned i = 0; i < kInts; ++i)
    writer << i;

  // The block holds 0, 1, 2 ... in order, and nothing more.
  auto expectCounting = [](const char* block, unsigned size, unsigned ints) {
    ASSERT_EQ(size, ints * 4);
    std::vector<unsigned> back(ints);
    std::memcpy(back.data(), block, size);
    for (unsigned i = 0; i < ints; ++i)
      ASSERT_EQ(back[i], i);
  };
  const char* block = writer.GetBuffer(size);
  expectCounting(block, size, kInts);
  EXPECT_EQ(writer.GetBuffer(size), block);  // joined once, one block from then on
  writer << kInts;
  block = writer.GetBuffer(size);
  expectCounting(block, size, kInts + 1);
}

// The header of a chunk takes 16 bytes of its MiB. With 12 bytes free, one double fits and
// the next goes whole to a new chunk; the 4 bytes left are not part of the output.
TEST(OexternalMemFilterTest, ElementsOverAChunkBoundaryMoveWhole) {
  const std::vector<char> filler((1 << 20) - 16 - 12, 'f');
  const double doubles[] = {1.5, -2.5};
  bio_OexternalMemFilter writer(0);
  writer.putArray(filler.data(), static_cast<unsigned>(filler.size()));
  writer.putArray(doubles, 2);
  unsigned size;
  const char* block = writer.GetBuffer(size);
  ASSERT_EQ(size, filler.size() + sizeof doubles);
  EXPECT_EQ(std::memcmp(block + filler.size(), doubles, sizeof doubles), 0);
}

// GetBuffer reports the size in 32 bits; a write that would pass it raises and writes nothing.
// The source is address space that is never backed: only its first MiB is read.
TEST(OexternalMemFilterTest, OutputIsHeldBelowFourGiB) {
  const size_t kFourGiB = size_t{1} << 32;
  void* source =
      mmap(nullptr, kFourGiB, PROT_READ, MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
  ASSERT_NE(source, MAP_FAILED);
  bio_OexternalMemFilter writer(0);
  writer << 'a';
  EXPECT_THAT(
      [&] { writer.putArray(static_cast<const char*>(source), 0xFFFFFFFFu); },
      ::testing::Throws<omi_FatalError>(::testing::Property(&omi_FatalError::Errno, EFBIG)));
  unsigned size;
  writer.GetBuffer(size);
  EXPECT_EQ(size, 1u);
  munmap(source, kFourGiB);
}

}  // namespace
