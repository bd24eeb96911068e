#include "utl_Crc32.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

namespace {

// The register stepped one bit at a time, as the checksum is defined.
uint32_t BitwiseCrc(uint32_t crc, const unsigned char* p, size_t size) {
  for (size_t i = 0; i < size; ++i) {
    crc ^= uint32_t{p[i]} << 24;
    for (int bit = 0; bit < 8; ++bit)
      crc = (crc & 0x80000000) ? (crc << 1) ^ 0x04C11DB7 : crc << 1;
  }
  return crc;
}

TEST(UtlCrc32, KnownValues) {
  const std::string check = "123456789";
  EXPECT_EQ(utl_Crc32::Update(utl_Crc32::kInitial, check.data(), check.size()), 0x0376E6E7u);
  EXPECT_EQ(utl_Crc32::UpdatePortable(utl_Crc32::kInitial, check.data(), check.size()),
            0x0376E6E7u);
  EXPECT_EQ(utl_Crc32::Update(utl_Crc32::kInitial, nullptr, 0), 0xFFFFFFFFu);
}

// Every path against the definition, over lengths around the block sizes of the fast paths,
// at every alignment, from random registers, and carried on over two pieces.
TEST(UtlCrc32, EveryPathAgreesWithTheDefinition) {
  std::mt19937 random(14);
  std::vector<unsigned char> data(5000 + 16);
  for (unsigned char& byte : data)
    byte = static_cast<unsigned char>(random());
  std::vector<size_t> lengths = {0, 1, 15, 16, 17, 127, 128, 129, 255, 256, 257, 383, 384, 4099};
  for (int i = 0; i < 40; ++i)
    lengths.push_back(random() % 5000);
  for (size_t length : lengths)
    for (size_t alignment = 0; alignment < 16; alignment += 3) {
      const unsigned char* p = data.data() + alignment;
      const uint32_t start = static_cast<uint32_t>(random());
      const uint32_t expected = BitwiseCrc(start, p, length);
      EXPECT_EQ(utl_Crc32::UpdatePortable(start, p, length), expected) << length;
      EXPECT_EQ(utl_Crc32::Update(start, p, length), expected) << length;
      const size_t split = length / 3;
      EXPECT_EQ(utl_Crc32::Update(utl_Crc32::Update(start, p, split), p + split, length - split),
                expected)
          << length;
    }
}

}  // namespace
