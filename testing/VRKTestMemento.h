// A store for tests of persistent classes: a pair of concrete mementos that keep what is
// written in records and log every call, so that a test can check the exact sequence of a
// DBWrite and rebuild objects from the records through their read constructors.
//
//   VRKTestStore store;
//   store.WriteField("e", error);    // error.DBWrite in field "e" of the root record
//   auto back = store.ReadField<nex_TextException>("e");
//
// Log lines read "<record>: <call>", a record being "<class id in hex>#<identity number>"
// ("root" for the root record). Identities are numbered from 1 in the order the store first
// sees them. A store answers null (declines the object) for an identity it has written
// already and for a class given to Decline.
//
// Collections are kept too: a list's values and width, a map's keys and values, the element
// records of lists and maps of objects, and the data of list agents (VRKTestAgent), which
// count their reads and writes in the store. Cursor calls are logged on the record of the
// collection; a read cursor moves to the next entry on Next or Key.
#ifndef VRKTESTMEMENTO_H
#define VRKTESTMEMENTO_H

#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "VRKTestLibrary.h"
#include "cls_AgentListPrim.h"
#include "cls_MementoRead.h"
#include "cls_MementoWrite.h"
#include "cls_PC.h"
#include "cls_ReadCollectionBase.h"
#include "cls_ReadVisitor.h"
#include "cls_Uid.h"
#include "cls_WriteCollectionBase.h"
#include "cls_WriteVisitor.h"

class cls_AgentBlob;

// One stored object: its class, its identity's number, its fields by name (the value as
// text), its base-class part and the objects in its fields; for a collection, its values (or
// element records) with their keys, its width, and an agent's data (a std::vector<T>).
struct VRKTestRecord {
  unsigned classId = 0;
  int uid = 0;
  std::map<std::string, std::string> values;
  std::unique_ptr<VRKTestRecord> base;
  std::map<std::string, std::unique_ptr<VRKTestRecord>> nested;

  int width = 0;
  std::vector<std::string> keys;
  std::vector<std::string> items;
  std::vector<std::unique_ptr<VRKTestRecord>> elements;  // null: a null or declined element
  std::shared_ptr<void> agentData;
  int extentQuantum = 0;

  std::string Label() const;
};

// What the list agents of a store did.
struct VRKTestAgentCounts {
  int reads = 0;
  int writes = 0;
  int flushes = 0;
  int deleted = 0;
};

template <class T>
class VRKTestAgent;

class VRKTestStore {
 public:
  VRKTestStore() = default;
  VRKTestStore(const VRKTestStore&) = delete;
  VRKTestStore& operator=(const VRKTestStore&) = delete;

  // A memento over the root record, for a root cls_WriteVisitor, which deletes it.
  cls_MementoWrite* NewWriter();
  // A memento over the root record, for a root cls_ReadVisitor, which deletes it.
  cls_MementoRead* NewReader();

  // Objects of this class are declined from now on.
  void Decline(unsigned classId) { m_Declined.insert(classId); }
  // The blob agent that MakeAgentBlob hands out next (null: none); the caller keeps it.
  void SetBlobAgent(cls_AgentBlob* agent) { m_BlobAgent = agent; }
  // Agent calls are logged unless this is off (for tests of many blocks).
  void LogAgents(bool on) { m_LogAgents = on; }

  const VRKTestRecord& Root() const { return m_Root; }
  // The record of the object in field `name` of the root record.
  VRKTestRecord& Record(const char* name) { return *m_Root.nested.at(name); }
  // The data of the list agent in field `name` of the root record.
  template <class T>
  std::vector<T>& AgentData(const char* name) {
    return *static_cast<std::vector<T>*>(Record(name).agentData.get());
  }
  // The list agent made last, while it lives; null otherwise.
  template <class T>
  VRKTestAgent<T>* LastAgent() const {
    return static_cast<VRKTestAgent<T>*>(m_LastAgent);
  }
  const std::vector<std::string>& Calls() const { return m_Calls; }
  // The calls logged since the last Take, which it clears.
  std::vector<std::string> Take();
  VRKTestAgentCounts& Agents() { return m_Agents; }
  // Writes `object` through its DBWrite in field `name` of the root record.
  template <class T>
  void WriteField(const char* name, const T& object) {
    cls_WriteVisitor root(NewWriter());
    object.DBWrite(cls_WriteVisitor(root, cls_FieldHandle(0, name), nullptr, &object));
  }
  // A T rebuilt through its read constructor from field `name` of the root record.
  template <class T>
  T ReadField(const char* name) {
    cls_ReadVisitor root(NewReader());
    return T(cls_ReadVisitor(root, cls_FieldHandle(0, name)));
  }
  // The number of the identity, given at first sight.
  int Number(const cls_Uid& uid);
  // The identity of a number the store has given.
  const cls_Uid& UidOf(int number) const { return m_Uids[number - 1]; }

  void Log(const VRKTestRecord& record, const std::string& call);
  // Null when the object is declined; otherwise marks its identity as written.
  VRKTestRecord* Admit(std::unique_ptr<VRKTestRecord>& slot, unsigned classId, const cls_Uid& uid);
  bool LoggingAgents() const { return m_LogAgents; }
  void* m_LastAgent = nullptr;

 private:
  VRKTestRecord m_Root;
  std::vector<std::string> m_Calls;
  std::vector<cls_Uid> m_Uids;
  std::set<int> m_Written;
  std::set<unsigned> m_Declined;
  cls_AgentBlob* m_BlobAgent = nullptr;
  VRKTestAgentCounts m_Agents;
  bool m_LogAgents = true;

  friend class VRKTestMementoWrite;
  friend class VRKTestMementoRead;
};

// The ring of arrays that share an agent: an anchor that is never flushed or detached.
class VRKTestOwners : public cls_PC {
 public:
  void Flush() const override {}
  void Detach() override {}
  int Count() const;
};

// A list agent over the data of a record, counted as the arrays expect: it starts at 0
// references. Refresh reports a change once after MarkChanged.
template <class T>
class VRKTestAgent : public cls_AgentListPrim<T> {
 public:
  VRKTestAgent(VRKTestStore& store, VRKTestRecord& record);
  ~VRKTestAgent() override;

  int Size() const override { return static_cast<int>(m_Data.size()); }
  int ExtentQuantum() const override { return m_Record.extentQuantum; }
  int Refresh() override;
  void Flush() override;
  void Write(int index, int count, const T* values) override;
  int Read(int index, int count, T* values) override;
  void AddRef() override { ++m_RefCount; }
  void Release() override { --m_RefCount; }
  int RefCount() const override { return m_RefCount; }
  int IsReadOnly() const override { return m_ReadOnly; }
  void Link(cls_PC* owner) override { m_Owners.Link(owner); }

  void MarkChanged() { m_Changed = true; }
  void SetReadOnly(bool readOnly) { m_ReadOnly = readOnly; }
  int Owners() const { return m_Owners.Count(); }
  std::vector<T>& Data() { return m_Data; }

 private:
  void Log(const std::string& call);

  VRKTestStore& m_Store;
  VRKTestRecord& m_Record;
  std::vector<T>& m_Data;
  VRKTestOwners m_Owners;
  int m_RefCount = 0;
  bool m_ReadOnly = false;
  bool m_Changed = false;
};

class VRKTestMementoWrite : public cls_MementoWrite {
 public:
  VRKTestMementoWrite(VRKTestStore& store, VRKTestRecord& record)
      : m_Store(store), m_Record(record) {}

  int FieldIsPresent(const cls_FieldHandle& field) override;
  cls_MementoWrite* MakeWriteObjWithPtr(const cls_FieldHandle& field, unsigned classId,
                                        const cls_Uid& uid, const void* object) override;
  cls_MementoWrite* MakeWriteObj(const cls_FieldHandle& field, unsigned classId, const cls_Uid& uid,
                                 const cow_COW<int, cow_Direct<int>>* cow) override;
  cls_MementoWrite* MakeBaseWriteObj(unsigned classId, const cls_Uid& uid) override;
  void WriteNull(const cls_FieldHandle& field) override;
  void Write(const cls_FieldHandle& f, const cow_String& v) override { Put(f, "string", v); }
  void Write(const cls_FieldHandle& f, double v) override { Put(f, "double", v); }
  void Write(const cls_FieldHandle& f, float v) override { Put(f, "float", v); }
  void Write(const cls_FieldHandle& f, unsigned int v) override { Put(f, "unsigned", v); }
  void Write(const cls_FieldHandle& f, int v) override { Put(f, "int", v); }
  void Write(const cls_FieldHandle& f, unsigned short v) override { Put(f, "ushort", v); }
  void Write(const cls_FieldHandle& f, short v) override { Put(f, "short", v); }
  void Write(const cls_FieldHandle& f, unsigned char v) override { Put(f, "uchar", v); }
  void Write(const cls_FieldHandle& f, char v) override { Put(f, "char", v); }
  void Write(const cls_FieldHandle& f, bool v) override { Put(f, "bool", v); }
  void Write(const cls_FieldHandle& f, long v) override { Put(f, "long", v); }
  cls_WriteListObj* MakeListObj(unsigned count) override;
  cls_WriteMapInt2Obj* MakeMapInt2Obj() override;
  cls_WriteIntTableInt* MakeIntTableInt() override;
  cls_WriteMapString2Obj* MakeMapString2Obj() override;
  cls_WriteListPrim<bool>* MakeListPrim(const bool& s, int w) override { return List(s, w); }
  cls_WriteListPrim<cow_String>* MakeListPrim(const cow_String& s, int w) override {
    return List(s, w);
  }
  cls_WriteListPrim<float>* MakeListPrim(const float& s, int w) override { return List(s, w); }
  cls_WriteListPrim<double>* MakeListPrim(const double& s, int w) override { return List(s, w); }
  cls_WriteListPrim<unsigned>* MakeListPrim(const unsigned& s, int w) override {
    return List(s, w);
  }
  cls_WriteListPrim<int>* MakeListPrim(const int& s, int w) override { return List(s, w); }
  cls_WriteMapInt2Prim<unsigned>* MakeMapInt2Prim(const unsigned& s) override;
  cls_WriteMapInt2Prim<cow_String>* MakeMapInt2Prim(const cow_String& s) override;
  cls_WriteMapInt2Prim<int>* MakeMapInt2Prim(const int& s) override;
  cls_WriteMapInt2Prim<float>* MakeMapInt2Prim(const float& s) override;
  cls_WriteMapInt2Prim<double>* MakeMapInt2Prim(const double& s) override;
  cls_WriteMapString2Prim<unsigned>* MakeMapString2Prim(const unsigned& s) override;
  cls_WriteMapString2Prim<cow_String>* MakeMapString2Prim(const cow_String& s) override;
  cls_WriteMapString2Prim<int>* MakeMapString2Prim(const int& s) override;
  cls_WriteMapString2Prim<float>* MakeMapString2Prim(const float& s) override;
  cls_WriteMapString2Prim<double>* MakeMapString2Prim(const double& s) override;
  cls_AgentListPrim<bool>* MakeAgentList(const bool& s, int q) override { return Agent(s, q); }
  cls_AgentListPrim<double>* MakeAgentList(const double& s, int q) override { return Agent(s, q); }
  cls_AgentListPrim<float>* MakeAgentList(const float& s, int q) override { return Agent(s, q); }
  cls_AgentListPrim<int>* MakeAgentList(const int& s, int q) override { return Agent(s, q); }
  cls_AgentListPrim<cow_String>* MakeAgentList(const cow_String& s, int q) override {
    return Agent(s, q);
  }
  cls_AgentListPrim<unsigned>* MakeAgentList(const unsigned& s, int q) override {
    return Agent(s, q);
  }
  cls_AgentBlob* MakeAgentBlob() override;
  void CheckCollectionType(cls_CollectionType tag, const cow_String& fieldName) override;
  void StartSharedPtrOutput() override;
  void EndSharedPtrOutput() override;

 private:
  void Log(const std::string& call) { m_Store.Log(m_Record, call); }
  template <class T>
  void Put(const cls_FieldHandle& field, const char* type, const T& value);
  cls_MementoWrite* Nested(const char* call, const cls_FieldHandle& field, unsigned classId,
                           const cls_Uid& uid);
  template <class T>
  cls_WriteListPrim<T>* List(const T&, int width);
  template <class T>
  cls_AgentListPrim<T>* Agent(const T&, int extentQuantum);

  VRKTestStore& m_Store;
  VRKTestRecord& m_Record;
};

class VRKTestMementoRead : public cls_MementoRead {
 public:
  VRKTestMementoRead(VRKTestStore& store, const VRKTestRecord& record)
      : m_Store(store), m_Record(const_cast<VRKTestRecord&>(record)) {}

  cow_String DbId() override;
  cls_Uid GetUid() override;
  int FieldIsPresent(const cls_FieldHandle& field) override;
  int DataIsPresent(const cls_FieldHandle& field) override;
  cls_MementoRead* MakeReadObj(const cls_FieldHandle& field) override;
  cls_MementoRead* MakeBaseReadObj() override;
  cow_String Read(const cls_FieldHandle& f, const cow_String& o) override { return Get(f, o); }
  double Read(const cls_FieldHandle& f, double o) override { return Get(f, o); }
  float Read(const cls_FieldHandle& f, float o) override { return Get(f, o); }
  unsigned int Read(const cls_FieldHandle& f, unsigned int o) override { return Get(f, o); }
  int Read(const cls_FieldHandle& f, int o) override { return Get(f, o); }
  unsigned short Read(const cls_FieldHandle& f, unsigned short o) override { return Get(f, o); }
  short Read(const cls_FieldHandle& f, short o) override { return Get(f, o); }
  unsigned char Read(const cls_FieldHandle& f, unsigned char o) override { return Get(f, o); }
  char Read(const cls_FieldHandle& f, char o) override { return Get(f, o); }
  bool Read(const cls_FieldHandle& f, bool o) override { return Get(f, o); }
  long Read(const cls_FieldHandle& f, long o) override { return Get(f, o); }
  cls_ReadListObj* MakeListObj() override;
  cls_ReadMapInt2Obj* MakeMapInt2Obj() override;
  cls_ReadIntTableInt* MakeIntTableInt() override;
  cls_ReadMapString2Obj* MakeMapString2Obj() override;
  cls_ReadListPrim<bool>* MakeListPrim(const bool& s) override { return List(s); }
  cls_ReadListPrim<cow_String>* MakeListPrim(const cow_String& s) override { return List(s); }
  cls_ReadListPrim<float>* MakeListPrim(const float& s) override { return List(s); }
  cls_ReadListPrim<double>* MakeListPrim(const double& s) override { return List(s); }
  cls_ReadListPrim<unsigned>* MakeListPrim(const unsigned& s) override { return List(s); }
  cls_ReadListPrim<int>* MakeListPrim(const int& s) override { return List(s); }
  cls_ReadMapInt2Prim<unsigned>* MakeMapInt2Prim(const unsigned& s) override;
  cls_ReadMapInt2Prim<cow_String>* MakeMapInt2Prim(const cow_String& s) override;
  cls_ReadMapInt2Prim<int>* MakeMapInt2Prim(const int& s) override;
  cls_ReadMapInt2Prim<float>* MakeMapInt2Prim(const float& s) override;
  cls_ReadMapInt2Prim<double>* MakeMapInt2Prim(const double& s) override;
  cls_ReadMapString2Prim<unsigned>* MakeMapString2Prim(const unsigned& s) override;
  cls_ReadMapString2Prim<cow_String>* MakeMapString2Prim(const cow_String& s) override;
  cls_ReadMapString2Prim<int>* MakeMapString2Prim(const int& s) override;
  cls_ReadMapString2Prim<float>* MakeMapString2Prim(const float& s) override;
  cls_ReadMapString2Prim<double>* MakeMapString2Prim(const double& s) override;
  cls_AgentListPrim<bool>* MakeAgentList(const bool& s) override { return Agent(s); }
  cls_AgentListPrim<double>* MakeAgentList(const double& s) override { return Agent(s); }
  cls_AgentListPrim<float>* MakeAgentList(const float& s) override { return Agent(s); }
  cls_AgentListPrim<int>* MakeAgentList(const int& s) override { return Agent(s); }
  cls_AgentListPrim<cow_String>* MakeAgentList(const cow_String& s) override { return Agent(s); }
  cls_AgentListPrim<unsigned>* MakeAgentList(const unsigned& s) override { return Agent(s); }
  cls_AgentBlob* MakeAgentBlob() override;

 private:
  void Log(const std::string& call) { m_Store.Log(m_Record, call); }
  template <class T>
  T Get(const cls_FieldHandle& field, const T& otherwise);
  template <class T>
  cls_ReadListPrim<T>* List(const T&);
  template <class T>
  cls_AgentListPrim<T>* Agent(const T&);

  VRKTestStore& m_Store;
  VRKTestRecord& m_Record;
};

// A fixture with the library up and a store, which goes before the library stops (it holds
// identities).
class VRKStoreTest : public VRKLibraryTest {
 protected:
  void TearDown() override {
    m_Owned.reset();
    VRKLibraryTest::TearDown();
  }

 private:
  std::unique_ptr<VRKTestStore> m_Owned{new VRKTestStore};

 protected:
  VRKTestStore& store = *m_Owned;
};

// The text under which the store keeps a value; reals in their shortest exact form.
std::string VRKTestText(const cow_String& value);
template <class T>
std::string VRKTestText(T value) {
  return std::to_string(static_cast<long long>(value));
}
std::string VRKTestText(double value);
std::string VRKTestText(float value);

#endif  // VRKTESTMEMENTO_H
