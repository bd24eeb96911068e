#include "sto_Store.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "VRKTestChild.h"
#include "VRKTestLibrary.h"
#include "bio_IexternalMemFilter.h"
#include "cls_ArrayPrim.h"
#include "nex_TextException.h"
#include "sto_TestSamples.h"
#include "uti_CoordCont3D.h"

namespace {

class StoreTest : public VRKLibraryTest {};

// Every sample round-trips through a store: its bytes written again after a load are the
// bytes of a fresh sample, so that no field, element or list was lost or changed.
std::string CheckSamples(const std::function<cow_String(const char*)>& stored) {
  std::string failures;
  for (const VRKStoreSample& sample : VRKStoreSamples())
    if (sample.reencode(stored(sample.name)) != sample.encode())
      failures += std::string(sample.name) + " ";
  return failures;
}

TEST_F(StoreTest, EveryPersistentClassRoundTripsThroughMemoryAndAFileReadByAChild) {
  if (VRKChildRole() == "read-file") {
    sto_Store store(VRKChildArgs().at(0).c_str());
    const std::string failures = CheckSamples([&](const char* name) { return store.Get(name); });
    VRKChildExit(failures.empty() ? 0 : (std::fputs(failures.c_str(), stderr), 1));
  }
  sto_Store memory;
  VRKScratchDir dir;
  const std::string path = dir.Path() + "/samples.vst";
  {
    sto_Store file(path.c_str());
    for (const VRKStoreSample& sample : VRKStoreSamples()) {
      memory.Put(sample.name, sample.encode());
      file.Put(sample.name, sample.encode());
    }
  }
  EXPECT_EQ(CheckSamples([&](const char* name) { return memory.Get(name); }), "");
  EXPECT_EQ(memory.Names().Count(), static_cast<int>(VRKStoreSamples().size()));

  VRKChild child("read-file");
  child.args = {path};
  const VRKChildResult result = child.Run();
  EXPECT_EQ(result.exitCode, 0) << result.err;
}

TEST_F(StoreTest, ObjectsLoadThroughTheRegistrarAsTheirOwnClass) {
  sto_Store store;
  store.Save("error", VRKStoreThrown(nex_TextException(nex_Translate("disk full"))));
  store.Save("point", uti_Coord3D(1, 2, 3));
  sto_Object error = store.Load("error");
  ASSERT_NE(error.As<nex_Exception>(), nullptr);
  EXPECT_EQ(error.ClassId(), nex_TextException::TypeId());
  EXPECT_EQ(cow_String(error.As<nex_Exception>()->AsString()), "disk full");
  EXPECT_EQ(error.As<uti_Coord3D>(), nullptr);
  EXPECT_EQ(*store.Load("point").As<uti_Coord3D>(), uti_Coord3D(1, 2, 3));
  EXPECT_EQ(store.LoadValue<uti_Coord3D>("point"), uti_Coord3D(1, 2, 3));
}

TEST_F(StoreTest, AFileStoreKeepsItsNamesAndReplacesAGraphSavedAgain) {
  VRKScratchDir dir;
  const cow_String path = (dir.Path() + "/names.vst").c_str();
  {
    sto_Store store(path);
    store.Save("a", uti_Coord3D(1, 1, 1));
    store.Save("b", uti_Coord3D(2, 2, 2));
    store.Save("a", uti_Coord3D(3, 3, 3));
  }
  sto_Store store(path);
  ASSERT_EQ(store.Names().Count(), 2);
  EXPECT_EQ(store.Names().ConstGet(0), "a");
  EXPECT_EQ(store.LoadValue<uti_Coord3D>("a"), uti_Coord3D(3, 3, 3));
  EXPECT_FALSE(store.Has("c"));
  EXPECT_THROW(store.Get("c"), nex_TextException);
}

// Three versions of one class, as three programs would declare it: version 2 adds "weight",
// version 3 drops "label".
constexpr unsigned kVersionedClass = 0x3E70001;

template <int kVersion>
struct Versioned : mem_AllocationOperators {
  static unsigned TypeId() { return kVersionedClass; }
  Versioned() = default;
  explicit Versioned(const cls_ReadVisitor& v)
      : id(v.Read(cls_FieldHandle(0, "id"), -1)),
        label(v.Read(cls_FieldHandle(1, "label"), cow_String("none"))),
        weight(v.Read(cls_FieldHandle(2, "weight"), 0.5)) {}
  void DBWrite(const cls_WriteVisitor& v) const {
    if (!v.StartWrite(TypeId(), uid)) return;
    v.Write(cls_FieldHandle(0, "id"), id);
    if (kVersion < 3) v.Write(cls_FieldHandle(1, "label"), label);
    if (kVersion > 1) v.Write(cls_FieldHandle(2, "weight"), weight);
  }
  static void Register(cls_ClassRegistrar& registrar) {
    registrar.AddClassMD(new cls_TypeAdapter<Versioned>("Versioned", kVersionedClass, kVersion, 1));
  }
  int id = 7;
  cow_String label = "beam";
  double weight = 2.5;
  cls_Uid uid;
};

TEST_F(StoreTest, NewerVersionsReadOlderRecordsAndOlderOnesRefuseNewer) {
  cls_ClassRegistrar v1, v2, v3;
  Versioned<1>::Register(v1);
  Versioned<2>::Register(v2);
  Versioned<3>::Register(v3);
  const cow_String old = sto_Encode(Versioned<1>(), &v1);

  sto_Object added = sto_Decode(old, &v2);  // the field added takes its default
  EXPECT_EQ(added.As<Versioned<2>>()->id, 7);
  EXPECT_EQ(added.As<Versioned<2>>()->label, "beam");
  EXPECT_EQ(added.As<Versioned<2>>()->weight, 0.5);
  const Versioned<3> dropped = sto_DecodeValue<Versioned<3>>(old, &v3);  // "label" passed over
  EXPECT_EQ(dropped.id, 7);
  EXPECT_EQ(dropped.weight, 0.5);

  try {
    sto_Decode(sto_Encode(Versioned<2>(), &v2), &v1);
    ADD_FAILURE() << "a newer record was read";
  } catch (const nex_TextException& error) {
    EXPECT_NE(cow_String(error.AsString()).Find("Versioned version 2, newer than version 1"),
              cow_String(error.AsString()).Length())
        << error.AsString().c_str();
  }
  cls_ClassRegistrar none;
  EXPECT_THROW(sto_Decode(old, &none), nex_TextException);  // a class this program lacks
}

// A graph is in the library's external form: the external filter reads it field by field.
TEST_F(StoreTest, AGraphReadsWithTheExternalFilter) {
  cls_ClassRegistrar v1;
  Versioned<1>::Register(v1);
  cow_String bytes = sto_Encode(Versioned<1>(), &v1);
  bio_IexternalMemFilter in(const_cast<char*>(bytes.c_str()), static_cast<size_t>(bytes.Length()));
  unsigned head[4], length, classId, number;
  int version, id;
  unsigned char tag[3];
  char* names[3];
  in.getArray(head, 4);
  in >> tag[0] >> names[0] >> length >> classId >> version >> number;
  in >> tag[1] >> names[1] >> length >> id >> tag[2] >> names[2];
  EXPECT_EQ(head[0], 0x31545356u);  // "VST1"
  EXPECT_EQ(head[3], 1u);           // one identity
  EXPECT_EQ(std::string(names[0]) + names[1] + names[2], "rootidlabel");
  EXPECT_EQ(tag[0] * 10000 + tag[1] * 100 + tag[2], 210501);  // object, int, string
  EXPECT_EQ(classId, kVersionedClass);
  EXPECT_EQ(version, 1);
  EXPECT_EQ(id, 7);
  for (char* name : names)
    mem_Free(name);
}

TEST_F(StoreTest, SharedObjectsAreWrittenOnceAndBuiltOnce) {
  VRKStoreGraph graph(1000);
  const cow_String bytes = sto_Encode(graph);
  VRKStoreGraph back = sto_DecodeValue<VRKStoreGraph>(bytes);
  ASSERT_EQ(back.nodes.size(), graph.nodes.size());
  for (size_t i = 0; i < back.nodes.size(); ++i) {
    EXPECT_EQ(back.nodes[i]->id, graph.nodes[i]->id);
    EXPECT_EQ(back.nodes[i]->name, graph.nodes[i]->name);
    // The reference is to the one node built for it, not to a copy.
    const size_t target = graph.nodes[i]->next ? graph.nodes[i]->next->id : i;
    EXPECT_EQ(back.nodes[i]->next, graph.nodes[i]->next ? back.nodes[target].get() : nullptr);
  }
  // Each node once: a graph of twice the nodes takes about twice the bytes.
  EXPECT_LT(sto_Encode(VRKStoreGraph(2000)).Length(), 2.1 * bytes.Length());
}

TEST_F(StoreTest, BadGraphsRaiseSayingWhatAndWhereAndNeverCrash) {
  VRKStoreGraph cycle(3);
  cycle.nodes[0]->next = cycle.nodes[2].get();  // 0 -> 2 -> 1 -> 0
  try {
    sto_DecodeValue<VRKStoreGraph>(sto_Encode(cycle));
    ADD_FAILURE() << "a cycle was read";
  } catch (const nex_TextException& error) {
    EXPECT_NE(std::string(error.AsString().c_str()).find("cycle of references"), std::string::npos)
        << error.AsString().c_str();
  }
  EXPECT_THROW(sto_Decode("not a graph at all"), nex_TextException);

  // Every prefix of a graph is refused; a flipped byte is refused or read, never a crash.
  const cow_String bytes = VRKStoreSamples().front().encode();
  for (int length = 0; length < bytes.Length(); ++length)
    EXPECT_THROW(VRKStoreSamples().front().reencode(cow_String(bytes.c_str(), length)),
                 nex_Exception)
        << length;
  for (int at = 0; at < bytes.Length(); ++at) {
    std::string flipped(bytes.c_str(), static_cast<size_t>(bytes.Length()));
    flipped[static_cast<size_t>(at)] ^= 0x5A;
    try {
      VRKStoreSamples().front().reencode(cow_String(flipped.data(), bytes.Length()));
    } catch (const nex_Exception&) {
    }
  }
}

// Writes and reads back a paging array of ten million elements in a file store, then prints
// the process's peak memory in KiB.
TEST_F(StoreTest, ATenMillionElementArrayPagesThroughAFileWithOneBlockResident) {
  if (VRKChildRole() == "big") {
    const int count = 10000000;
    const cow_String path = VRKChildArgs().at(0).c_str();
    {
      cls_ArrayPrim<int> array;
      sto_Store store(path);
      store.Save("big", array);  // attached from here on: it pages
      for (int i = 0; i < count; ++i)
        array.Append(i * 3);
      EXPECT_LE(array.BlocksInMemory(), 1);
      store.Save("big", array);
    }
    sto_Store store(path);
    cls_ArrayPrim<int> back = store.LoadValue<cls_ArrayPrim<int>>("big");
    int wrong = back.Size() == count ? 0 : 1;
    for (int i = 0; i < count; i += 997)
      wrong += back.ConstGet(i) != i * 3;
    wrong += back.ConstGet(count - 1) != (count - 1) * 3 || back.BlocksInMemory() > 1;
    std::printf("peak %ld\n", VRKPeakMemoryKiB());
    VRKChildExit(wrong == 0 && !HasFailure() ? 0 : 1);
  }
  VRKScratchDir dir;
  VRKChild child("big");
  child.args = {dir.Path() + "/big.vst"};
  child.env = {{"ASAN_OPTIONS", "quarantine_size_mb=0:detect_leaks=0"}};
  const VRKChildResult result = child.Run();
  ASSERT_EQ(result.exitCode, 0) << result.out << result.err;
  const std::string out = VRKChildOutput(result.out);
  const long peak = std::stol(out.substr(out.find("peak ") + 5));
  EXPECT_LT(peak, 256L * 1024) << out;
}

}  // namespace
