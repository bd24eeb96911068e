#include "uti_MD5.h"

#include <cstring>

namespace {

inline uint32_t Load32(const unsigned char* p) {
  return uint32_t{p[0]} | uint32_t{p[1]} << 8 | uint32_t{p[2]} << 16 | uint32_t{p[3]} << 24;
}

inline void Store32(unsigned char* p, uint32_t value) {
  for (int i = 0; i < 4; ++i)
    p[i] = static_cast<unsigned char>(value >> (8 * i));
}

inline uint32_t Rotl(uint32_t x, int s) {
  return (x << s) | (x >> (32 - s));
}

// The four round functions. G's two terms never share a bit, so it is written as their sum,
// which lets the additions into the step start before both terms are known.
struct F {
  static uint32_t Mix(uint32_t a, uint32_t b, uint32_t c, uint32_t d, uint32_t k) {
    return a + k + (d ^ (b & (c ^ d)));
  }
};
struct G {
  static uint32_t Mix(uint32_t a, uint32_t b, uint32_t c, uint32_t d, uint32_t k) {
    return a + k + (c & ~d) + (b & d);
  }
};
struct H {
  static uint32_t Mix(uint32_t a, uint32_t b, uint32_t c, uint32_t d, uint32_t k) {
    return a + k + (b ^ c ^ d);
  }
};
struct I {
  static uint32_t Mix(uint32_t a, uint32_t b, uint32_t c, uint32_t d, uint32_t k) {
    return a + k + (c ^ (b | ~d));
  }
};

// One of the 64 steps: a = b + ((a + f(b, c, d) + x + t) <<< s).
template <class Round, int S>
inline void Step(uint32_t& a, uint32_t b, uint32_t c, uint32_t d, uint32_t x, uint32_t t) {
  a = b + Rotl(Round::Mix(a, b, c, d, x + t), S);
}

}  // namespace

void uti_MD5::Reset() {
  m_State[0] = 0x67452301;
  m_State[1] = 0xefcdab89;
  m_State[2] = 0x98badcfe;
  m_State[3] = 0x10325476;
  m_Length = 0;
}

// The constants t are floor(|sin(i)| * 2^32) for steps i = 1 to 64.
void uti_MD5::Compress(const unsigned char* blocks, size_t count) {
  uint32_t a0 = m_State[0], b0 = m_State[1], c0 = m_State[2], d0 = m_State[3];
  for (; count > 0; --count, blocks += 64) {
    uint32_t x[16];
    for (int i = 0; i < 16; ++i)
      x[i] = Load32(blocks + 4 * i);
    uint32_t a = a0, b = b0, c = c0, d = d0;
    Step<F, 7>(a, b, c, d, x[0], 0xd76aa478);
    Step<F, 12>(d, a, b, c, x[1], 0xe8c7b756);
    Step<F, 17>(c, d, a, b, x[2], 0x242070db);
    Step<F, 22>(b, c, d, a, x[3], 0xc1bdceee);
    Step<F, 7>(a, b, c, d, x[4], 0xf57c0faf);
    Step<F, 12>(d, a, b, c, x[5], 0x4787c62a);
    Step<F, 17>(c, d, a, b, x[6], 0xa8304613);
    Step<F, 22>(b, c, d, a, x[7], 0xfd469501);
    Step<F, 7>(a, b, c, d, x[8], 0x698098d8);
    Step<F, 12>(d, a, b, c, x[9], 0x8b44f7af);
    Step<F, 17>(c, d, a, b, x[10], 0xffff5bb1);
    Step<F, 22>(b, c, d, a, x[11], 0x895cd7be);
    Step<F, 7>(a, b, c, d, x[12], 0x6b901122);
    Step<F, 12>(d, a, b, c, x[13], 0xfd987193);
    Step<F, 17>(c, d, a, b, x[14], 0xa679438e);
    Step<F, 22>(b, c, d, a, x[15], 0x49b40821);
    Step<G, 5>(a, b, c, d, x[1], 0xf61e2562);
    Step<G, 9>(d, a, b, c, x[6], 0xc040b340);
    Step<G, 14>(c, d, a, b, x[11], 0x265e5a51);
    Step<G, 20>(b, c, d, a, x[0], 0xe9b6c7aa);
    Step<G, 5>(a, b, c, d, x[5], 0xd62f105d);
    Step<G, 9>(d, a, b, c, x[10], 0x02441453);
    Step<G, 14>(c, d, a, b, x[15], 0xd8a1e681);
    Step<G, 20>(b, c, d, a, x[4], 0xe7d3fbc8);
    Step<G, 5>(a, b, c, d, x[9], 0x21e1cde6);
    Step<G, 9>(d, a, b, c, x[14], 0xc33707d6);
    Step<G, 14>(c, d, a, b, x[3], 0xf4d50d87);
    Step<G, 20>(b, c, d, a, x[8], 0x455a14ed);
    Step<G, 5>(a, b, c, d, x[13], 0xa9e3e905);
    Step<G, 9>(d, a, b, c, x[2], 0xfcefa3f8);
    Step<G, 14>(c, d, a, b, x[7], 0x676f02d9);
    Step<G, 20>(b, c, d, a, x[12], 0x8d2a4c8a);
    Step<H, 4>(a, b, c, d, x[5], 0xfffa3942);
    Step<H, 11>(d, a, b, c, x[8], 0x8771f681);
    Step<H, 16>(c, d, a, b, x[11], 0x6d9d6122);
    Step<H, 23>(b, c, d, a, x[14], 0xfde5380c);
    Step<H, 4>(a, b, c, d, x[1], 0xa4beea44);
    Step<H, 11>(d, a, b, c, x[4], 0x4bdecfa9);
    Step<H, 16>(c, d, a, b, x[7], 0xf6bb4b60);
    Step<H, 23>(b, c, d, a, x[10], 0xbebfbc70);
    Step<H, 4>(a, b, c, d, x[13], 0x289b7ec6);
    Step<H, 11>(d, a, b, c, x[0], 0xeaa127fa);
    Step<H, 16>(c, d, a, b, x[3], 0xd4ef3085);
    Step<H, 23>(b, c, d, a, x[6], 0x04881d05);
    Step<H, 4>(a, b, c, d, x[9], 0xd9d4d039);
    Step<H, 11>(d, a, b, c, x[12], 0xe6db99e5);
    Step<H, 16>(c, d, a, b, x[15], 0x1fa27cf8);
    Step<H, 23>(b, c, d, a, x[2], 0xc4ac5665);
    Step<I, 6>(a, b, c, d, x[0], 0xf4292244);
    Step<I, 10>(d, a, b, c, x[7], 0x432aff97);
    Step<I, 15>(c, d, a, b, x[14], 0xab9423a7);
    Step<I, 21>(b, c, d, a, x[5], 0xfc93a039);
    Step<I, 6>(a, b, c, d, x[12], 0x655b59c3);
    Step<I, 10>(d, a, b, c, x[3], 0x8f0ccc92);
    Step<I, 15>(c, d, a, b, x[10], 0xffeff47d);
    Step<I, 21>(b, c, d, a, x[1], 0x85845dd1);
    Step<I, 6>(a, b, c, d, x[8], 0x6fa87e4f);
    Step<I, 10>(d, a, b, c, x[15], 0xfe2ce6e0);
    Step<I, 15>(c, d, a, b, x[6], 0xa3014314);
    Step<I, 21>(b, c, d, a, x[13], 0x4e0811a1);
    Step<I, 6>(a, b, c, d, x[4], 0xf7537e82);
    Step<I, 10>(d, a, b, c, x[11], 0xbd3af235);
    Step<I, 15>(c, d, a, b, x[2], 0x2ad7d2bb);
    Step<I, 21>(b, c, d, a, x[9], 0xeb86d391);
    a0 += a;
    b0 += b;
    c0 += c;
    d0 += d;
  }
  m_State[0] = a0;
  m_State[1] = b0;
  m_State[2] = c0;
  m_State[3] = d0;
}

void uti_MD5::Update(const void* data, size_t size) {
  const unsigned char* bytes = static_cast<const unsigned char*>(data);
  const size_t pending = m_Length % 64;
  m_Length += size;
  if (pending > 0) {
    const size_t taken = size < 64 - pending ? size : 64 - pending;
    std::memcpy(m_Pending + pending, bytes, taken);
    bytes += taken;
    size -= taken;
    if (pending + taken < 64) return;
    Compress(m_Pending, 1);
  }
  Compress(bytes, size / 64);
  if (size % 64 > 0) std::memcpy(m_Pending, bytes + size - size % 64, size % 64);
}

// Pads a copy: a 1 bit, zeros up to 56 bytes into a block, and the length in bits, least
// significant byte first.
void uti_MD5::Digest(unsigned char digest[kDigestSize]) const {
  uti_MD5 last(*this);
  const uint64_t bits = m_Length * 8;
  unsigned char tail[72] = {0x80};
  const size_t padding = (m_Length % 64 < 56 ? 56 : 120) - m_Length % 64;
  for (int i = 0; i < 8; ++i)
    tail[padding + i] = static_cast<unsigned char>(bits >> (8 * i));
  last.Update(tail, padding + 8);
  for (int i = 0; i < 4; ++i)
    Store32(digest + 4 * i, last.m_State[i]);
}

cow_String uti_MD5::HexDigest() const {
  static const char kDigits[] = "0123456789abcdef";
  unsigned char digest[kDigestSize];
  Digest(digest);
  char text[2 * kDigestSize];
  for (int i = 0; i < kDigestSize; ++i) {
    text[2 * i] = kDigits[digest[i] >> 4];
    text[2 * i + 1] = kDigits[digest[i] & 15];
  }
  return cow_String(text, 2 * kDigestSize);
}

cow_String uti_MD5::HexDigestOf(const void* data, size_t size) {
  uti_MD5 md5;
  md5.Update(data, size);
  return md5.HexDigest();
}
