// The persistent classes against their plain peers: cls_PTrie against std::map<int, int>
// (look-up and insert of 100,000 random keys), a sequential ConstGet over a 10-million-
// element cls_ArrayPrim<double> paging through an in-memory agent against a std::vector walk,
// and AppendBlock of 1 MiB blocks into that agent against memcpy into the same memory.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstring>
#include <map>
#include <random>
#include <vector>

#include "VRKBenchMain.h"
#include "aio_ostrstream.h"
#include "cls_ArrayPrim.h"
#include "cls_PTrie.h"
#include "cls_WriteVisitor.h"
#include "pdc_PPerrMementoWrite.h"
#include "pnt_PrettyPrint.h"

namespace {

constexpr int kKeys = 100000;

// Random keys over the whole int range, and the order in which they are looked up.
struct Keys {
  std::vector<int> insert;
  std::vector<int> use;
};

const Keys& RandomKeys() {
  static const Keys keys = [] {
    Keys made;
    std::mt19937 generator(17);
    for (int i = 0; i < kKeys; ++i)
      made.insert.push_back(static_cast<int>(generator()));
    made.use = made.insert;
    std::shuffle(made.use.begin(), made.use.end(), generator);
    return made;
  }();
  return keys;
}

void TrieFind_cls_PTrie(benchmark::State& state) {
  cls_PTrie<int, int, 1> trie;
  for (int key : RandomKeys().insert)
    trie.Insert(key, key);
  for (auto _ : state) {
    for (int key : RandomKeys().use)
      benchmark::DoNotOptimize(trie.ConstGetPtr(key));
  }
}

void TrieFind_std_map(benchmark::State& state) {
  std::map<int, int> map;
  for (int key : RandomKeys().insert)
    map.emplace(key, key);
  for (auto _ : state) {
    for (int key : RandomKeys().use)
      benchmark::DoNotOptimize(map.find(key));
  }
}

void TrieInsert_cls_PTrie(benchmark::State& state) {
  for (auto _ : state) {
    cls_PTrie<int, int, 1> trie;
    for (int key : RandomKeys().insert)
      trie.Insert(key, key);
    benchmark::DoNotOptimize(trie.Size());
  }
}

void TrieInsert_std_map(benchmark::State& state) {
  for (auto _ : state) {
    std::map<int, int> map;
    for (int key : RandomKeys().insert)
      map.emplace(key, key);
    benchmark::DoNotOptimize(map.size());
  }
}

// A list agent over memory that the benchmark owns. Writes past its end wrap around, so that
// appends go on copying into the same memory for as long as the benchmark runs.
class MemoryAgent : public cls_AgentListPrim<double> {
 public:
  explicit MemoryAgent(std::vector<double>& data) : m_Data(data) {}
  int Size() const override { return m_Size; }
  int ExtentQuantum() const override { return 1; }
  int Refresh() override { return 0; }
  void Flush() override {}
  void Write(int index, int count, const double* values) override {
    const size_t at = static_cast<size_t>(index) % m_Data.size();
    std::memcpy(m_Data.data() + at, values,
                sizeof(double) * std::min<size_t>(count, m_Data.size() - at));
    m_Size = std::max(m_Size, index + count);
  }
  int Read(int index, int count, double* values) override {
    const int read = std::max(0, std::min(count, m_Size - index));
    std::memcpy(values, m_Data.data() + index, sizeof(double) * read);
    return read;
  }
  void AddRef() override { ++m_RefCount; }
  void Release() override { --m_RefCount; }
  int RefCount() const override { return m_RefCount; }
  int IsReadOnly() const override { return 0; }
  void Link(cls_PC*) override {}

  int m_Size = 0;

 private:
  std::vector<double>& m_Data;
  int m_RefCount = 0;
};

// A memento that hands out the memory agent; it prints nothing.
class AgentMemento : public pdc_PPerrMementoWrite {
 public:
  explicit AgentMemento(MemoryAgent* agent)
      : pdc_PPerrMementoWrite(nullptr, 0, &m_Printer, pdc_NoFrame), m_Agent(agent) {}
  bool NeedsDeletion() const override { return false; }
  cls_AgentListPrim<double>* MakeAgentList(const double&, int) override { return m_Agent; }

 private:
  aio_ostrstream m_Out;
  pnt_PrettyPrint m_Printer{m_Out, 78, 2};
  MemoryAgent* m_Agent;
};

// Attaches `array` to a new agent over `data` holding `size` elements; the array deletes
// the agent when it goes.
void Attach(cls_ArrayPrim<double>& array, std::vector<double>& data, int size) {
  MemoryAgent* agent = new MemoryAgent(data);
  agent->m_Size = size;
  AgentMemento memento(agent);
  array.DBWriteBody(cls_WriteVisitor(&memento));
}

constexpr int kElements = 10000000;

std::vector<double>& Elements() {
  static std::vector<double> elements = [] {
    std::vector<double> made(kElements);
    for (int i = 0; i < kElements; ++i)
      made[i] = i;
    return made;
  }();
  return elements;
}

void SequentialRead_cls_ArrayPrim(benchmark::State& state) {
  cls_ArrayPrim<double> array;
  Attach(array, Elements(), kElements);
  for (auto _ : state) {
    double sum = 0;
    for (int i = 0; i < kElements; ++i)
      sum += array.ConstGet(i);
    benchmark::DoNotOptimize(sum);
  }
  state.SetItemsProcessed(state.iterations() * kElements);
}

void SequentialRead_std_vector(benchmark::State& state) {
  const std::vector<double>& elements = Elements();
  for (auto _ : state) {
    double sum = 0;
    for (int i = 0; i < kElements; ++i)
      sum += elements[i];
    benchmark::DoNotOptimize(sum);
  }
  state.SetItemsProcessed(state.iterations() * kElements);
}

constexpr int kBlock = (1 << 20) / sizeof(double);  // 1 MiB of doubles
constexpr int kStoreBlocks = 64;

void AppendBlock_cls_ArrayPrim(benchmark::State& state) {
  std::vector<double> stored(kBlock * kStoreBlocks, 1.0);
  const std::vector<double> block(kBlock, 2.0);
  cls_ArrayPrim<double> array;
  Attach(array, stored, 0);
  for (auto _ : state) {
    array.AppendBlock(block.data(), kBlock);
    if (array.Size() > (1 << 30)) {  // far before the int size runs out
      state.PauseTiming();
      array = cls_ArrayPrim<double>();
      Attach(array, stored, 0);
      state.ResumeTiming();
    }
  }
  state.SetBytesProcessed(state.iterations() * (1 << 20));
}

void AppendBlock_memcpy(benchmark::State& state) {
  std::vector<double> stored(kBlock * kStoreBlocks, 1.0);
  const std::vector<double> block(kBlock, 2.0);
  size_t at = 0;
  for (auto _ : state) {
    std::memcpy(stored.data() + at, block.data(), sizeof(double) * kBlock);
    benchmark::ClobberMemory();
    at = (at + kBlock) % stored.size();
  }
  state.SetBytesProcessed(state.iterations() * (1 << 20));
}

BENCHMARK(TrieFind_cls_PTrie);
BENCHMARK(TrieFind_std_map);
BENCHMARK(TrieInsert_cls_PTrie);
BENCHMARK(TrieInsert_std_map);
BENCHMARK(SequentialRead_cls_ArrayPrim)->Unit(benchmark::kMillisecond);
BENCHMARK(SequentialRead_std_vector)->Unit(benchmark::kMillisecond);
BENCHMARK(AppendBlock_cls_ArrayPrim);
BENCHMARK(AppendBlock_memcpy);

}  // namespace

int main(int argc, char** argv) {
  return VRKBenchmarkMain(argc, argv);
}
