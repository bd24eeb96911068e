#include "utl_Base64Codec.h"

#include <immintrin.h>

#include <array>
#include <cstring>

// The alphabet is the standard one with '!' in place of '/'. The vector paths handle whole
// blocks of clean input; everything else, stray bytes, padding and the end, goes through the
// scalar rules, which alone decide the result of unclean text.
namespace {

constexpr char kAlphabet[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+!";

// Codes of the decoding table beside the values 0 to 63.
constexpr unsigned char kPad = 64;
constexpr unsigned char kEnd = 65;
constexpr unsigned char kOther = 66;

constexpr std::array<unsigned char, 256> MakeDecodeTable() {
  std::array<unsigned char, 256> table{};
  for (unsigned char& code : table)
    code = kOther;
  for (unsigned char value = 0; value < 64; ++value)
    table[static_cast<unsigned char>(kAlphabet[value])] = value;
  table['='] = kPad;
  table[0] = kEnd;
  return table;
}
constexpr std::array<unsigned char, 256> kDecode = MakeDecodeTable();

// ---- Scalar ------------------------------------------------------------------------------

void EncodeGroup(const unsigned char* in, char* out) {
  const unsigned bits = in[0] << 16 | in[1] << 8 | in[2];
  out[0] = kAlphabet[bits >> 18];
  out[1] = kAlphabet[bits >> 12 & 63];
  out[2] = kAlphabet[bits >> 6 & 63];
  out[3] = kAlphabet[bits & 63];
}

void EncodeTail(const unsigned char* in, size_t n, char* out) {
  for (; n >= 3; n -= 3, in += 3, out += 4)
    EncodeGroup(in, out);
  if (n == 0) return;
  const unsigned char last[3] = {in[0], n == 2 ? in[1] : static_cast<unsigned char>(0), 0};
  EncodeGroup(last, out);
  out[3] = '=';
  if (n == 1) out[2] = '=';
}

// The decoder's state: the input position, counting skipped bytes, and the bytes of the
// group being built.
struct Decoder {
  const unsigned char* in;
  size_t n;
  bool strict;
  unsigned char* out;
  size_t i = 0;
  unsigned char held[3] = {0, 0, 0};

  // Decodes the byte at i. A byte's place in its group is its position modulo 4, stray bytes
  // included, so that a skipped byte shifts the rest: intended, callers pass unbroken text.
  bool Step(utl_Base64Status& status) {
    const unsigned char code = i < n ? kDecode[in[i]] : kEnd;
    const size_t place = i % 4;
    if (code == kOther) {
      if (strict) return Stop(status, utl_Base64Status::kStrictFailure);
    } else if (code == kEnd) {
      return Stop(status, place == 0 ? utl_Base64Status::kDone : utl_Base64Status::kPaddingError);
    } else if (code == kPad) {
      return Pad(place, status);
    } else {
      Take(code, place);
    }
    ++i;
    return true;
  }

  void Take(unsigned char value, size_t place) {
    switch (place) {
      case 0:
        held[0] = static_cast<unsigned char>(value << 2);
        break;
      case 1:
        held[0] |= value >> 4;
        held[1] = static_cast<unsigned char>(value << 4);
        break;
      case 2:
        held[1] |= value >> 2;
        held[2] = static_cast<unsigned char>(value << 6);
        break;
      default:
        held[2] |= value;
        Store(3);
        held[0] = held[1] = held[2] = 0;
    }
  }

  // Padding ends the text: "=" in the last place, or "==" in the last two.
  bool Pad(size_t place, utl_Base64Status& status) {
    if (place == 3) {
      Store(2);
    } else if (place == 2 && i + 1 < n && in[i + 1] == '=') {
      Store(1);
    } else {
      return Stop(status, utl_Base64Status::kPaddingError);
    }
    return Stop(status, utl_Base64Status::kDone);
  }

  // Moves past `count` characters of clean groups that were decoded elsewhere.
  void Skip(size_t count) {
    i += count;
    out += count / 4 * 3;
    held[0] = held[1] = held[2] = 0;
  }

  void Store(int count) {
    std::memcpy(out, held, count);
    out += count;
  }

  static bool Stop(utl_Base64Status& status, utl_Base64Status result) {
    status = result;
    return false;
  }
};

// ---- SSSE3 and AVX2 ----------------------------------------------------------------------
// Encoding: each 32-bit lane takes 3 input bytes, splits them into four 6-bit indices with
// two multiplications, and maps the indices to characters by adding a per-range offset
// looked up with a byte shuffle. Decoding: range tests give each character its offset to
// the value and prove the block clean; two multiply-adds pack four 6-bit values into 3
// bytes per lane.

#define UTL_SSSE3 __attribute__((target("ssse3")))
#define UTL_AVX2 __attribute__((target("avx2")))

UTL_SSSE3 __m128i EncodeIndices(__m128i in) {
  in = _mm_shuffle_epi8(in, _mm_set_epi8(10, 11, 9, 10, 7, 8, 6, 7, 4, 5, 3, 4, 1, 2, 0, 1));
  const __m128i high =
      _mm_mulhi_epu16(_mm_and_si128(in, _mm_set1_epi32(0x0fc0fc00)), _mm_set1_epi32(0x04000040));
  const __m128i low =
      _mm_mullo_epi16(_mm_and_si128(in, _mm_set1_epi32(0x003f03f0)), _mm_set1_epi32(0x01000010));
  return _mm_or_si128(high, low);
}

UTL_SSSE3 __m128i EncodeCharacters(__m128i indices) {
  // 13 for A-Z, 0 for a-z, 1 to 10 for the digits, 11 for '+', 12 for '!'.
  __m128i range = _mm_subs_epu8(indices, _mm_set1_epi8(51));
  const __m128i upper = _mm_cmpgt_epi8(_mm_set1_epi8(26), indices);
  range = _mm_or_si128(range, _mm_and_si128(upper, _mm_set1_epi8(13)));
  const __m128i offsets =
      _mm_setr_epi8('a' - 26, '0' - 52, '0' - 52, '0' - 52, '0' - 52, '0' - 52, '0' - 52, '0' - 52,
                    '0' - 52, '0' - 52, '0' - 52, '+' - 62, '!' - 63, 'A', 0, 0);
  return _mm_add_epi8(_mm_shuffle_epi8(offsets, range), indices);
}

// Encodes blocks of 12 bytes while 16 can be read; returns the bytes done.
UTL_SSSE3 size_t EncodeSsse3(const unsigned char* in, size_t n, char* out) {
  size_t done = 0;
  for (; done + 16 <= n; done += 12, out += 16) {
    const __m128i block = _mm_loadu_si128(reinterpret_cast<const __m128i*>(in + done));
    _mm_storeu_si128(reinterpret_cast<__m128i*>(out), EncodeCharacters(EncodeIndices(block)));
  }
  return done;
}

UTL_AVX2 __m256i EncodeIndices(__m256i in) {
  in = _mm256_shuffle_epi8(in, _mm256_set_epi8(10, 11, 9, 10, 7, 8, 6, 7, 4, 5, 3, 4, 1, 2, 0, 1,
                                               10, 11, 9, 10, 7, 8, 6, 7, 4, 5, 3, 4, 1, 2, 0, 1));
  const __m256i high = _mm256_mulhi_epu16(_mm256_and_si256(in, _mm256_set1_epi32(0x0fc0fc00)),
                                          _mm256_set1_epi32(0x04000040));
  const __m256i low = _mm256_mullo_epi16(_mm256_and_si256(in, _mm256_set1_epi32(0x003f03f0)),
                                         _mm256_set1_epi32(0x01000010));
  return _mm256_or_si256(high, low);
}

UTL_AVX2 __m256i EncodeCharacters(__m256i indices) {
  __m256i range = _mm256_subs_epu8(indices, _mm256_set1_epi8(51));
  const __m256i upper = _mm256_cmpgt_epi8(_mm256_set1_epi8(26), indices);
  range = _mm256_or_si256(range, _mm256_and_si256(upper, _mm256_set1_epi8(13)));
  const __m256i offsets =
      _mm256_setr_epi8('a' - 26, '0' - 52, '0' - 52, '0' - 52, '0' - 52, '0' - 52, '0' - 52,
                       '0' - 52, '0' - 52, '0' - 52, '0' - 52, '+' - 62, '!' - 63, 'A', 0, 0,
                       'a' - 26, '0' - 52, '0' - 52, '0' - 52, '0' - 52, '0' - 52, '0' - 52,
                       '0' - 52, '0' - 52, '0' - 52, '0' - 52, '+' - 62, '!' - 63, 'A', 0, 0);
  return _mm256_add_epi8(_mm256_shuffle_epi8(offsets, range), indices);
}

// Encodes blocks of 24 bytes, 12 to each lane, while 28 can be read; returns the bytes done.
UTL_AVX2 size_t EncodeAvx2(const unsigned char* in, size_t n, char* out) {
  size_t done = 0;
  for (; done + 28 <= n; done += 24, out += 32) {
    const __m128i low = _mm_loadu_si128(reinterpret_cast<const __m128i*>(in + done));
    const __m128i high = _mm_loadu_si128(reinterpret_cast<const __m128i*>(in + done + 12));
    const __m256i block = _mm256_inserti128_si256(_mm256_castsi128_si256(low), high, 1);
    _mm256_storeu_si256(reinterpret_cast<__m256i*>(out), EncodeCharacters(EncodeIndices(block)));
  }
  return done;
}

// The 6-bit values of 16 characters, with a mask of the characters that are in the alphabet.
UTL_SSSE3 __m128i InRange(__m128i c, char first, char last) {
  return _mm_and_si128(_mm_cmpgt_epi8(c, _mm_set1_epi8(static_cast<char>(first - 1))),
                       _mm_cmpgt_epi8(_mm_set1_epi8(static_cast<char>(last + 1)), c));
}

UTL_SSSE3 __m128i DecodeValues(__m128i c, __m128i& valid) {
  const __m128i upper = InRange(c, 'A', 'Z');
  const __m128i lower = InRange(c, 'a', 'z');
  const __m128i digit = InRange(c, '0', '9');
  const __m128i plus = _mm_cmpeq_epi8(c, _mm_set1_epi8('+'));
  const __m128i bang = _mm_cmpeq_epi8(c, _mm_set1_epi8('!'));
  valid = _mm_or_si128(_mm_or_si128(_mm_or_si128(upper, lower), _mm_or_si128(digit, plus)), bang);
  __m128i offset = _mm_and_si128(upper, _mm_set1_epi8(-'A'));
  offset = _mm_or_si128(offset, _mm_and_si128(lower, _mm_set1_epi8(26 - 'a')));
  offset = _mm_or_si128(offset, _mm_and_si128(digit, _mm_set1_epi8(52 - '0')));
  offset = _mm_or_si128(offset, _mm_and_si128(plus, _mm_set1_epi8(62 - '+')));
  offset = _mm_or_si128(offset, _mm_and_si128(bang, _mm_set1_epi8(63 - '!')));
  return _mm_add_epi8(c, offset);
}

// Four 6-bit values to 3 bytes in each lane, in the low 24 bits, highest byte first after a
// shuffle.
UTL_SSSE3 __m128i PackValues(__m128i values) {
  const __m128i pairs = _mm_maddubs_epi16(values, _mm_set1_epi32(0x01400140));
  const __m128i words = _mm_madd_epi16(pairs, _mm_set1_epi32(0x00011000));
  return _mm_shuffle_epi8(words,
                          _mm_setr_epi8(2, 1, 0, 6, 5, 4, 10, 9, 8, 14, 13, 12, -1, -1, -1, -1));
}

// Decodes clean blocks of 16 characters into 12 bytes (storing 16); stops at the first block
// that isn't clean. Returns the characters done.
UTL_SSSE3 size_t DecodeSsse3(const unsigned char* in, size_t n, unsigned char* out) {
  size_t done = 0;
  for (; done + 16 <= n; done += 16, out += 12) {
    __m128i valid;
    const __m128i values =
        DecodeValues(_mm_loadu_si128(reinterpret_cast<const __m128i*>(in + done)), valid);
    if (_mm_movemask_epi8(valid) != 0xffff) break;
    _mm_storeu_si128(reinterpret_cast<__m128i*>(out), PackValues(values));
  }
  return done;
}

UTL_AVX2 __m256i InRange(__m256i c, char first, char last) {
  return _mm256_and_si256(_mm256_cmpgt_epi8(c, _mm256_set1_epi8(static_cast<char>(first - 1))),
                          _mm256_cmpgt_epi8(_mm256_set1_epi8(static_cast<char>(last + 1)), c));
}

UTL_AVX2 __m256i DecodeValues(__m256i c, __m256i& valid) {
  const __m256i upper = InRange(c, 'A', 'Z');
  const __m256i lower = InRange(c, 'a', 'z');
  const __m256i digit = InRange(c, '0', '9');
  const __m256i plus = _mm256_cmpeq_epi8(c, _mm256_set1_epi8('+'));
  const __m256i bang = _mm256_cmpeq_epi8(c, _mm256_set1_epi8('!'));
  valid = _mm256_or_si256(
      _mm256_or_si256(_mm256_or_si256(upper, lower), _mm256_or_si256(digit, plus)), bang);
  __m256i offset = _mm256_and_si256(upper, _mm256_set1_epi8(-'A'));
  offset = _mm256_or_si256(offset, _mm256_and_si256(lower, _mm256_set1_epi8(26 - 'a')));
  offset = _mm256_or_si256(offset, _mm256_and_si256(digit, _mm256_set1_epi8(52 - '0')));
  offset = _mm256_or_si256(offset, _mm256_and_si256(plus, _mm256_set1_epi8(62 - '+')));
  offset = _mm256_or_si256(offset, _mm256_and_si256(bang, _mm256_set1_epi8(63 - '!')));
  return _mm256_add_epi8(c, offset);
}

UTL_AVX2 __m256i PackValues(__m256i values) {
  const __m256i pairs = _mm256_maddubs_epi16(values, _mm256_set1_epi32(0x01400140));
  const __m256i words = _mm256_madd_epi16(pairs, _mm256_set1_epi32(0x00011000));
  const __m256i lanes = _mm256_shuffle_epi8(
      words, _mm256_setr_epi8(2, 1, 0, 6, 5, 4, 10, 9, 8, 14, 13, 12, -1, -1, -1, -1, 2, 1, 0, 6, 5,
                              4, 10, 9, 8, 14, 13, 12, -1, -1, -1, -1));
  return _mm256_permutevar8x32_epi32(lanes, _mm256_setr_epi32(0, 1, 2, 4, 5, 6, 7, 7));
}

// Decodes clean blocks of 32 characters into 24 bytes (storing 32).
UTL_AVX2 size_t DecodeAvx2(const unsigned char* in, size_t n, unsigned char* out) {
  size_t done = 0;
  for (; done + 32 <= n; done += 32, out += 24) {
    __m256i valid;
    const __m256i values =
        DecodeValues(_mm256_loadu_si256(reinterpret_cast<const __m256i*>(in + done)), valid);
    if (_mm256_movemask_epi8(valid) != -1) break;
    _mm256_storeu_si256(reinterpret_cast<__m256i*>(out), PackValues(values));
  }
  return done;
}

size_t EncodeBlocks(utl_Base64Isa isa, const unsigned char* in, size_t n, char* out) {
  switch (isa) {
    case utl_Base64Isa::kAvx2:
      return EncodeAvx2(in, n, out);
    case utl_Base64Isa::kSsse3:
      return EncodeSsse3(in, n, out);
    default:
      return 0;
  }
}

size_t DecodeBlocks(utl_Base64Isa isa, const unsigned char* in, size_t n, unsigned char* out) {
  switch (isa) {
    case utl_Base64Isa::kAvx2:
      return DecodeAvx2(in, n, out);
    case utl_Base64Isa::kSsse3:
      return DecodeSsse3(in, n, out);
    default:
      return 0;
  }
}

}  // namespace

utl_Base64Isa utl_base64BestIsa() {
  __builtin_cpu_init();
  if (__builtin_cpu_supports("avx2")) return utl_Base64Isa::kAvx2;
  if (__builtin_cpu_supports("ssse3")) return utl_Base64Isa::kSsse3;
  return utl_Base64Isa::kScalar;
}

void utl_base64EncodeRun(utl_Base64Isa isa, const unsigned char* in, size_t n, char* out) {
  const size_t done = EncodeBlocks(isa, in, n, out);
  EncodeTail(in + done, n - done, out + done / 3 * 4);
}

utl_Base64Status utl_base64DecodeRun(utl_Base64Isa isa, const char* in, size_t n, bool strict,
                                     unsigned char* out, size_t& length) {
  Decoder decoder{reinterpret_cast<const unsigned char*>(in), n, strict, out};
  utl_Base64Status status = utl_Base64Status::kDone;
  do {
    // A clean group decodes the same whatever came before it and leaves nothing held, so
    // whole clean blocks may go through the vector path wherever a group begins.
    if (decoder.i % 4 == 0) {
      const size_t done = DecodeBlocks(isa, decoder.in + decoder.i, n - decoder.i, decoder.out);
      if (done > 0) decoder.Skip(done);
    }
  } while (decoder.Step(status));
  length = static_cast<size_t>(decoder.out - out);
  return status;
}
