// Command line and Base64 against their peers: the option lookup under the command line's
// lock against a std::map behind a std::mutex, and Base64 of 64 MiB against OpenSSL's block
// functions, whose text is mapped to and from the '!' alphabet so that both sides do the same
// job. Both sides make a fresh result each time, as the library's functions do.
#include <benchmark/benchmark.h>
#include <malloc.h>

#include <cstdlib>
#include <map>
#include <mutex>
#include <random>
#include <string>
#include <vector>

#include "VRKLnuLifecycle.h"
#include "utl_Base64.h"
#include "utl_CommandLine.h"

#ifdef VRK_HAVE_OPENSSL
#include <openssl/evp.h>
#endif

namespace {

constexpr int kBytes = 64 << 20;

const std::string& RandomBytes() {
  static const std::string bytes = [] {
    std::string b(kBytes, '\0');
    std::mt19937 random(15);
    for (char& c : b)
      c = static_cast<char>(random());
    return b;
  }();
  return bytes;
}

const unsigned char* Data(const std::string& s) {
  return reinterpret_cast<const unsigned char*>(s.data());
}

cow_String Text(const std::string& s) {
  return cow_String(s.data(), static_cast<int>(s.size()));
}

constexpr size_t kTextLength = (kBytes + 2) / 3 * 4;

// The text of the random bytes.
const std::string& EncodedText() {
  static const std::string text = [] {
    cow_String bytes = Text(RandomBytes());
    const cow_String encoded = utl_base64Encode(bytes, false);
    return std::string(encoded.c_str(), encoded.Length());
  }();
  return text;
}

void Base64Encode_utl_base64Encode(benchmark::State& state) {
  cow_String bytes = Text(RandomBytes());
  for (auto _ : state) {
    cow_String text = utl_base64Encode(bytes, false);
    benchmark::DoNotOptimize(text.c_str());
  }
  state.SetBytesProcessed(state.iterations() * kBytes);
}

void Base64Decode_utl_base64Decode(benchmark::State& state) {
  cow_String text = Text(EncodedText());
  for (auto _ : state) {
    cow_String bytes = utl_base64Decode(text, true);
    benchmark::DoNotOptimize(bytes.c_str());
  }
  state.SetBytesProcessed(state.iterations() * kBytes);
}

#ifdef VRK_HAVE_OPENSSL
// The peer writes the standard alphabet: its text is mapped to the '!' alphabet after
// encoding, and from it before decoding.
void EvpEncode(unsigned char* text) {
  EVP_EncodeBlock(text, Data(RandomBytes()), kBytes);
  for (size_t i = 0; i < kTextLength; ++i)
    text[i] = text[i] == '/' ? '!' : text[i];
}

void EvpDecode(unsigned char* __restrict mapped, unsigned char* bytes) {
  const unsigned char* __restrict text = Data(EncodedText());
  for (size_t i = 0; i < kTextLength; ++i)
    mapped[i] = text[i] == '!' ? '/' : text[i];
  benchmark::DoNotOptimize(EVP_DecodeBlock(bytes, mapped, static_cast<int>(kTextLength)));
}

void Base64Encode_EVP(benchmark::State& state) {
  RandomBytes();
  for (auto _ : state) {
    unsigned char* text = static_cast<unsigned char*>(std::malloc(kTextLength + 1));
    EvpEncode(text);
    benchmark::DoNotOptimize(text);
    std::free(text);
  }
  state.SetBytesProcessed(state.iterations() * kBytes);
}

void Base64Decode_EVP(benchmark::State& state) {
  std::vector<unsigned char> mapped(kTextLength);
  EncodedText();
  for (auto _ : state) {
    unsigned char* bytes = static_cast<unsigned char*>(std::malloc(kBytes + 1));
    EvpDecode(mapped.data(), bytes);
    std::free(bytes);
  }
  state.SetBytesProcessed(state.iterations() * kBytes);
}
#endif

// Options of a typical job. The peer's copy of a value of up to 15 characters needs no
// allocation (the short-string buffer of std::string); a cow_String copy always allocates.
const char* const kOptions[] = {"-job",    "run17",     "-outdir",  "/scratch/user/run17",
                                "-memory", "2048",      "-cpus",    "8",
                                "-input",  "model.inp", "-error",   "utl=1",
                                "-steps",  "400",       "-restart", "",
                                "-tmpdir", "/tmp"};

// Looks up "input" (9 characters) or "outdir" (19 characters).
const char* OptionName(const benchmark::State& state) {
  return state.range(0) == 9 ? "input" : "outdir";
}

void CommandLineLookup_utl_CommandLine(benchmark::State& state) {
  const utl_CommandLine& line = utl_CommandLine::Instance();
  const cow_String name(OptionName(state));
  for (auto _ : state) {
    cow_String value = line.ConstGetValue(name);
    benchmark::DoNotOptimize(value.c_str());
  }
}

void CommandLineLookup_stdMapMutex(benchmark::State& state) {
  std::map<std::string, std::string> options;
  for (size_t i = 0; i + 1 < std::size(kOptions); i += 2)
    options[kOptions[i] + 1] = kOptions[i + 1];
  std::mutex lock;
  const std::string name(OptionName(state));
  for (auto _ : state) {
    std::string value;
    {
      std::lock_guard<std::mutex> hold(lock);
      value = options.find(name)->second;
    }
    benchmark::DoNotOptimize(value.data());
  }
}

}  // namespace

BENCHMARK(Base64Encode_utl_base64Encode)->Unit(benchmark::kMillisecond);
BENCHMARK(Base64Decode_utl_base64Decode)->Unit(benchmark::kMillisecond);
#ifdef VRK_HAVE_OPENSSL
BENCHMARK(Base64Encode_EVP)->Unit(benchmark::kMillisecond);
BENCHMARK(Base64Decode_EVP)->Unit(benchmark::kMillisecond);
#else
#pragma message("OpenSSL is missing: the EVP Base64 comparisons are skipped")
#endif
BENCHMARK(CommandLineLookup_utl_CommandLine)->Arg(9)->Arg(19);
BENCHMARK(CommandLineLookup_stdMapMutex)->Arg(9)->Arg(19);

int main(int argc, char** argv) {
  // Freed blocks stay in the heap, so that each fresh result of 64 MiB or more is written to
  // memory already mapped, and the runs measure the codecs rather than page faults.
  mallopt(M_MMAP_THRESHOLD, 1 << 30);
  mallopt(M_TRIM_THRESHOLD, 1 << 30);
  int tally = 0;
  VRKLnuBasicUtils_initialize(tally);
  std::vector<char*> args = {const_cast<char*>("system_bench")};
  for (const char* option : kOptions)
    args.push_back(const_cast<char*>(option));
  args.push_back(nullptr);
  utl_CommandLineSetup(static_cast<int>(args.size()) - 1, args.data());
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  VRKLnuBasicUtils_finalize(tally);
  return 0;
}
