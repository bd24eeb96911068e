// The containers against the standard library: cow_List against std::deque and std::vector,
// cow_Map against std::map and std::unordered_map. Each case runs over the whole container
// per iteration (1,000,000 list elements, 100,000 map keys); the list copy is measured per
// copy, at two lengths, to show that it doesn't depend on the length.
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

cow_List<int> MakeList(int size) {
  cow_List<int> list;
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

// Appends to a list made with the default block size, as most lists are.
void ListAppend_cow_List(benchmark::State& state) {
  for (auto _ : state) {
    cow_List<int> list;
    for (int i = 0; i < kListSize; ++i)
      list.Append(i);
    benchmark::DoNotOptimize(list.Count());
  }
}

// Appends to a list made with room for all elements, which chooses blocks of 65536.
void ListAppend_cow_ListPresized(benchmark::State& state) {
  for (auto _ : state) {
    cow_List<int> list(cow_ListPresize, kListSize);
    for (int i = 0; i < kListSize; ++i)
      list.Append(i);
    benchmark::DoNotOptimize(list.Count());
  }
}

template <class Sequence>
void ListAppend_std(benchmark::State& state) {
  for (auto _ : state) {
    Sequence sequence;
    for (int i = 0; i < kListSize; ++i)
      sequence.push_back(i);
    benchmark::DoNotOptimize(sequence.size());
  }
}
void ListAppend_std_vector(benchmark::State& state) {
  ListAppend_std<std::vector<int>>(state);
}
void ListAppend_std_deque(benchmark::State& state) {
  ListAppend_std<std::deque<int>>(state);
}

void ListIndexedRead_cow_List(benchmark::State& state) {
  const cow_List<int> list = MakeList(kListSize);
  for (auto _ : state) {
    long sum = 0;
    for (int i = 0; i < kListSize; ++i)
      sum += list.ConstGet(i);
    benchmark::DoNotOptimize(sum);
  }
}

template <class Sequence>
void ListIndexedRead_std(benchmark::State& state) {
  const Sequence sequence = MakeSequence<Sequence>(kListSize);
  for (auto _ : state) {
    long sum = 0;
    for (int i = 0; i < kListSize; ++i)
      sum += sequence[i];
    benchmark::DoNotOptimize(sum);
  }
}
void ListIndexedRead_std_vector(benchmark::State& state) {
  ListIndexedRead_std<std::vector<int>>(state);
}
void ListIndexedRead_std_deque(benchmark::State& state) {
  ListIndexedRead_std<std::deque<int>>(state);
}

void ListIterate_cow_ListIter(benchmark::State& state) {
  const cow_List<int> list = MakeList(kListSize);
  for (auto _ : state) {
    long sum = 0;
    for (cow_ListIter<int> it(list); !it.IsDone(); it.Next())
      sum += it.Current();
    benchmark::DoNotOptimize(sum);
  }
}

template <class Sequence>
void ListIterate_std(benchmark::State& state) {
  const Sequence sequence = MakeSequence<Sequence>(kListSize);
  for (auto _ : state) {
    long sum = 0;
    for (int value : sequence)
      sum += value;
    benchmark::DoNotOptimize(sum);
  }
}
void ListIterate_std_vector(benchmark::State& state) {
  ListIterate_std<std::vector<int>>(state);
}
void ListIterate_std_deque(benchmark::State& state) {
  ListIterate_std<std::deque<int>>(state);
}

// std::vector has no constant-time front insertion and is left out here.
void ListPrepend_cow_List(benchmark::State& state) {
  for (auto _ : state) {
    cow_List<int> list;
    for (int i = 0; i < kListSize; ++i)
      list.Prepend(i);
    benchmark::DoNotOptimize(list.Count());
  }
}

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
void MapInsertCow(benchmark::State& state) {
  MapInsert<cow_Map<K, int>, FilledCowMap<K>>(state);
}
template <class Map>
void MapInsertStd(benchmark::State& state) {
  MapInsert<Map, FilledStdMap<Map>>(state);
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

void MapInsert_cow_Map(benchmark::State& state) {
  MapInsertCow<int>(state);
}
void MapInsert_std_unordered_map(benchmark::State& state) {
  MapInsertStd<Unordered<int>>(state);
}
void MapInsert_std_map(benchmark::State& state) {
  MapInsertStd<std::map<int, int>>(state);
}
void MapLookup_cow_Map(benchmark::State& state) {
  MapLookupCow<int>(state);
}
void MapLookup_std_unordered_map(benchmark::State& state) {
  MapLookupStd<Unordered<int>>(state);
}
void MapLookup_std_map(benchmark::State& state) {
  MapLookupStd<std::map<int, int>>(state);
}
void MapStringInsert_cow_Map(benchmark::State& state) {
  MapInsertCow<cow_String>(state);
}
void MapStringInsert_std_unordered_map(benchmark::State& state) {
  MapInsertStd<Unordered<cow_String>>(state);
}
void MapStringInsert_std_map(benchmark::State& state) {
  MapInsertStd<std::map<cow_String, int>>(state);
}
void MapStringLookup_cow_Map(benchmark::State& state) {
  MapLookupCow<cow_String>(state);
}
void MapStringLookup_std_unordered_map(benchmark::State& state) {
  MapLookupStd<Unordered<cow_String>>(state);
}
void MapStringLookup_std_map(benchmark::State& state) {
  MapLookupStd<std::map<cow_String, int>>(state);
}

}  // namespace

BENCHMARK(ListAppend_cow_List);
BENCHMARK(ListAppend_cow_ListPresized);
BENCHMARK(ListAppend_std_vector);
BENCHMARK(ListAppend_std_deque);
BENCHMARK(ListIndexedRead_cow_List);
BENCHMARK(ListIndexedRead_std_vector);
BENCHMARK(ListIndexedRead_std_deque);
BENCHMARK(ListIterate_cow_ListIter);
BENCHMARK(ListIterate_std_vector);
BENCHMARK(ListIterate_std_deque);
BENCHMARK(ListPrepend_cow_List);
BENCHMARK(ListPrepend_std_deque);
BENCHMARK(ListCopy_cow_List)->Arg(1000)->Arg(kListSize);
BENCHMARK(ListCopy_std_vector)->Arg(1000)->Arg(kListSize);
BENCHMARK(MapInsert_cow_Map);
BENCHMARK(MapInsert_std_unordered_map);
BENCHMARK(MapInsert_std_map);
BENCHMARK(MapLookup_cow_Map);
BENCHMARK(MapLookup_std_unordered_map);
BENCHMARK(MapLookup_std_map);
BENCHMARK(MapStringInsert_cow_Map);
BENCHMARK(MapStringInsert_std_unordered_map);
BENCHMARK(MapStringInsert_std_map);
BENCHMARK(MapStringLookup_cow_Map);
BENCHMARK(MapStringLookup_std_unordered_map);
BENCHMARK(MapStringLookup_std_map);

BENCHMARK_MAIN();
