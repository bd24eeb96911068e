// The base layer against its peers: string copies against std::string, and the memory
// layer's allocation against malloc.
#include <benchmark/benchmark.h>

#include <cstdlib>
#include <string>

#include "cow_String.h"
#include "mem_Alloc.h"

namespace {

const std::string kText(1024, 't');

// A shared string's copy is a pointer copy and a count increment.
void StringCopy_cow_String(benchmark::State& state) {
  const cow_String text(kText.c_str(), static_cast<int>(kText.size()));
  for (auto _ : state) {
    cow_String copy(text);
    benchmark::DoNotOptimize(copy.c_str());
  }
}

void StringCopy_std_string(benchmark::State& state) {
  const std::string text(kText);
  for (auto _ : state) {
    std::string copy(text);
    benchmark::DoNotOptimize(copy.data());
  }
}

void Alloc_mem_OperatorNewThrow(benchmark::State& state) {
  const size_t size = state.range(0);
  for (auto _ : state) {
    void* block = mem_OperatorNewThrow(size);
    benchmark::DoNotOptimize(block);
    mem_Free(block);
  }
}

void Alloc_malloc(benchmark::State& state) {
  const size_t size = state.range(0);
  for (auto _ : state) {
    void* block = std::malloc(size);
    benchmark::DoNotOptimize(block);
    std::free(block);
  }
}

}  // namespace

BENCHMARK(StringCopy_cow_String);
BENCHMARK(StringCopy_std_string);
BENCHMARK(Alloc_mem_OperatorNewThrow)->RangeMultiplier(2)->Range(16, 256);
BENCHMARK(Alloc_malloc)->RangeMultiplier(2)->Range(16, 256);

BENCHMARK_MAIN();
