#include "VRKTestMemento.h"

#include <algorithm>
#include <charconv>
#include <cstdio>

namespace {

std::string Hex(unsigned value) {
  char text[16];
  std::snprintf(text, sizeof text, "%x", value);
  return text;
}

std::string Name(const cls_FieldHandle& field) {
  return field.Name().c_str();
}

// The element type's name in the log.
const char* TypeName(const bool&) {
  return "bool";
}
const char* TypeName(const int&) {
  return "int";
}
const char* TypeName(const unsigned&) {
  return "unsigned";
}
const char* TypeName(const float&) {
  return "float";
}
const char* TypeName(const double&) {
  return "double";
}
const char* TypeName(const cow_String&) {
  return "cow_String";
}

template <class T>
T Parse(const std::string& text, const T&) {
  return static_cast<T>(std::stoll(text));
}
double Parse(const std::string& text, const double&) {
  return std::stod(text);
}
float Parse(const std::string& text, const float&) {
  return std::stof(text);
}
cow_String Parse(const std::string& text, const cow_String&) {
  return cow_String(text.c_str(), static_cast<int>(text.size()));
}

template <class T>
std::string RealText(T value) {
  char text[64];
  return std::string(text, std::to_chars(text, text + sizeof text, value).ptr);
}

// A new element record under `key` (empty in a list): its memento, or null when declined.
cls_MementoWrite* AddElement(VRKTestStore& store, VRKTestRecord& list, const char* call,
                             const std::string& key, unsigned classId, const cls_Uid& uid) {
  list.keys.push_back(key);
  list.elements.emplace_back();
  VRKTestRecord* element = store.Admit(list.elements.back(), classId, uid);
  store.Log(list, call + (key.empty() ? "" : " " + key) + " " + Hex(classId) + "#" +
                      std::to_string(store.Number(uid)) + (element ? "" : " declined"));
  return element ? new VRKTestMementoWrite(store, *element) : nullptr;
}

void AddNull(VRKTestStore& store, VRKTestRecord& list, const std::string& key, unsigned classId) {
  list.keys.push_back(key);
  list.elements.emplace_back();
  store.Log(list, "WriteNull " + (key.empty() ? "" : key + " ") + Hex(classId));
}

template <class T>
class WriteList : public cls_WriteListPrim<T> {
 public:
  WriteList(VRKTestStore& store, VRKTestRecord& record) : m_Store(store), m_Record(record) {}
  void Append(const T* value) override {
    m_Record.items.push_back(VRKTestText(*value));
    m_Store.Log(m_Record, "Append " + m_Record.items.back());
  }

 private:
  VRKTestStore& m_Store;
  VRKTestRecord& m_Record;
};

template <class Base, class K, class T>
class WriteMap : public Base {
 public:
  WriteMap(VRKTestStore& store, VRKTestRecord& record) : m_Store(store), m_Record(record) {}
  void Put(const K* key, const T* value) override {
    m_Record.keys.push_back(VRKTestText(*key));
    m_Record.items.push_back(VRKTestText(*value));
    m_Store.Log(m_Record, "Put " + m_Record.keys.back() + "=" + m_Record.items.back());
  }

 private:
  VRKTestStore& m_Store;
  VRKTestRecord& m_Record;
};

class WriteListObj : public cls_WriteListObj {
 public:
  WriteListObj(VRKTestStore& store, VRKTestRecord& record) : m_Store(store), m_Record(record) {}
  cls_MementoWrite* MakeWriteObj(unsigned classId, const cls_Uid& uid,
                                 const cow_COW<int, cow_Direct<int>>*) override {
    return AddElement(m_Store, m_Record, "MakeWriteObj", "", classId, uid);
  }
  cls_MementoWrite* MakeWriteObjWithPtr(unsigned classId, const cls_Uid& uid,
                                        const void*) override {
    return AddElement(m_Store, m_Record, "MakeWriteObjWithPtr", "", classId, uid);
  }
  void WriteNull(unsigned classId) override { AddNull(m_Store, m_Record, "", classId); }

 private:
  VRKTestStore& m_Store;
  VRKTestRecord& m_Record;
};

template <class Base, class K>
class WriteMapObj : public Base {
 public:
  WriteMapObj(VRKTestStore& store, VRKTestRecord& record) : m_Store(store), m_Record(record) {}
  cls_MementoWrite* MakeWriteObj(const K* key, unsigned classId, const cls_Uid& uid,
                                 const cow_COW<int, cow_Direct<int>>*) override {
    return AddElement(m_Store, m_Record, "MakeWriteObj", VRKTestText(*key), classId, uid);
  }
  cls_MementoWrite* MakeWriteObjWithPtr(const K* key, unsigned classId, const cls_Uid& uid,
                                        const void*) override {
    return AddElement(m_Store, m_Record, "MakeWriteObjWithPtr", VRKTestText(*key), classId, uid);
  }
  void WriteNull(const K* key, unsigned classId) override {
    AddNull(m_Store, m_Record, VRKTestText(*key), classId);
  }

 private:
  VRKTestStore& m_Store;
  VRKTestRecord& m_Record;
};

// A record's entries, read in order; Next and Key move on.
class Entries {
 protected:
  Entries(VRKTestStore& store, VRKTestRecord& record) : m_Store(store), m_Record(record) {}

  int Count() const {
    return static_cast<int>(std::max(m_Record.items.size(), m_Record.elements.size()));
  }
  int More() const { return m_At < Count(); }
  template <class T>
  T Item(const char* call) {
    m_Store.Log(m_Record, call);
    return Parse(m_Record.items.at(m_At), T());
  }
  template <class K>
  K TakeKey() {
    m_Store.Log(m_Record, "Key");
    return Parse(m_Record.keys.at(m_At++), K());
  }
  cls_MementoRead* Element() {
    m_Store.Log(m_Record, "MakeReadObj");
    const std::unique_ptr<VRKTestRecord>& element = m_Record.elements.at(m_At);
    return element ? new VRKTestMementoRead(m_Store, *element) : nullptr;
  }

  VRKTestStore& m_Store;
  VRKTestRecord& m_Record;
  int m_At = 0;
};

template <class T>
class ReadListBase : public cls_ReadListPrim<T>, protected Entries {
 public:
  ReadListBase(VRKTestStore& store, VRKTestRecord& record) : Entries(store, record) {}
  int Size() override { return Count(); }
  int RowLength() override { return m_Record.width; }
  int HasMore() override { return More(); }

 protected:
  T Take() {
    const T value = Item<T>("Next");
    ++m_At;
    return value;
  }
};

template <class T>
class ReadList : public ReadListBase<T> {
 public:
  using ReadListBase<T>::ReadListBase;
  T Next() override { return this->Take(); }
};

template <>
class ReadList<cow_String> : public ReadListBase<cow_String> {
 public:
  using ReadListBase<cow_String>::ReadListBase;
  void Next(cow_String& result) override { result = Take(); }
};

template <class T>
class ReadMapInt : public cls_ReadMapInt2Prim<T>, Entries {
 public:
  ReadMapInt(VRKTestStore& store, VRKTestRecord& record) : Entries(store, record) {}
  int HasMore() override { return More(); }
  T Value() override { return Item<T>("Value"); }
  int Key() override { return TakeKey<int>(); }
};

template <class T>
class ReadMapString : public cls_ReadMapString2Prim<T>, Entries {
 public:
  ReadMapString(VRKTestStore& store, VRKTestRecord& record) : Entries(store, record) {}
  int HasMore() override { return More(); }
  T Value() override { return Item<T>("Value"); }
  void Key(cow_String& result) override { result = TakeKey<cow_String>(); }
};

class ReadMapObjInt : public cls_ReadMapInt2Obj, Entries {
 public:
  ReadMapObjInt(VRKTestStore& store, VRKTestRecord& record) : Entries(store, record) {}
  int HasMore() override { return More(); }
  int Key() override { return TakeKey<int>(); }
  cls_MementoRead* MakeReadObj() override { return Element(); }
};

class ReadMapObjString : public cls_ReadMapString2Obj, Entries {
 public:
  ReadMapObjString(VRKTestStore& store, VRKTestRecord& record) : Entries(store, record) {}
  int HasMore() override { return More(); }
  void Key(cow_String& result) override { result = TakeKey<cow_String>(); }
  cls_MementoRead* MakeReadObj() override { return Element(); }
};

}  // namespace

std::string VRKTestText(const cow_String& value) {
  return std::string(value.c_str(), value.Length());
}
std::string VRKTestText(double value) {
  return RealText(value);
}
std::string VRKTestText(float value) {
  return RealText(value);
}

std::string VRKTestRecord::Label() const {
  return classId == 0 ? "root" : Hex(classId) + "#" + std::to_string(uid);
}

cls_MementoWrite* VRKTestStore::NewWriter() {
  return new VRKTestMementoWrite(*this, m_Root);
}

cls_MementoRead* VRKTestStore::NewReader() {
  return new VRKTestMementoRead(*this, m_Root);
}

std::vector<std::string> VRKTestStore::Take() {
  std::vector<std::string> taken;
  taken.swap(m_Calls);
  return taken;
}

int VRKTestStore::Number(const cls_Uid& uid) {
  for (size_t i = 0; i < m_Uids.size(); ++i) {
    if (m_Uids[i] == uid) return static_cast<int>(i) + 1;
  }
  m_Uids.push_back(uid);
  return static_cast<int>(m_Uids.size());
}

void VRKTestStore::Log(const VRKTestRecord& record, const std::string& call) {
  m_Calls.push_back(record.Label() + ": " + call);
}

VRKTestRecord* VRKTestStore::Admit(std::unique_ptr<VRKTestRecord>& slot, unsigned classId,
                                   const cls_Uid& uid) {
  const int number = Number(uid);
  if (m_Declined.count(classId) != 0 || !m_Written.insert(number).second) return nullptr;
  slot.reset(new VRKTestRecord);
  slot->classId = classId;
  slot->uid = number;
  return slot.get();
}

int VRKTestOwners::Count() const {
  int count = 0;
  for (const cls_PC* owner = Next(); owner != this; owner = owner->Next())
    ++count;
  return count;
}

template <class T>
VRKTestAgent<T>::VRKTestAgent(VRKTestStore& store, VRKTestRecord& record)
    : m_Store(store),
      m_Record(record),
      m_Data(*static_cast<std::vector<T>*>(record.agentData.get())) {
  store.m_LastAgent = this;
}

template <class T>
VRKTestAgent<T>::~VRKTestAgent() {
  ++m_Store.Agents().deleted;
  if (m_Store.m_LastAgent == this) m_Store.m_LastAgent = nullptr;
  Log("agent deleted");
}

template <class T>
void VRKTestAgent<T>::Log(const std::string& call) {
  if (m_Store.LoggingAgents()) m_Store.Log(m_Record, call);
}

template <class T>
int VRKTestAgent<T>::Refresh() {
  const bool changed = m_Changed;
  m_Changed = false;
  return changed;
}

template <class T>
void VRKTestAgent<T>::Flush() {
  ++m_Store.Agents().flushes;
  Log("agent Flush");
}

template <class T>
void VRKTestAgent<T>::Write(int index, int count, const T* values) {
  ++m_Store.Agents().writes;
  Log("agent Write " + std::to_string(index) + "+" + std::to_string(count));
  if (count <= 0) return;
  if (m_Data.size() < static_cast<size_t>(index + count)) m_Data.resize(index + count);
  std::copy(values, values + count, m_Data.begin() + index);
}

template <class T>
int VRKTestAgent<T>::Read(int index, int count, T* values) {
  ++m_Store.Agents().reads;
  Log("agent Read " + std::to_string(index) + "+" + std::to_string(count));
  const int read = std::clamp(Size() - index, 0, std::max(count, 0));
  std::copy(m_Data.begin() + index, m_Data.begin() + index + read, values);
  return read;
}

template class VRKTestAgent<bool>;
template class VRKTestAgent<int>;
template class VRKTestAgent<unsigned>;
template class VRKTestAgent<float>;
template class VRKTestAgent<double>;
template class VRKTestAgent<cow_String>;

int VRKTestMementoWrite::FieldIsPresent(const cls_FieldHandle& field) {
  Log("FieldIsPresent " + Name(field));
  return 1;
}

cls_MementoWrite* VRKTestMementoWrite::Nested(const char* call, const cls_FieldHandle& field,
                                              unsigned classId, const cls_Uid& uid) {
  VRKTestRecord* record = m_Store.Admit(m_Record.nested[Name(field)], classId, uid);
  Log(std::string(call) + " " + Name(field) + " " + Hex(classId) + "#" +
      std::to_string(m_Store.Number(uid)) + (record ? "" : " declined"));
  return record ? new VRKTestMementoWrite(m_Store, *record) : nullptr;
}

cls_MementoWrite* VRKTestMementoWrite::MakeWriteObjWithPtr(const cls_FieldHandle& field,
                                                           unsigned classId, const cls_Uid& uid,
                                                           const void*) {
  return Nested("MakeWriteObjWithPtr", field, classId, uid);
}

cls_MementoWrite* VRKTestMementoWrite::MakeWriteObj(const cls_FieldHandle& field, unsigned classId,
                                                    const cls_Uid& uid,
                                                    const cow_COW<int, cow_Direct<int>>*) {
  return Nested("MakeWriteObj", field, classId, uid);
}

cls_MementoWrite* VRKTestMementoWrite::MakeBaseWriteObj(unsigned classId, const cls_Uid& uid) {
  VRKTestRecord* record = m_Store.Admit(m_Record.base, classId, uid);
  Log("MakeBaseWriteObj " + Hex(classId) + "#" + std::to_string(m_Store.Number(uid)) +
      (record ? "" : " declined"));
  return record ? new VRKTestMementoWrite(m_Store, *record) : nullptr;
}

void VRKTestMementoWrite::WriteNull(const cls_FieldHandle& field) {
  Log("WriteNull " + Name(field));
}

template <class T>
void VRKTestMementoWrite::Put(const cls_FieldHandle& field, const char* type, const T& value) {
  const std::string text = VRKTestText(value);
  m_Record.values[Name(field)] = text;
  Log(std::string("Write(") + type + ") " + Name(field) + "=" + text);
}

cls_WriteListObj* VRKTestMementoWrite::MakeListObj(unsigned count) {
  Log("MakeListObj " + std::to_string(count));
  return new WriteListObj(m_Store, m_Record);
}

cls_WriteMapInt2Obj* VRKTestMementoWrite::MakeMapInt2Obj() {
  Log("MakeMapInt2Obj");
  return new WriteMapObj<cls_WriteMapInt2Obj, int>(m_Store, m_Record);
}

cls_WriteIntTableInt* VRKTestMementoWrite::MakeIntTableInt() {
  Log("MakeIntTableInt");
  return nullptr;
}

cls_WriteMapString2Obj* VRKTestMementoWrite::MakeMapString2Obj() {
  Log("MakeMapString2Obj");
  return new WriteMapObj<cls_WriteMapString2Obj, cow_String>(m_Store, m_Record);
}

template <class T>
cls_WriteListPrim<T>* VRKTestMementoWrite::List(const T& selector, int width) {
  Log(std::string("MakeListPrim<") + TypeName(selector) + "> " + std::to_string(width));
  m_Record.width = width;
  return new WriteList<T>(m_Store, m_Record);
}

#define VRK_TEST_MAPS(T)                                                                   \
  cls_WriteMapInt2Prim<T>* VRKTestMementoWrite::MakeMapInt2Prim(const T& selector) {       \
    Log(std::string("MakeMapInt2Prim<") + TypeName(selector) + ">");                       \
    return new WriteMap<cls_WriteMapInt2Prim<T>, int, T>(m_Store, m_Record);               \
  }                                                                                        \
  cls_WriteMapString2Prim<T>* VRKTestMementoWrite::MakeMapString2Prim(const T& selector) { \
    Log(std::string("MakeMapString2Prim<") + TypeName(selector) + ">");                    \
    return new WriteMap<cls_WriteMapString2Prim<T>, cow_String, T>(m_Store, m_Record);     \
  }                                                                                        \
  cls_ReadMapInt2Prim<T>* VRKTestMementoRead::MakeMapInt2Prim(const T& selector) {         \
    Log(std::string("MakeMapInt2Prim<") + TypeName(selector) + ">");                       \
    return new ReadMapInt<T>(m_Store, m_Record);                                           \
  }                                                                                        \
  cls_ReadMapString2Prim<T>* VRKTestMementoRead::MakeMapString2Prim(const T& selector) {   \
    Log(std::string("MakeMapString2Prim<") + TypeName(selector) + ">");                    \
    return new ReadMapString<T>(m_Store, m_Record);                                        \
  }
VRK_TEST_MAPS(unsigned)
VRK_TEST_MAPS(cow_String)
VRK_TEST_MAPS(int)
VRK_TEST_MAPS(float)
VRK_TEST_MAPS(double)

template <class T>
cls_AgentListPrim<T>* VRKTestMementoWrite::Agent(const T& selector, int extentQuantum) {
  Log(std::string("MakeAgentList<") + TypeName(selector) + "> " + std::to_string(extentQuantum));
  if (!m_Record.agentData) {
    m_Record.agentData = std::make_shared<std::vector<T>>();
    m_Record.extentQuantum = extentQuantum;
  }
  return new VRKTestAgent<T>(m_Store, m_Record);
}

cls_AgentBlob* VRKTestMementoWrite::MakeAgentBlob() {
  Log("MakeAgentBlob");
  return m_Store.m_BlobAgent;
}

void VRKTestMementoWrite::CheckCollectionType(cls_CollectionType tag, const cow_String& fieldName) {
  Log("CheckCollectionType " + std::to_string(tag) + " " + fieldName.c_str());
}

void VRKTestMementoWrite::StartSharedPtrOutput() {
  Log("StartSharedPtrOutput");
}

void VRKTestMementoWrite::EndSharedPtrOutput() {
  Log("EndSharedPtrOutput");
}

cow_String VRKTestMementoRead::DbId() {
  return m_Record.Label().c_str();
}

cls_Uid VRKTestMementoRead::GetUid() {
  Log("GetUid");
  return m_Record.uid == 0 ? cls_Uid() : m_Store.UidOf(m_Record.uid);
}

int VRKTestMementoRead::FieldIsPresent(const cls_FieldHandle& field) {
  return m_Record.values.count(Name(field)) + m_Record.nested.count(Name(field)) != 0;
}

int VRKTestMementoRead::DataIsPresent(const cls_FieldHandle& field) {
  return m_Record.values.count(Name(field)) != 0;
}

cls_MementoRead* VRKTestMementoRead::MakeReadObj(const cls_FieldHandle& field) {
  Log("MakeReadObj " + Name(field));
  auto nested = m_Record.nested.find(Name(field));
  if (nested == m_Record.nested.end() || !nested->second) return nullptr;
  return new VRKTestMementoRead(m_Store, *nested->second);
}

cls_MementoRead* VRKTestMementoRead::MakeBaseReadObj() {
  Log("MakeBaseReadObj");
  return m_Record.base ? new VRKTestMementoRead(m_Store, *m_Record.base) : nullptr;
}

template <class T>
T VRKTestMementoRead::Get(const cls_FieldHandle& field, const T& otherwise) {
  auto value = m_Record.values.find(Name(field));
  const bool absent = value == m_Record.values.end();
  Log("Read " + Name(field) + (absent ? " absent" : ""));
  return absent ? otherwise : Parse(value->second, otherwise);
}

cls_ReadListObj* VRKTestMementoRead::MakeListObj() {
  Log("MakeListObj");
  return nullptr;
}

cls_ReadMapInt2Obj* VRKTestMementoRead::MakeMapInt2Obj() {
  Log("MakeMapInt2Obj");
  return new ReadMapObjInt(m_Store, m_Record);
}

cls_ReadIntTableInt* VRKTestMementoRead::MakeIntTableInt() {
  Log("MakeIntTableInt");
  return nullptr;
}

cls_ReadMapString2Obj* VRKTestMementoRead::MakeMapString2Obj() {
  Log("MakeMapString2Obj");
  return new ReadMapObjString(m_Store, m_Record);
}

template <class T>
cls_ReadListPrim<T>* VRKTestMementoRead::List(const T& selector) {
  Log(std::string("MakeListPrim<") + TypeName(selector) + ">");
  return new ReadList<T>(m_Store, m_Record);
}

template <class T>
cls_AgentListPrim<T>* VRKTestMementoRead::Agent(const T& selector) {
  Log(std::string("MakeAgentList<") + TypeName(selector) + ">");
  return m_Record.agentData ? new VRKTestAgent<T>(m_Store, m_Record) : nullptr;
}

cls_AgentBlob* VRKTestMementoRead::MakeAgentBlob() {
  Log("MakeAgentBlob");
  return m_Store.m_BlobAgent;
}
