#include "sto_TestSamples.h"

#include <cstdio>
#include <cstring>

#include "cls_2dArrayPrim.h"
#include "cls_AgentRequest.h"
#include "cls_ArrayPrim.h"
#include "cls_ReadCollectionBase.h"
#include "cls_SimpleArrayPrim.h"
#include "cls_xoMap.h"
#include "cls_xp2DArray.h"
#include "cls_xpList.h"
#include "cls_xpMap.h"
#include "cls_xpString.h"
#include "nex_AssertException.h"
#include "nex_BadCastException.h"
#include "nex_ExitException.h"
#include "nex_InvalidObjException.h"
#include "nex_OutOfMemoryException.h"
#include "nex_SystemErrorException.h"
#include "nex_TextException.h"
#include "sto_Store.h"
#include "uti_CmdFailedException.h"
#include "uti_CoordCont3D.h"
#include "uti_IOErrorException.h"
#include "uti_InterruptedException.h"
#include "uti_OdmException.h"
#include "uti_PreCheckFile.h"
#include "uti_XypException.h"
#include "utl_RegionMassProps.h"

namespace {

template <class T>
VRKStoreSample Value(const char* name, std::function<T()> make) {
  return {name, [make] { return sto_Encode(make()); },
          [](const cow_String& bytes) { return sto_Encode(sto_DecodeValue<T>(bytes)); }};
}

// An exception, loaded through the registrar as its own class.
template <class T>
VRKStoreSample Error(const char* name, std::function<T()> make) {
  return {name, [make] { return sto_Encode<nex_Exception>(VRKStoreThrown(make())); },
          [](const cow_String& bytes) {
            sto_Object object = sto_Decode(bytes);
            const nex_Exception* error = object.As<nex_Exception>();
            return error && error->DynTypeId() == T::TypeId() ? sto_Encode(*error) : cow_String();
          }};
}

template <class List, class T>
List Appended(std::initializer_list<T> values) {
  List list;
  for (const T& value : values)
    list.Append(value);
  return list;
}

template <class T>
cls_xp2DArray<T> Table() {
  cls_xp2DArray<T> table(2, 3);
  for (int i = 0; i < 6; ++i)
    table.Get(i / 3, i % 3) = static_cast<T>(i * 1.5);
  return table;
}

template <class T>
cls_2dArrayPrim<T> Array2d() {
  cls_2dArrayPrim<T> array;
  array.SetWidth(3);
  for (int i = 0; i < 4000; ++i)
    array.Append(static_cast<T>(i * 0.5));
  return array;
}

// A list of values in a field, written through a cursor after the field's record (as
// uti_CoordCont3D does with its points).
template <class T>
struct SimpleHolder {
  static unsigned TypeId() { return 0x3E70004; }
  SimpleHolder() : values{1, 2, 3, 5, 8} {}
  explicit SimpleHolder(const cls_ReadVisitor& visitor) : uid(visitor.GetUid()) {
    cls_SimpleArrayPrim<T> list(cls_ReadVisitor(visitor, cls_FieldHandle(-1, "values")), &listUid);
    values.resize(static_cast<size_t>(list.Size()));
    list.Read(values.data(), list.Size());
  }
  void DBWrite(const cls_WriteVisitor& visitor) const {
    if (!visitor.StartWrite(TypeId(), uid)) return;
    cls_SimpleArrayPrim<T> list(listUid, 4);
    list.DBWrite(cls_WriteVisitor(visitor, cls_FieldHandle(-1, "values"), nullptr, nullptr));
    list.Write(values.data(), static_cast<int>(values.size()));
  }
  std::vector<T> values;
  cls_Uid uid;
  cls_Uid listUid;
};

// The two string values write into a memento that their holder has opened for them.
struct StringHolder {
  static unsigned TypeId() { return 0x3E70005; }
  StringHolder() : text(cow_String("plain")), translated(nex_Translate("Step %d", 4)) {}
  explicit StringHolder(const cls_ReadVisitor& visitor)
      : text(cls_ReadVisitor(visitor, cls_FieldHandle(0, "text"))),
        translated(cls_ReadVisitor(visitor, cls_FieldHandle(1, "translated"))) {}
  template <class S>
  static void Field(const cls_WriteVisitor& visitor, const char* name, const S& value) {
    cls_WriteVisitor field(visitor, cls_FieldHandle(-1, name), nullptr, &value);
    if (field.StartWrite(S::TypeId(), value.Uid())) value.DBWrite(field);
  }
  void DBWrite(const cls_WriteVisitor& visitor) const {
    if (!visitor.StartWrite(TypeId(), uid)) return;
    Field(visitor, "text", text);
    Field(visitor, "translated", translated);
  }
  cls_xpString text;
  cls_xpTrString translated;
  cls_Uid uid;
};

std::vector<VRKStoreSample> MakeSamples() {
  typedef cls_xoMap<int, cls_xp1DArrayListInt> IntMap;
  typedef cls_xoMap<cow_String, cls_xp1DArrayListFloat> FloatMap;
  typedef cls_xoMap<cow_String, cls_xp2DArrayDouble> TableMap;
  const float xyz[] = {1, 2, 3, 4, 5, 6, 7, 8, 9};
  const double center[3] = {1, 2, 3}, inertia[6] = {4, 5, 6, 7, 8, 9};
  return {
      Error<nex_TextException>("text", [] { return nex_TextException(nex_Translate("no mesh")); }),
      Error<nex_AssertException>("assert", [] { return nex_AssertException("n > 0"); }),
      Error<nex_BadCastException>("badcast",
                                  [] { return nex_BadCastException(nex_Translate("cast")); }),
      Error<nex_ExitException>("exit", [] { return nex_ExitException(nex_Translate("bye"), 3); }),
      Error<nex_InvalidObjException>(
          "invalid", [] { return nex_InvalidObjException(nex_Translate("stale")); }),
      Error<nex_SystemErrorException>(
          "system", [] { return nex_SystemErrorException(omi_SystemErrorCode(13)); }),
      Error<nex_OutOfMemoryException>(
          "memory", [] { return nex_OutOfMemoryException(nex_OutOfMemoryLimitReached); }),
      Error<uti_IOErrorException>("io", [] { return uti_IOErrorException("open", 5, "a.inp"); }),
      Error<uti_OdmException>("odm", [] { return uti_OdmException(nex_Translate("odm")); }),
      Error<uti_XypException>("xyp", [] { return uti_XypException(nex_Translate("xyp")); }),
      Error<uti_CmdFailedException>("cmd", [] { return uti_CmdFailedException("make", 2); }),
      Error<uti_InterruptedException>(
          "interrupted", [] { return uti_InterruptedException(uti_InterruptedException::Stop); }),
      Error<uti_PreCheckFileException>("precheck",
                                       [] {
                                         return uti_PreCheckFileException(
                                             uti_PreCheckFileException::FileNotFound, "x.dat");
                                       }),
      Value<cls_xpListInt>("listint",
                           [] {
                             return Appended<cls_xpListInt, int>({1, -2, 3});
                           }),
      Value<cls_xpListFloat>("listfloat",
                             [] {
                               return Appended<cls_xpListFloat, float>({1.5f, 2});
                             }),
      Value<cls_xpListDouble>("listdouble",
                              [] {
                                return Appended<cls_xpListDouble, double>({0.1, 9e99});
                              }),
      Value<cls_xpListString>("liststring",
                              [] {
                                return Appended<cls_xpListString, cow_String>({"a", ""});
                              }),
      Value<cls_xp1DArrayListBool>("bools",
                                   [] {
                                     return Appended<cls_xp1DArrayListBool, bool>({1, 0});
                                   }),
      Value<cls_xp1DArrayListDouble>("doubles",
                                     [] { return Appended<cls_xp1DArrayListDouble, double>({4}); }),
      Value<cls_xp1DArrayListFloat>("floats",
                                    [] { return Appended<cls_xp1DArrayListFloat, float>({5}); }),
      Value<cls_xp1DArrayListInt>("ints",
                                  [] {
                                    return Appended<cls_xp1DArrayListInt, int>({6, 7});
                                  }),
      Value<cls_xp1DArrayListString>(
          "strings", [] { return Appended<cls_xp1DArrayListString, cow_String>({"s"}); }),
      Value<cls_xp1DArrayListUint>("uints",
                                   [] { return Appended<cls_xp1DArrayListUint, unsigned>({8u}); }),
      Value<cls_xp2DArrayDouble>("table2d", [] { return cls_xp2DArrayDouble(Table<double>()); }),
      Value<cls_xp2DArrayFloat>("tablef", [] { return Table<float>(); }),
      Value<cls_xp2DArrayInt>("tablei", [] { return Table<int>(); }),
      Value<cls_xpMapInt2Int>("mapii",
                              [] {
                                cls_xpMapInt2Int map;
                                map.Insert(3, 9);
                                map.Insert(-1, 1);
                                return map;
                              }),
      Value<cls_xpMapString2Float>("mapsf",
                                   [] {
                                     cls_xpMapString2Float map;
                                     map.Insert("steel", 7.85f);
                                     return map;
                                   }),
      Value<cls_xpMapString2String>("mapss",
                                    [] {
                                      cls_xpMapString2String map;
                                      map.Insert("k", "v");
                                      return map;
                                    }),
      Value<cls_xpBtreeString2Uint>("btree",
                                    [] {
                                      cls_xpBtreeString2Uint tree;
                                      tree.InsertUnlessMember("mesh", 12u);
                                      return tree;
                                    }),
      Value<IntMap>("xointmap",
                    [] {
                      IntMap map;
                      map.Insert(4, Appended<cls_xp1DArrayListInt, int>({1, 2}));
                      return map;
                    }),
      Value<FloatMap>("xofloatmap",
                      [] {
                        FloatMap map;
                        map.Insert("f", Appended<cls_xp1DArrayListFloat, float>({0.5f}));
                        return map;
                      }),
      Value<TableMap>("xotablemap",
                      [] {
                        TableMap map;
                        map.Insert("t", cls_xp2DArrayDouble(Table<double>()));
                        return map;
                      }),
      Value<StringHolder>("strings2", [] { return StringHolder(); }),
      Value<cls_ArrayPrim<int>>("arrayint",
                                [] {
                                  return Appended<cls_ArrayPrim<int>, int>({1, 2});
                                }),
      Value<cls_ArrayPrim<float>>("arrayfloat",
                                  [] { return Appended<cls_ArrayPrim<float>, float>({3}); }),
      Value<cls_ArrayPrim<double>>("arraydouble",
                                   [] { return Appended<cls_ArrayPrim<double>, double>({4}); }),
      Value<cls_ArrayPrim<bool>>("arraybool",
                                 [] {
                                   return Appended<cls_ArrayPrim<bool>, bool>({true, false});
                                 }),
      Value<cls_ArrayPrim<cow_String>>(
          "arraystring",
          [] {
            return Appended<cls_ArrayPrim<cow_String>, cow_String>({"x", "yz"});
          }),
      Value<cls_2dArrayPrim<float>>("array2df", [] { return Array2d<float>(); }),
      Value<cls_2dArrayPrim<double>>("array2dd", [] { return Array2d<double>(); }),
      Value<SimpleHolder<int>>("simpleint", [] { return SimpleHolder<int>(); }),
      Value<SimpleHolder<float>>("simplefloat", [] { return SimpleHolder<float>(); }),
      Value<uti_Coord3D>("coord", [] { return uti_Coord3D(1, -2, 3.5f); }),
      Value<uti_CoordCont3D>("coords", [xyz] { return uti_CoordCont3D(xyz, 3); }),
      Value<utl_RegionMassProps>(
          "mass", [center, inertia] { return utl_RegionMassProps(2, center, inertia); }),
      Value<VRKStoreGraph>("graph", [] { return VRKStoreGraph(5); }),
  };
}

}  // namespace

const std::vector<VRKStoreSample>& VRKStoreSamples() {
  static const std::vector<VRKStoreSample> samples = MakeSamples();
  return samples;
}

// The node's fields, made once: a node is small, and the handles would cost it more than its
// values.
const cls_FieldHandle kId(0, "id"), kWeight(1, "weight"), kName(2, "name"), kNext(3, "next");

VRKStoreNode::VRKStoreNode(const cls_ReadVisitor& visitor)
    : id(visitor.Read(kId, -1)),
      weight(visitor.Read(kWeight, 0.0)),
      name(visitor.Read(kName, cow_String())),
      next(sto_ReadPointer<VRKStoreNode>(visitor, kNext)),
      uid(visitor.GetUid()) {}

void VRKStoreNode::DBWrite(const cls_WriteVisitor& visitor) const {
  if (!visitor.StartWrite(TypeId(), uid)) return;
  visitor.Write(kId, id);
  visitor.Write(kWeight, weight);
  visitor.Write(kName, name);
  sto_WritePointer(visitor, kNext, next);
}

VRKStoreGraph::VRKStoreGraph(int count) {
  for (int i = 0; i < count; ++i)
    nodes.emplace_back(new VRKStoreNode(i));
  for (int i = 1; i < count; ++i)
    nodes[i]->next = nodes[i / 2].get();
}

VRKStoreGraph::VRKStoreGraph(const cls_ReadVisitor& visitor) : uid(visitor.GetUid()) {
  cls_ReadCursor<cls_ReadListObj> list(visitor.Memento()->MakeListObj());
  while (list && list->HasMore())
    nodes.emplace_back(sto_ReadPointer<VRKStoreNode>(list->MakeReadObj()));
}

void VRKStoreGraph::DBWrite(const cls_WriteVisitor& visitor) const {
  if (!visitor.StartWrite(TypeId(), uid)) return;
  cls_WriteCursor<cls_WriteListObj> list(visitor.Memento()->MakeListObj(nodes.size()));
  for (const std::unique_ptr<VRKStoreNode>& node : nodes) {
    cls_WriteRequestListObj request(list.Get());
    node->DBWrite(cls_WriteVisitor(request, node.get()));
  }
}

long VRKPeakMemoryKiB() {
  std::FILE* status = std::fopen("/proc/self/status", "r");
  char line[256];
  long peak = -1;
  while (status != nullptr && std::fgets(line, sizeof line, status) != nullptr)
    if (std::strncmp(line, "VmHWM:", 6) == 0) peak = std::atol(line + 6);
  if (status != nullptr) std::fclose(status);
  return peak;
}
