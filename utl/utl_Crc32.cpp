#include "utl_Crc32.h"

#include <array>

#if defined(__x86_64__)
#include <immintrin.h>
#endif

namespace {

// The polynomial with its x^32 term.
constexpr uint64_t kPolynomial = 0x104C11DB7;

// Slicing by 16: table k gives the register change of one byte followed by k zero bytes, so
// sixteen bytes take sixteen look-ups and no dependency from one byte to the next.
constexpr int kSlices = 16;
using Tables = std::array<std::array<uint32_t, 256>, kSlices>;

constexpr Tables MakeTables() {
  Tables tables{};
  for (uint32_t byte = 0; byte < 256; ++byte) {
    uint32_t crc = byte << 24;
    for (int bit = 0; bit < 8; ++bit)
      crc = (crc & 0x80000000) ? (crc << 1) ^ static_cast<uint32_t>(kPolynomial) : crc << 1;
    tables[0][byte] = crc;
  }
  for (int k = 1; k < kSlices; ++k)
    for (int byte = 0; byte < 256; ++byte) {
      const uint32_t previous = tables[k - 1][byte];
      tables[k][byte] = (previous << 8) ^ tables[0][previous >> 24];
    }
  return tables;
}

constexpr Tables kTables = MakeTables();

uint32_t LoadBigEndian(const unsigned char* p) {
  return uint32_t{p[0]} << 24 | uint32_t{p[1]} << 16 | uint32_t{p[2]} << 8 | p[3];
}

// Of word `w` of a 16-byte step, the tables for its four bytes, first byte highest.
uint32_t Slice(uint32_t w, int word) {
  const int top = kSlices - 1 - 4 * word;
  return kTables[top][w >> 24] ^ kTables[top - 1][(w >> 16) & 0xff] ^
         kTables[top - 2][(w >> 8) & 0xff] ^ kTables[top - 3][w & 0xff];
}

uint32_t Portable(uint32_t crc, const unsigned char* p, size_t size) {
  for (; size >= kSlices; p += kSlices, size -= kSlices) {
    crc = Slice(LoadBigEndian(p) ^ crc, 0) ^ Slice(LoadBigEndian(p + 4), 1) ^
          Slice(LoadBigEndian(p + 8), 2) ^ Slice(LoadBigEndian(p + 12), 3);
  }
  for (; size > 0; ++p, --size)
    crc = kTables[0][(crc >> 24) ^ *p] ^ (crc << 8);
  return crc;
}

#if defined(__x86_64__)

// Folding with carry-less multiplication. A 128-bit register X stands for the message read so
// far modulo the polynomial P, message bit order kept (first byte in the top bits). Moving X
// past n further bits multiplies it by x^n: with X = H x^64 + L that is
// H (x^(n+64) mod P) + L (x^n mod P), two 64 by 32-bit products that fit in 128 bits, and the
// next n bits are added with an exclusive-or. Eight registers take 128 bytes a round
// (n = 1024), then fold into one (n = 128); the 16 bytes of the last register are a message
// whose CRC from 0 is the CRC of everything folded, and the table path ends the work. The
// three-operand AVX forms of the instructions save the register copies of the older ones.
constexpr uint64_t XPowerModP(int n) {
  uint64_t r = 1;
  for (int i = 0; i < n; ++i) {
    r <<= 1;
    if (r & (uint64_t{1} << 32)) r ^= kPolynomial;
  }
  return r;
}

// The pairs (x^(n+64) mod P, x^n mod P) for n = 1024 and n = 128.
constexpr uint64_t kFold1024High = XPowerModP(1024 + 64);
constexpr uint64_t kFold1024Low = XPowerModP(1024);
constexpr uint64_t kFold128High = XPowerModP(128 + 64);
constexpr uint64_t kFold128Low = XPowerModP(128);

constexpr int kLanes = 8;

// Sixteen bytes in message bit order: the first byte in the top bits.
__attribute__((target("pclmul,ssse3,avx"))) __m128i Load(const unsigned char* p) {
  const __m128i reverse = _mm_set_epi8(0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15);
  return _mm_shuffle_epi8(_mm_loadu_si128(reinterpret_cast<const __m128i*>(p)), reverse);
}

__attribute__((target("pclmul,ssse3,avx"))) __m128i Fold(__m128i x, __m128i k, __m128i next) {
  return _mm_xor_si128(
      _mm_xor_si128(_mm_clmulepi64_si128(x, k, 0x11), _mm_clmulepi64_si128(x, k, 0x00)), next);
}

__attribute__((target("pclmul,ssse3,avx"))) uint32_t Carryless(uint32_t crc, const unsigned char* p,
                                                               size_t size) {
  const __m128i fold1024 = _mm_set_epi64x(kFold1024High, kFold1024Low);
  const __m128i fold128 = _mm_set_epi64x(kFold128High, kFold128Low);
  __m128i lanes[kLanes];
  for (int i = 0; i < kLanes; ++i)
    lanes[i] = Load(p + 16 * i);
  // The register so far is added to the first 32 bits of the message.
  lanes[0] = _mm_xor_si128(lanes[0], _mm_set_epi32(static_cast<int>(crc), 0, 0, 0));
  p += 16 * kLanes;
  size -= 16 * kLanes;
  for (; size >= 16 * kLanes; p += 16 * kLanes, size -= 16 * kLanes)
    for (int i = 0; i < kLanes; ++i)
      lanes[i] = Fold(lanes[i], fold1024, Load(p + 16 * i));
  __m128i x = lanes[0];
  for (int i = 1; i < kLanes; ++i)
    x = Fold(x, fold128, lanes[i]);
  for (; size >= 16; p += 16, size -= 16)
    x = Fold(x, fold128, Load(p));
  const __m128i reverse = _mm_set_epi8(0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15);
  unsigned char folded[16];
  _mm_storeu_si128(reinterpret_cast<__m128i*>(folded), _mm_shuffle_epi8(x, reverse));
  return Portable(Portable(0, folded, sizeof folded), p, size);
}

// Below this the tables are as fast.
constexpr size_t kCarrylessFrom = 256;

bool CpuHasCarryless() {
  return __builtin_cpu_supports("pclmul") && __builtin_cpu_supports("avx");
}

#else

bool CpuHasCarryless() {
  return false;
}

#endif

}  // namespace

uint32_t utl_Crc32::UpdatePortable(uint32_t crc, const void* data, size_t size) {
  return Portable(crc, static_cast<const unsigned char*>(data), size);
}

bool utl_Crc32::HasCarrylessMultiply() {
  static const bool has = CpuHasCarryless();
  return has;
}

uint32_t utl_Crc32::Update(uint32_t crc, const void* data, size_t size) {
  const unsigned char* bytes = static_cast<const unsigned char*>(data);
#if defined(__x86_64__)
  if (size >= kCarrylessFrom && HasCarrylessMultiply()) return Carryless(crc, bytes, size);
#endif
  return Portable(crc, bytes, size);
}
