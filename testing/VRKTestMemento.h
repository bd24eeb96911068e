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
// already and for a class given to Decline. Collections are not kept: their factories are
// logged and answer null.
#ifndef VRKTESTMEMENTO_H
#define VRKTESTMEMENTO_H

#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "VRKTestLibrary.h"
#include "cls_MementoRead.h"
#include "cls_MementoWrite.h"
#include "cls_ReadVisitor.h"
#include "cls_Uid.h"
#include "cls_WriteVisitor.h"

class cls_AgentBlob;

// One stored object: its class, its identity's number, its fields by name (the value as
// text), its base-class part and the objects in its fields.
struct VRKTestRecord {
  unsigned classId = 0;
  int uid = 0;
  std::map<std::string, std::string> values;
  std::unique_ptr<VRKTestRecord> base;
  std::map<std::string, std::unique_ptr<VRKTestRecord>> nested;

  std::string Label() const;
};

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

  const VRKTestRecord& Root() const { return m_Root; }
  const std::vector<std::string>& Calls() const { return m_Calls; }
  // The calls logged since the last Take, which it clears.
  std::vector<std::string> Take();
  // Writes `object` through its DBWrite in field `name` of the root record.
  template <class T>
  void WriteField(const char* name, const T& object) {
    cls_WriteVisitor root(NewWriter());
    cls_WriteVisitor field(root, cls_FieldHandle(0, name), nullptr, &object);
    object.DBWrite(field);
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

 private:
  friend class VRKTestMementoWrite;
  friend class VRKTestMementoRead;

  void Log(const VRKTestRecord& record, const std::string& call);
  // Null when the object is declined; otherwise marks its identity as written.
  VRKTestRecord* Admit(std::unique_ptr<VRKTestRecord>& slot, unsigned classId, const cls_Uid& uid);

  VRKTestRecord m_Root;
  std::vector<std::string> m_Calls;
  std::vector<cls_Uid> m_Uids;
  std::set<int> m_Written;
  std::set<unsigned> m_Declined;
  cls_AgentBlob* m_BlobAgent = nullptr;
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
  void Write(const cls_FieldHandle& field, const cow_String& value) override;
  void Write(const cls_FieldHandle& field, double value) override;
  void Write(const cls_FieldHandle& field, float value) override;
  void Write(const cls_FieldHandle& field, unsigned int value) override;
  void Write(const cls_FieldHandle& field, int value) override;
  void Write(const cls_FieldHandle& field, unsigned short value) override;
  void Write(const cls_FieldHandle& field, short value) override;
  void Write(const cls_FieldHandle& field, unsigned char value) override;
  void Write(const cls_FieldHandle& field, char value) override;
  void Write(const cls_FieldHandle& field, bool value) override;
  void Write(const cls_FieldHandle& field, long value) override;
  cls_WriteListObj* MakeListObj(unsigned count) override;
  cls_WriteMapInt2Obj* MakeMapInt2Obj() override;
  cls_WriteIntTableInt* MakeIntTableInt() override;
  cls_WriteMapString2Obj* MakeMapString2Obj() override;
  cls_WriteListPrim<bool>* MakeListPrim(const bool& selector, int width) override;
  cls_WriteListPrim<cow_String>* MakeListPrim(const cow_String& selector, int width) override;
  cls_WriteListPrim<float>* MakeListPrim(const float& selector, int width) override;
  cls_WriteListPrim<double>* MakeListPrim(const double& selector, int width) override;
  cls_WriteListPrim<unsigned>* MakeListPrim(const unsigned& selector, int width) override;
  cls_WriteListPrim<int>* MakeListPrim(const int& selector, int width) override;
  cls_WriteMapInt2Prim<unsigned>* MakeMapInt2Prim(const unsigned& selector) override;
  cls_WriteMapInt2Prim<cow_String>* MakeMapInt2Prim(const cow_String& selector) override;
  cls_WriteMapInt2Prim<int>* MakeMapInt2Prim(const int& selector) override;
  cls_WriteMapInt2Prim<float>* MakeMapInt2Prim(const float& selector) override;
  cls_WriteMapInt2Prim<double>* MakeMapInt2Prim(const double& selector) override;
  cls_WriteMapString2Prim<unsigned>* MakeMapString2Prim(const unsigned& selector) override;
  cls_WriteMapString2Prim<cow_String>* MakeMapString2Prim(const cow_String& selector) override;
  cls_WriteMapString2Prim<int>* MakeMapString2Prim(const int& selector) override;
  cls_WriteMapString2Prim<float>* MakeMapString2Prim(const float& selector) override;
  cls_WriteMapString2Prim<double>* MakeMapString2Prim(const double& selector) override;
  cls_AgentListPrim<bool>* MakeAgentList(const bool& selector, int extentQuantum) override;
  cls_AgentListPrim<double>* MakeAgentList(const double& selector, int extentQuantum) override;
  cls_AgentListPrim<float>* MakeAgentList(const float& selector, int extentQuantum) override;
  cls_AgentListPrim<int>* MakeAgentList(const int& selector, int extentQuantum) override;
  cls_AgentListPrim<cow_String>* MakeAgentList(const cow_String& selector,
                                               int extentQuantum) override;
  cls_AgentListPrim<unsigned>* MakeAgentList(const unsigned& selector, int extentQuantum) override;
  cls_AgentBlob* MakeAgentBlob() override;
  void CheckCollectionType(cls_CollectionType tag, const cow_String& fieldName) override;
  void StartSharedPtrOutput() override;
  void EndSharedPtrOutput() override;

 private:
  void Log(const std::string& call) { m_Store.Log(m_Record, call); }
  void Put(const cls_FieldHandle& field, const char* type, const std::string& text);
  cls_MementoWrite* Nested(const char* call, const cls_FieldHandle& field, unsigned classId,
                           const cls_Uid& uid);

  VRKTestStore& m_Store;
  VRKTestRecord& m_Record;
};

class VRKTestMementoRead : public cls_MementoRead {
 public:
  VRKTestMementoRead(VRKTestStore& store, const VRKTestRecord& record)
      : m_Store(store), m_Record(record) {}

  cow_String DbId() override;
  cls_Uid GetUid() override;
  int FieldIsPresent(const cls_FieldHandle& field) override;
  int DataIsPresent(const cls_FieldHandle& field) override;
  cls_MementoRead* MakeReadObj(const cls_FieldHandle& field) override;
  cls_MementoRead* MakeBaseReadObj() override;
  cow_String Read(const cls_FieldHandle& field, const cow_String& otherwise) override;
  double Read(const cls_FieldHandle& field, double otherwise) override;
  float Read(const cls_FieldHandle& field, float otherwise) override;
  unsigned int Read(const cls_FieldHandle& field, unsigned int otherwise) override;
  int Read(const cls_FieldHandle& field, int otherwise) override;
  unsigned short Read(const cls_FieldHandle& field, unsigned short otherwise) override;
  short Read(const cls_FieldHandle& field, short otherwise) override;
  unsigned char Read(const cls_FieldHandle& field, unsigned char otherwise) override;
  char Read(const cls_FieldHandle& field, char otherwise) override;
  bool Read(const cls_FieldHandle& field, bool otherwise) override;
  long Read(const cls_FieldHandle& field, long otherwise) override;
  cls_ReadListObj* MakeListObj() override;
  cls_ReadMapInt2Obj* MakeMapInt2Obj() override;
  cls_ReadIntTableInt* MakeIntTableInt() override;
  cls_ReadMapString2Obj* MakeMapString2Obj() override;
  cls_ReadListPrim<bool>* MakeListPrim(const bool& selector) override;
  cls_ReadListPrim<cow_String>* MakeListPrim(const cow_String& selector) override;
  cls_ReadListPrim<float>* MakeListPrim(const float& selector) override;
  cls_ReadListPrim<double>* MakeListPrim(const double& selector) override;
  cls_ReadListPrim<unsigned>* MakeListPrim(const unsigned& selector) override;
  cls_ReadListPrim<int>* MakeListPrim(const int& selector) override;
  cls_ReadMapInt2Prim<unsigned>* MakeMapInt2Prim(const unsigned& selector) override;
  cls_ReadMapInt2Prim<cow_String>* MakeMapInt2Prim(const cow_String& selector) override;
  cls_ReadMapInt2Prim<int>* MakeMapInt2Prim(const int& selector) override;
  cls_ReadMapInt2Prim<float>* MakeMapInt2Prim(const float& selector) override;
  cls_ReadMapInt2Prim<double>* MakeMapInt2Prim(const double& selector) override;
  cls_ReadMapString2Prim<unsigned>* MakeMapString2Prim(const unsigned& selector) override;
  cls_ReadMapString2Prim<cow_String>* MakeMapString2Prim(const cow_String& selector) override;
  cls_ReadMapString2Prim<int>* MakeMapString2Prim(const int& selector) override;
  cls_ReadMapString2Prim<float>* MakeMapString2Prim(const float& selector) override;
  cls_ReadMapString2Prim<double>* MakeMapString2Prim(const double& selector) override;
  cls_AgentListPrim<bool>* MakeAgentList(const bool& selector) override;
  cls_AgentListPrim<double>* MakeAgentList(const double& selector) override;
  cls_AgentListPrim<float>* MakeAgentList(const float& selector) override;
  cls_AgentListPrim<int>* MakeAgentList(const int& selector) override;
  cls_AgentListPrim<cow_String>* MakeAgentList(const cow_String& selector) override;
  cls_AgentListPrim<unsigned>* MakeAgentList(const unsigned& selector) override;
  cls_AgentBlob* MakeAgentBlob() override;

 private:
  void Log(const std::string& call) { m_Store.Log(m_Record, call); }
  // The stored text of the field, null when there is none.
  const std::string* Find(const cls_FieldHandle& field);
  template <class T>
  T Get(const cls_FieldHandle& field, T otherwise);

  VRKTestStore& m_Store;
  const VRKTestRecord& m_Record;
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

// The text under which the store keeps a value.
std::string VRKTestText(const cow_String& value);
template <class T>
std::string VRKTestText(T value) {
  return std::to_string(static_cast<long long>(value));
}
std::string VRKTestText(double value);
std::string VRKTestText(float value);

#endif  // VRKTESTMEMENTO_H
