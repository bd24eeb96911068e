// Digest and cipher against OpenSSL over the same 64 MiB of random bytes: uti_MD5 against
// MD5, and uti_Blowfish in CBC mode against BF_cbc_encrypt, with the same key and vector.
// Each side's result is checked against the other's once before timing.
#include <benchmark/benchmark.h>

#include <cstring>
#include <random>
#include <vector>

#include "uti_Blowfish.h"
#include "uti_MD5.h"

#ifdef VRK_HAVE_OPENSSL
// The low-level MD5 and Blowfish calls are deprecated in OpenSSL 3 but still there; they are
// the peers measured here.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wdeprecated-declarations"
#include <openssl/blowfish.h>
#include <openssl/md5.h>
#endif

namespace {

constexpr size_t kBytes = 64 << 20;
const unsigned char kKey[16] = {1,  35, 69, 103, 137, 171, 205, 239,
                                15, 30, 45, 60,  75,  90,  105, 120};
const unsigned char kIv[8] = {0xFE, 0xDC, 0xBA, 0x98, 0x76, 0x54, 0x32, 0x10};

const std::vector<unsigned char>& RandomBytes() {
  static const std::vector<unsigned char> bytes = [] {
    std::vector<unsigned char> b(kBytes);
    std::mt19937 random(19);
    for (unsigned char& c : b)
      c = static_cast<unsigned char>(random());
    return b;
  }();
  return bytes;
}

void UtiDigest(const std::vector<unsigned char>& data, unsigned char digest[16]) {
  uti_MD5 md5;
  md5.Update(data.data(), data.size());
  md5.Digest(digest);
}

void UtiCbc(std::vector<unsigned char>& data) {
  static const uti_Blowfish cipher(kKey, sizeof kKey);
  unsigned char iv[8];
  std::memcpy(iv, kIv, 8);
  cipher.EncryptCBC(data.data(), data.size(), iv);
}

void MD5_uti_MD5(benchmark::State& state) {
  const std::vector<unsigned char>& data = RandomBytes();
  unsigned char digest[16];
  for (auto _ : state) {
    UtiDigest(data, digest);
    benchmark::DoNotOptimize(digest);
  }
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * kBytes));
}

void BlowfishCBC_uti_Blowfish(benchmark::State& state) {
  std::vector<unsigned char> data = RandomBytes();
  for (auto _ : state) {
    UtiCbc(data);
    benchmark::ClobberMemory();
  }
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * kBytes));
}

BENCHMARK(MD5_uti_MD5)->Unit(benchmark::kMillisecond);
BENCHMARK(BlowfishCBC_uti_Blowfish)->Unit(benchmark::kMillisecond);

#ifdef VRK_HAVE_OPENSSL
void OpenSslCbc(std::vector<unsigned char>& data) {
  static const BF_KEY key = [] {
    BF_KEY k;
    BF_set_key(&k, sizeof kKey, kKey);
    return k;
  }();
  unsigned char iv[8];
  std::memcpy(iv, kIv, 8);
  BF_cbc_encrypt(data.data(), data.data(), static_cast<long>(data.size()), &key, iv, BF_ENCRYPT);
}

void MD5_OpenSSL(benchmark::State& state) {
  const std::vector<unsigned char>& data = RandomBytes();
  unsigned char digest[16], ours[16];
  UtiDigest(data, ours);
  MD5(data.data(), data.size(), digest);
  if (std::memcmp(digest, ours, 16) != 0) state.SkipWithError("the digests differ");
  for (auto _ : state) {
    MD5(data.data(), data.size(), digest);
    benchmark::DoNotOptimize(digest);
  }
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * kBytes));
}

void BlowfishCBC_OpenSSL(benchmark::State& state) {
  std::vector<unsigned char> data = RandomBytes(), ours = RandomBytes();
  OpenSslCbc(data);
  UtiCbc(ours);
  if (data != ours) state.SkipWithError("the cipher texts differ");
  for (auto _ : state) {
    OpenSslCbc(data);
    benchmark::ClobberMemory();
  }
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * kBytes));
}

BENCHMARK(MD5_OpenSSL)->Unit(benchmark::kMillisecond);
BENCHMARK(BlowfishCBC_OpenSSL)->Unit(benchmark::kMillisecond);
#pragma GCC diagnostic pop
#endif

}  // namespace

BENCHMARK_MAIN();
