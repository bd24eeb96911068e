// The memory resource manager against its peers: omi_Btree<int, int> against std::map and
// absl::btree_map (insert, find and remove of 100,000 keys, ascending and random), and
// mrm_Pool::Alloc + Free against malloc + free of glibc and of mimalloc, with the memory
// layer's own allocation beside them for reference.
//
// mimalloc's shared library replaces malloc for the whole process when it is linked, which
// would put the glibc pair and the memory layer under mimalloc too. It is therefore loaded
// privately (dlopen, RTLD_LOCAL) and only its mi_malloc and mi_free are called.
#include <benchmark/benchmark.h>
#include <dlfcn.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <numeric>
#include <random>
#include <string>
#include <vector>

#ifdef VRK_HAVE_ABSL
#include <absl/container/btree_map.h>
#endif

#include "VRKLnuLifecycle.h"
#include "mem_Alloc.h"
#include "mrm_Label.h"
#include "mrm_Pool.h"
#include "omi_Btree.h"

namespace {

constexpr int kKeys = 100000;

// The keys in the order they are inserted, and the order they are looked up and removed in:
// both ascending, or two independent random orders.
struct Keys {
  std::vector<int> insert;
  std::vector<int> use;
};

std::array<Keys, 2> MakeKeys() {
  Keys ascending;
  ascending.insert.resize(kKeys);
  std::iota(ascending.insert.begin(), ascending.insert.end(), 0);
  ascending.use = ascending.insert;
  Keys random = ascending;
  std::mt19937 generator(17);
  std::shuffle(random.insert.begin(), random.insert.end(), generator);
  std::shuffle(random.use.begin(), random.use.end(), generator);
  return {ascending, random};
}

const Keys& KeysFor(bool random) {
  static const std::array<Keys, 2> keys = MakeKeys();
  return keys[random];
}

// The same three operations on every tree.
struct OmiTree {
  omi_Btree<int, int> tree{-1};
  void Insert(int key) { tree.Insert(key, key); }
  int Find(int key) const { return tree.ConstFind(key); }
  void Remove(int key) { tree.Remove(key); }
};

template <class Map>
struct StdTree {
  Map tree;
  void Insert(int key) { tree.emplace(key, key); }
  int Find(int key) const { return tree.find(key)->second; }
  void Remove(int key) { tree.erase(key); }
};

template <class Tree>
Tree Filled(const Keys& keys) {
  Tree tree;
  for (int key : keys.insert)
    tree.Insert(key);
  return tree;
}

template <class Tree, bool random>
void TreeInsert(benchmark::State& state) {
  const Keys& keys = KeysFor(random);
  for (auto _ : state) {
    Tree tree = Filled<Tree>(keys);
    benchmark::DoNotOptimize(&tree);
  }
  state.SetItemsProcessed(state.iterations() * kKeys);
}

template <class Tree, bool random>
void TreeFind(benchmark::State& state) {
  const Keys& keys = KeysFor(random);
  const Tree tree = Filled<Tree>(keys);
  for (auto _ : state) {
    long sum = 0;
    for (int key : keys.use)
      sum += tree.Find(key);
    benchmark::DoNotOptimize(sum);
  }
  state.SetItemsProcessed(state.iterations() * kKeys);
}

template <class Tree, bool random>
void TreeRemove(benchmark::State& state) {
  const Keys& keys = KeysFor(random);
  for (auto _ : state) {
    state.PauseTiming();
    Tree tree = Filled<Tree>(keys);
    state.ResumeTiming();
    for (int key : keys.use)
      tree.Remove(key);
    benchmark::DoNotOptimize(&tree);
  }
  state.SetItemsProcessed(state.iterations() * kKeys);
}

template <class Tree>
void RegisterTree(const char* name) {
  struct Case {
    const char* operation;
    void (*ascending)(benchmark::State&);
    void (*random)(benchmark::State&);
  };
  const Case cases[] = {{"Insert", TreeInsert<Tree, false>, TreeInsert<Tree, true>},
                        {"Find", TreeFind<Tree, false>, TreeFind<Tree, true>},
                        {"Remove", TreeRemove<Tree, false>, TreeRemove<Tree, true>}};
  for (const Case& c : cases) {
    for (bool random : {false, true}) {
      const std::string label =
          std::string("Btree") + c.operation + (random ? "Random_" : "Ascending_") + name;
      benchmark::RegisterBenchmark(label.c_str(), random ? c.random : c.ascending);
    }
  }
}

// Alloc and Free of one piece on a pool that already holds its first block, so that the
// provider's charge stays: no tree lookup on this path.
void PoolAllocFree_mrm_Pool(benchmark::State& state) {
  int tally = 0;
  VRKLnuBasicUtils_initialize(tally);
  mrm_Pool* pool = mrm_PoolFactory::SpotStartup(mrm_TestLabel(1, 0, 0), mrm_JobPhaseLabel(),
                                                mrm_SmallBlockCapacity());
  pool->Free(pool->Alloc(1));
  const int64_t size = state.range(0);
  for (auto _ : state) {
    void* piece = pool->Alloc(size);
    benchmark::DoNotOptimize(piece);
    pool->Free(piece);
  }
  mrm_PoolFactory::Shutdown(pool);
  VRKLnuBasicUtils_finalize(tally);
}

template <void* (*allocate)(size_t), void (*release)(void*)>
void AllocFree(benchmark::State& state) {
  const size_t size = state.range(0);
  for (auto _ : state) {
    void* block = allocate(size);
    benchmark::DoNotOptimize(block);
    release(block);
  }
}

void MemFree(void* block) {
  mem_Free(block);
}
void* GlibcMalloc(size_t size) {
  return std::malloc(size);
}
void GlibcFree(void* block) {
  std::free(block);
}

#ifdef VRK_MIMALLOC_LIBRARY
void* (*miMalloc)(size_t) = nullptr;
void (*miFree)(void*) = nullptr;

void* MiMalloc(size_t size) {
  return miMalloc(size);
}
void MiFree(void* block) {
  miFree(block);
}

bool LoadMimalloc() {
  void* library = dlopen(VRK_MIMALLOC_LIBRARY, RTLD_NOW | RTLD_LOCAL);
  if (library == nullptr) return false;
  miMalloc = reinterpret_cast<void* (*)(size_t)>(dlsym(library, "mi_malloc"));
  miFree = reinterpret_cast<void (*)(void*)>(dlsym(library, "mi_free"));
  return miMalloc != nullptr && miFree != nullptr;
}
#endif

void RegisterBenchmarks() {
  RegisterTree<OmiTree>("omi_Btree");
#ifdef VRK_HAVE_ABSL
  RegisterTree<StdTree<absl::btree_map<int, int>>>("absl_btree_map");
#endif
  RegisterTree<StdTree<std::map<int, int>>>("std_map");

  benchmark::RegisterBenchmark("PoolAllocFree_mrm_Pool", PoolAllocFree_mrm_Pool)
      ->RangeMultiplier(2)
      ->Range(16, 256);
#ifdef VRK_MIMALLOC_LIBRARY
  if (LoadMimalloc()) {
    benchmark::RegisterBenchmark("PoolAllocFree_mimalloc", AllocFree<MiMalloc, MiFree>)
        ->RangeMultiplier(2)
        ->Range(16, 256);
  } else {
    std::fprintf(stderr, "mimalloc could not be loaded: its comparison is skipped\n");
  }
#endif
  // The memory layer that mrm_Pool allocates through, for reference.
  benchmark::RegisterBenchmark("PoolAllocFree_mem_Alloc",
                               AllocFree<mem_OperatorNewThrowBuiltin, MemFree>)
      ->RangeMultiplier(2)
      ->Range(16, 256);
  benchmark::RegisterBenchmark("PoolAllocFree_glibc", AllocFree<GlibcMalloc, GlibcFree>)
      ->RangeMultiplier(2)
      ->Range(16, 256);
}

}  // namespace

int main(int argc, char** argv) {
  RegisterBenchmarks();
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
}
