// The reference store against the serialization libraries, to memory: a list of 1,000,000
// doubles and a graph of 100,000 small objects (three fields and a pointer each, node i
// pointing at node i / 2), written and read back. The store keeps the doubles in a paging
// array (cls_ArrayPrim, its bulk path) and, for comparison, in a value list
// (cls_xpListDouble, one value at a time through its cursor); the peers write a
// std::vector<double> and a vector of nodes with their pointers tracked. Boost.Serialization's
// binary archives are the peer named last; cereal's binary archives stand beside it. Each
// side writes into a growing block of memory and reads from the block it wrote.
#include <benchmark/benchmark.h>

#include <memory>
#include <streambuf>
#include <string>
#include <vector>

#include "VRKBenchMain.h"
#include "cls_ArrayPrim.h"
#include "cls_xpList.h"
#include "sto_Store.h"
#include "sto_TestSamples.h"

#ifdef VRK_HAVE_BOOST_SERIALIZATION
#include <boost/archive/binary_iarchive.hpp>
#include <boost/archive/binary_oarchive.hpp>
#include <boost/serialization/string.hpp>
#include <boost/serialization/vector.hpp>
#endif
#ifdef VRK_HAVE_CEREAL
#include <cereal/archives/binary.hpp>
#include <cereal/types/memory.hpp>
#include <cereal/types/string.hpp>
#include <cereal/types/vector.hpp>
#endif

namespace {

constexpr int kDoubles = 1000000;
constexpr int kNodes = 100000;

std::vector<double> Doubles() {
  std::vector<double> values(kDoubles);
  for (int i = 0; i < kDoubles; ++i)
    values[i] = i * 0.5;
  return values;
}

// The peers write into a string that grows as a stream's buffer and read from one in place.
class MemoryOut : public std::streambuf {
 public:
  std::string bytes;

 protected:
  std::streamsize xsputn(const char* s, std::streamsize n) override {
    bytes.append(s, static_cast<size_t>(n));
    return n;
  }
  int_type overflow(int_type c) override {
    if (c != traits_type::eof()) bytes.push_back(static_cast<char>(c));
    return c;
  }
};

class MemoryIn : public std::streambuf {
 public:
  explicit MemoryIn(const std::string& bytes) {
    char* begin = const_cast<char*>(bytes.data());
    setg(begin, begin, begin + bytes.size());
  }
};

// The array spills to the store at its first write, before the timing, and pages from then on.
void WriteDoubles_sto_ArrayPrim(benchmark::State& state) {
  cls_ArrayPrim<double> array;
  for (double value : Doubles())
    array.Append(value);
  sto_Encode(array);
  for (auto _ : state)
    benchmark::DoNotOptimize(sto_Encode(array));
}

void WriteDoubles_sto_xpList(benchmark::State& state) {
  cls_xpListDouble list;
  for (double value : Doubles())
    list.Append(value);
  for (auto _ : state)
    benchmark::DoNotOptimize(sto_Encode(list));
}

void ReadDoubles_sto_ArrayPrim(benchmark::State& state) {
  cls_ArrayPrim<double> array;
  for (double value : Doubles())
    array.Append(value);
  const cow_String bytes = sto_Encode(array);
  for (auto _ : state)
    benchmark::DoNotOptimize(sto_DecodeValue<cls_ArrayPrim<double>>(bytes).Size());
}

void ReadDoubles_sto_xpList(benchmark::State& state) {
  cls_xpListDouble list;
  for (double value : Doubles())
    list.Append(value);
  const cow_String bytes = sto_Encode(list);
  for (auto _ : state)
    benchmark::DoNotOptimize(sto_DecodeValue<cls_xpListDouble>(bytes).Count());
}

void WriteGraph_sto(benchmark::State& state) {
  const VRKStoreGraph graph(kNodes);
  for (auto _ : state)
    benchmark::DoNotOptimize(sto_Encode(graph));
}

void ReadGraph_sto(benchmark::State& state) {
  const cow_String bytes = sto_Encode(VRKStoreGraph(kNodes));
  for (auto _ : state)
    benchmark::DoNotOptimize(sto_DecodeValue<VRKStoreGraph>(bytes).nodes.size());
}

// The peers' node: the same three fields and pointer.
struct PeerNode {
  int id = 0;
  double weight = 0;
  std::string name;
  PeerNode* next = nullptr;

  template <class Archive>
  void serialize(Archive& archive, unsigned) {
    archive& id& weight& name& next;
  }
};

struct PeerGraph {
  std::vector<std::unique_ptr<PeerNode>> owned;
  std::vector<PeerNode*> nodes;
  explicit PeerGraph(int count) {
    for (int i = 0; i < count; ++i) {
      owned.emplace_back(new PeerNode{i, i * 0.25, std::to_string(i)});
      nodes.push_back(owned.back().get());
    }
    for (int i = 1; i < count; ++i)
      nodes[i]->next = nodes[i / 2];
  }
};

#ifdef VRK_HAVE_CEREAL
// cereal keeps pointers only as shared pointers.
struct CerealNode {
  int id = 0;
  double weight = 0;
  std::string name;
  std::shared_ptr<CerealNode> next;
  template <class Archive>
  void serialize(Archive& archive) {
    archive(id, weight, name, next);
  }
};

std::vector<std::shared_ptr<CerealNode>> CerealGraph() {
  std::vector<std::shared_ptr<CerealNode>> nodes;
  for (int i = 0; i < kNodes; ++i)
    nodes.push_back(std::make_shared<CerealNode>(CerealNode{i, i * 0.25, std::to_string(i), {}}));
  for (int i = 1; i < kNodes; ++i)
    nodes[i]->next = nodes[i / 2];
  return nodes;
}

template <class T>
std::string CerealBytes(const T& value) {
  MemoryOut out;
  std::ostream stream(&out);
  cereal::BinaryOutputArchive archive(stream);
  archive(value);
  return std::move(out.bytes);
}

template <class T>
void CerealWrite(benchmark::State& state, const T& value) {
  for (auto _ : state)
    benchmark::DoNotOptimize(CerealBytes(value));
}

template <class T>
void CerealRead(benchmark::State& state, const T& value) {
  const std::string bytes = CerealBytes(value);
  for (auto _ : state) {
    MemoryIn in(bytes);
    std::istream stream(&in);
    cereal::BinaryInputArchive archive(stream);
    T back;
    archive(back);
    benchmark::DoNotOptimize(back.size());
  }
}

void WriteDoubles_cereal(benchmark::State& state) {
  CerealWrite(state, Doubles());
}
void ReadDoubles_cereal(benchmark::State& state) {
  CerealRead(state, Doubles());
}
void WriteGraph_cereal(benchmark::State& state) {
  CerealWrite(state, CerealGraph());
}
void ReadGraph_cereal(benchmark::State& state) {
  CerealRead(state, CerealGraph());
}
#endif

#ifdef VRK_HAVE_BOOST_SERIALIZATION
template <class T>
std::string BoostBytes(const T& value) {
  MemoryOut out;
  {
    boost::archive::binary_oarchive archive(out);
    archive << value;
  }
  return std::move(out.bytes);
}

void WriteDoubles_boost(benchmark::State& state) {
  const std::vector<double> values = Doubles();
  for (auto _ : state)
    benchmark::DoNotOptimize(BoostBytes(values));
}

void ReadDoubles_boost(benchmark::State& state) {
  const std::string bytes = BoostBytes(Doubles());
  for (auto _ : state) {
    MemoryIn in(bytes);
    boost::archive::binary_iarchive archive(in);
    std::vector<double> back;
    archive >> back;
    benchmark::DoNotOptimize(back.size());
  }
}

void WriteGraph_boost(benchmark::State& state) {
  const PeerGraph graph(kNodes);
  for (auto _ : state)
    benchmark::DoNotOptimize(BoostBytes(graph.nodes));
}

void ReadGraph_boost(benchmark::State& state) {
  const std::string bytes = BoostBytes(PeerGraph(kNodes).nodes);
  for (auto _ : state) {
    MemoryIn in(bytes);
    boost::archive::binary_iarchive archive(in);
    std::vector<PeerNode*> back;
    archive >> back;
    benchmark::DoNotOptimize(back.size());
    for (PeerNode* node : back)
      delete node;
  }
}
#endif

BENCHMARK(WriteDoubles_sto_ArrayPrim)->Unit(benchmark::kMillisecond);
BENCHMARK(WriteDoubles_sto_xpList)->Unit(benchmark::kMillisecond);
BENCHMARK(ReadDoubles_sto_ArrayPrim)->Unit(benchmark::kMillisecond);
BENCHMARK(ReadDoubles_sto_xpList)->Unit(benchmark::kMillisecond);
BENCHMARK(WriteGraph_sto)->Unit(benchmark::kMillisecond);
BENCHMARK(ReadGraph_sto)->Unit(benchmark::kMillisecond);
#ifdef VRK_HAVE_CEREAL
BENCHMARK(WriteDoubles_cereal)->Unit(benchmark::kMillisecond);
BENCHMARK(ReadDoubles_cereal)->Unit(benchmark::kMillisecond);
BENCHMARK(WriteGraph_cereal)->Unit(benchmark::kMillisecond);
BENCHMARK(ReadGraph_cereal)->Unit(benchmark::kMillisecond);
#endif
#ifdef VRK_HAVE_BOOST_SERIALIZATION
BENCHMARK(WriteDoubles_boost)->Unit(benchmark::kMillisecond);
BENCHMARK(ReadDoubles_boost)->Unit(benchmark::kMillisecond);
BENCHMARK(WriteGraph_boost)->Unit(benchmark::kMillisecond);
BENCHMARK(ReadGraph_boost)->Unit(benchmark::kMillisecond);
#endif

}  // namespace

int main(int argc, char** argv) {
  return VRKBenchmarkMain(argc, argv);
}
