// The containers against the standard library: cow_List against std::deque and std::vector,
// cow_Map against std::map and std::unordered_map. Each case runs over the whole container
// per iteration (1,000,000 list elements, 100,000 map keys); the list copy is measured per
// copy, at two lengths, to show that it doesn't depend on the length. Lists are measured with
// the default blocks of 16 elements, each a small allocation of its own, and made with room
// for all elements ("Presized"), which gives blocks of 65536.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdio>
#include <deque>
#include <functional>
#include <map>
#include <numeric>
#include <random>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "cow_List.h"
#include "cow_ListIter.h"
#include "cow_Map.h"
#include "cow_String.h"

namespace {

constexpr int kListSize = 1000000;
constexpr int kMapSize = 100000;

// A list grown by Append, made with room for `room` elements (see ListGrow).
cow_List<int> MakeList(int size, int room = 0) {
  cow_List<int> list(cow_ListPresize, room);
  for (int i = 0; i < size; ++i)
    list.Append(i);
  return list;
}

template <class Sequence>
Sequence MakeSequence(int size) {
  Sequence sequence(size);
  std::iota(sequence.begin(), sequence.end(), 0);
  return sequence;
}

// Grows a list element by element with `add`. The list is made with room for `room` elements:
// 0 gives the default blocks of 16, as most lists have; kListSize gives blocks of 65536.
template <int room, void (cow_List<int>::*add)(const int&)>
void ListGrow(benchmark::State& state) {
  for (auto _ : state) {
    cow_List<int> list(cow_ListPresize, room);
    for (int i = 0; i < kListSize; ++i)
      (list.*add)(i);
    benchmark::DoNotOptimize(list.Count());
  }
}

template <class Sequence>
void ListAppendStd(benchmark::State& state) {
  for (auto _ : state) {
    Sequence sequence;
    for (int i = 0; i < kListSize; ++i)
      sequence.push_back(i);
    benchmark::DoNotOptimize(sequence.size());
  }
}

template <int room>
void ListIndexedReadCow(benchmark::State& state) {
  const cow_List<int> list = MakeList(kListSize, room);
  for (auto _ : state) {
    long sum = 0;
    for (int i = 0; i < kListSize; ++i)
      sum += list.ConstGet(i);
    benchmark::DoNotOptimize(sum);
  }
}

template <class Sequence>
void ListIndexedReadStd(benchmark::State& state) {
  const Sequence sequence = MakeSequence<Sequence>(kListSize);
  for (auto _ : state) {
    long sum = 0;
    for (int i = 0; i < kListSize; ++i)
      sum += sequence[i];
    benchmark::DoNotOptimize(sum);
  }
}

template <int room>
void ListIterateCow(benchmark::State& state) {
  const cow_List<int> list = MakeList(kListSize, room);
  for (auto _ : state) {
    long sum = 0;
    for (cow_ListIter<int> it(list); !it.IsDone(); it.Next())
      sum += it.Current();
    benchmark::DoNotOptimize(sum);
  }
}

template <class Sequence>
void ListIterateStd(benchmark::State& state) {
  const Sequence sequence = MakeSequence<Sequence>(kListSize);
  for (auto _ : state) {
    long sum = 0;
    for (int value : sequence)
      sum += value;
    benchmark::DoNotOptimize(sum);
  }
}

// std::vector has no constant-time front insertion and is left out here.
void ListPrepend_std_deque(benchmark::State& state) {
  for (auto _ : state) {
    std::deque<int> sequence;
    for (int i = 0; i < kListSize; ++i)
      sequence.push_front(i);
    benchmark::DoNotOptimize(sequence.size());
  }
}

// One copy and its destruction.
void ListCopy_cow_List(benchmark::State& state) {
  const cow_List<int> list = MakeList(state.range(0));
  for (auto _ : state) {
    cow_List<int> copy(list);
    benchmark::DoNotOptimize(&copy);
  }
}

void ListCopy_std_vector(benchmark::State& state) {
  const std::vector<int> sequence = MakeSequence<std::vector<int>>(state.range(0));
  for (auto _ : state) {
    std::vector<int> copy(sequence);
    benchmark::DoNotOptimize(copy.data());
  }
}

// Distinct keys in random order: random integers, and names made of 16 random letters.
template <class K>
std::vector<K> MakeKeys();

template <>
std::vector<int> MakeKeys<int>() {
  std::mt19937 random(1);
  std::vector<int> keys;
  std::unordered_map<int, bool> seen;
  while (static_cast<int>(keys.size()) < kMapSize) {
    const int key = static_cast<int>(random());
    if (seen.emplace(key, true).second) keys.push_back(key);
  }
  return keys;
}

template <>
std::vector<cow_String> MakeKeys<cow_String>() {
  std::mt19937 random(1);
  std::vector<cow_String> keys;
  std::map<cow_String, bool> seen;
  while (static_cast<int>(keys.size()) < kMapSize) {
    char name[17] = {};
    for (int c = 0; c < 16; ++c)
      name[c] = static_cast<char>('a' + random() % 26);
    if (seen.emplace(name, true).second) keys.push_back(name);
  }
  return keys;
}

template <class K>
const std::vector<K>& Keys() {
  static const std::vector<K> keys = MakeKeys<K>();
  return keys;
}

// The lookups go in another random order than the insertions.
template <class K>
const std::vector<K>& ShuffledKeys() {
  static const std::vector<K> keys = [] {
    std::vector<K> shuffled = Keys<K>();
    std::shuffle(shuffled.begin(), shuffled.end(), std::mt19937(2));
    return shuffled;
  }();
  return keys;
}

struct StringHash {
  size_t operator()(const cow_String& text) const {
    return std::hash<std::string_view>()(std::string_view(text.c_str(), text.Length()));
  }
};

template <class K>
using Unordered =
    std::unordered_map<K, int,
                       std::conditional_t<std::is_same<K, int>::value, std::hash<int>, StringHash>>;

template <class K>
cow_Map<K, int> FilledCowMap() {
  cow_Map<K, int> map;
  for (const K& key : Keys<K>())
    map.Insert(key, 1);
  return map;
}

template <class Map>
Map FilledStdMap() {
  Map map;
  for (const auto& key : Keys<typename Map::key_type>())
    map.emplace(key, 1);
  return map;
}

// The insertions only: the filled map is destroyed outside the timing.
template <class Map, Map (*fill)()>
void MapInsert(benchmark::State& state) {
  for (auto _ : state) {
    Map* map = new Map(fill());
    benchmark::DoNotOptimize(map);
    state.PauseTiming();
    delete map;
    state.ResumeTiming();
  }
}
template <class K>
void MapLookupCow(benchmark::State& state) {
  const cow_Map<K, int> map = FilledCowMap<K>();
  for (auto _ : state) {
    long sum = 0;
    for (const K& key : ShuffledKeys<K>())
      sum += map.ConstGet(key);
    benchmark::DoNotOptimize(sum);
  }
}

template <class Map>
void MapLookupStd(benchmark::State& state) {
  const Map map = FilledStdMap<Map>();
  for (auto _ : state) {
    long sum = 0;
    for (const auto& key : ShuffledKeys<typename Map::key_type>())
      sum += map.find(key)->second;
    benchmark::DoNotOptimize(sum);
  }
}

// Each case with its peer last, under the names <Case>_<implementation>.
void RegisterBenchmarks() {
  using benchmark::RegisterBenchmark;
  RegisterBenchmark("ListAppend_cow_List", ListGrow<0, &cow_List<int>::Append>);
  RegisterBenchmark("ListAppend_cow_ListPresized", ListGrow<kListSize, &cow_List<int>::Append>);
  RegisterBenchmark("ListAppend_std_vector", ListAppendStd<std::vector<int>>);
  RegisterBenchmark("ListAppend_std_deque", ListAppendStd<std::deque<int>>);
  RegisterBenchmark("ListIndexedRead_cow_List", ListIndexedReadCow<0>);
  RegisterBenchmark("ListIndexedRead_cow_ListPresized", ListIndexedReadCow<kListSize>);
  RegisterBenchmark("ListIndexedRead_std_vector", ListIndexedReadStd<std::vector<int>>);
  RegisterBenchmark("ListIndexedRead_std_deque", ListIndexedReadStd<std::deque<int>>);
  RegisterBenchmark("ListIterate_cow_ListIter", ListIterateCow<0>);
  RegisterBenchmark("ListIterate_cow_ListIterPresized", ListIterateCow<kListSize>);
  RegisterBenchmark("ListIterate_std_vector", ListIterateStd<std::vector<int>>);
  RegisterBenchmark("ListIterate_std_deque", ListIterateStd<std::deque<int>>);
  RegisterBenchmark("ListPrepend_cow_List", ListGrow<0, &cow_List<int>::Prepend>);
  RegisterBenchmark("ListPrepend_std_deque", ListPrepend_std_deque);
  RegisterBenchmark("ListCopy_cow_List", ListCopy_cow_List)->Arg(1000)->Arg(kListSize);
  RegisterBenchmark("ListCopy_std_vector", ListCopy_std_vector)->Arg(1000)->Arg(kListSize);

  RegisterBenchmark("MapInsert_cow_Map", MapInsert<cow_Map<int, int>, FilledCowMap<int>>);
  RegisterBenchmark("MapInsert_std_unordered_map",
                    MapInsert<Unordered<int>, FilledStdMap<Unordered<int>>>);
  RegisterBenchmark("MapInsert_std_map",
                    MapInsert<std::map<int, int>, FilledStdMap<std::map<int, int>>>);
  RegisterBenchmark("MapLookup_cow_Map", MapLookupCow<int>);
  RegisterBenchmark("MapLookup_std_unordered_map", MapLookupStd<Unordered<int>>);
  RegisterBenchmark("MapLookup_std_map", MapLookupStd<std::map<int, int>>);

  using StringMap = std::map<cow_String, int>;
  RegisterBenchmark("MapStringInsert_cow_Map",
                    MapInsert<cow_Map<cow_String, int>, FilledCowMap<cow_String>>);
  RegisterBenchmark("MapStringInsert_std_unordered_map",
                    MapInsert<Unordered<cow_String>, FilledStdMap<Unordered<cow_String>>>);
  RegisterBenchmark("MapStringInsert_std_map", MapInsert<StringMap, FilledStdMap<StringMap>>);
  RegisterBenchmark("MapStringLookup_cow_Map", MapLookupCow<cow_String>);
  RegisterBenchmark("MapStringLookup_std_unordered_map", MapLookupStd<Unordered<cow_String>>);
  RegisterBenchmark("MapStringLookup_std_map", MapLookupStd<StringMap>);
}

}  // namespace

int main(int argc, char** argv) {
  RegisterBenchmarks();
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
}
