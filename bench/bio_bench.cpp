// The binary filters against the plain copies they stand in for. Arrays: 64 MiB of doubles
// through bio_OexternalMemFilter::putArray and bio_IexternalMemFilter::getArray against
// memcpy of the same bytes. Scalars: 16 Mi ints written one by one through the external
// memory filter, bio_IOmemFilter and an internal filter on a memory device, against a plain
// loop appending each int's bytes to a std::vector<char>. The "per_int" counter gives the
// time per scalar.
#include <benchmark/benchmark.h>

#include <malloc.h>

#include <cstring>
#include <vector>

#include "bio_IOmemFilter.h"
#include "bio_Idevice.h"
#include "bio_IexternalMemFilter.h"
#include "bio_Ifilter.h"
#include "bio_Odevice.h"
#include "bio_OexternalMemFilter.h"
#include "bio_Ofilter.h"

namespace {

constexpr size_t kArrayBytes = size_t{64} << 20;
constexpr unsigned kDoubles = kArrayBytes / sizeof(double);
constexpr unsigned kInts = 16u << 20;
constexpr size_t kIntBytes = size_t{kInts} * sizeof(int);

std::vector<double> Doubles() {
  std::vector<double> doubles(kDoubles);
  for (unsigned i = 0; i < kDoubles; ++i)
    doubles[i] = i * 0.5;
  return doubles;
}

void SetArrayBytes(benchmark::State& state) {
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * kArrayBytes));
}

void PutArray_bio_OexternalMemFilter(benchmark::State& state) {
  const std::vector<double> source = Doubles();
  for (auto _ : state) {
    bio_OexternalMemFilter writer(0);
    writer.putArray(source.data(), kDoubles);
    benchmark::ClobberMemory();
  }
  SetArrayBytes(state);
}

void PutArray_memcpy(benchmark::State& state) {
  const std::vector<double> source = Doubles();
  std::vector<char> target(kArrayBytes);
  for (auto _ : state) {
    std::memcpy(target.data(), source.data(), kArrayBytes);
    benchmark::ClobberMemory();
  }
  SetArrayBytes(state);
}

void GetArray_bio_IexternalMemFilter(benchmark::State& state) {
  std::vector<double> source = Doubles();
  std::vector<double> target(kDoubles);
  for (auto _ : state) {
    bio_IexternalMemFilter reader(reinterpret_cast<char*>(source.data()), kArrayBytes);
    reader.getArray(target.data(), kDoubles);
    benchmark::ClobberMemory();
  }
  SetArrayBytes(state);
}

void GetArray_memcpy(benchmark::State& state) {
  const std::vector<double> source = Doubles();
  std::vector<double> target(kDoubles);
  for (auto _ : state) {
    std::memcpy(target.data(), source.data(), kArrayBytes);
    benchmark::ClobberMemory();
  }
  SetArrayBytes(state);
}

void SetPerInt(benchmark::State& state) {
  state.counters["per_int"] = benchmark::Counter(
      kInts, benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

void WriteInts(bio_Ofilter& writer) {
  for (unsigned i = 0; i < kInts; ++i)
    writer << static_cast<int>(i);
  benchmark::ClobberMemory();
}

void PutInt_bio_OexternalMemFilter(benchmark::State& state) {
  for (auto _ : state) {
    bio_OexternalMemFilter writer(0);
    WriteInts(writer);
  }
  SetPerInt(state);
}

// Grows in steps of 16 MiB: four blocks on the way to 64 MiB.
void PutInt_bio_IOmemFilter(benchmark::State& state) {
  for (auto _ : state) {
    bio_IOmemFilter filter(16u << 20);
    WriteInts(filter);
  }
  SetPerInt(state);
}

void PutInt_bio_OinternalFilter(benchmark::State& state) {
  bio_Buffer buffer(kIntBytes);
  for (auto _ : state) {
    buffer.writePos = buffer.readPos = 0;
    bio_OmemoryDevice device(buffer);
    bio_OinternalFilter writer(device);
    WriteInts(writer);
  }
  SetPerInt(state);
}

void PutInt_std_vector(benchmark::State& state) {
  for (auto _ : state) {
    std::vector<char> bytes;
    for (unsigned i = 0; i < kInts; ++i) {
      const int value = static_cast<int>(i);
      const char* first = reinterpret_cast<const char*>(&value);
      bytes.insert(bytes.end(), first, first + sizeof value);
    }
    benchmark::DoNotOptimize(bytes.data());
    benchmark::ClobberMemory();
  }
  SetPerInt(state);
}

}  // namespace

BENCHMARK(PutArray_bio_OexternalMemFilter)->Unit(benchmark::kMillisecond);
BENCHMARK(PutArray_memcpy)->Unit(benchmark::kMillisecond);
BENCHMARK(GetArray_bio_IexternalMemFilter)->Unit(benchmark::kMillisecond);
BENCHMARK(GetArray_memcpy)->Unit(benchmark::kMillisecond);
BENCHMARK(PutInt_bio_OexternalMemFilter)->Unit(benchmark::kMillisecond);
BENCHMARK(PutInt_bio_IOmemFilter)->Unit(benchmark::kMillisecond);
BENCHMARK(PutInt_bio_OinternalFilter)->Unit(benchmark::kMillisecond);
BENCHMARK(PutInt_std_vector)->Unit(benchmark::kMillisecond);

// Freed blocks of any size stay in the heap, so that each run writes to memory that is already
// mapped, as the copies it is measured against do. Without this, every 64 MiB block is new
// from the system and its page faults cost more than the copy.
int main(int argc, char** argv) {
  mallopt(M_MMAP_THRESHOLD, 1 << 30);
  mallopt(M_TRIM_THRESHOLD, 1 << 30);
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
}
