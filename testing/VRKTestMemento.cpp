#include "VRKTestMemento.h"

#include <cstdio>
#include <sstream>

namespace {

std::string Hex(unsigned value) {
  char text[16];
  std::snprintf(text, sizeof text, "%x", value);
  return text;
}

std::string Name(const cls_FieldHandle& field) {
  return field.Name().c_str();
}

template <class T>
T Parse(const std::string& text, T) {
  return static_cast<T>(std::stoll(text));
}
double Parse(const std::string& text, double) {
  return std::stod(text);
}
float Parse(const std::string& text, float) {
  return std::stof(text);
}
cow_String Parse(const std::string& text, const cow_String&) {
  return cow_String(text.c_str(), static_cast<int>(text.size()));
}

}  // namespace

std::string VRKTestText(const cow_String& value) {
  return std::string(value.c_str(), value.Length());
}
std::string VRKTestText(double value) {
  std::ostringstream text;
  text << value;
  return text.str();
}
std::string VRKTestText(float value) {
  return VRKTestText(static_cast<double>(value));
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

void VRKTestMementoWrite::Put(const cls_FieldHandle& field, const char* type,
                              const std::string& text) {
  m_Record.values[Name(field)] = text;
  Log(std::string("Write(") + type + ") " + Name(field) + "=" + text);
}

void VRKTestMementoWrite::Write(const cls_FieldHandle& field, const cow_String& value) {
  Put(field, "string", VRKTestText(value));
}

void VRKTestMementoWrite::Write(const cls_FieldHandle& field, double value) {
  Put(field, "double", VRKTestText(value));
}

void VRKTestMementoWrite::Write(const cls_FieldHandle& field, float value) {
  Put(field, "float", VRKTestText(value));
}

void VRKTestMementoWrite::Write(const cls_FieldHandle& field, unsigned int value) {
  Put(field, "unsigned", VRKTestText(value));
}

void VRKTestMementoWrite::Write(const cls_FieldHandle& field, int value) {
  Put(field, "int", VRKTestText(value));
}

void VRKTestMementoWrite::Write(const cls_FieldHandle& field, unsigned short value) {
  Put(field, "ushort", VRKTestText(value));
}

void VRKTestMementoWrite::Write(const cls_FieldHandle& field, short value) {
  Put(field, "short", VRKTestText(value));
}

void VRKTestMementoWrite::Write(const cls_FieldHandle& field, unsigned char value) {
  Put(field, "uchar", VRKTestText(value));
}

void VRKTestMementoWrite::Write(const cls_FieldHandle& field, char value) {
  Put(field, "char", VRKTestText(value));
}

void VRKTestMementoWrite::Write(const cls_FieldHandle& field, bool value) {
  Put(field, "bool", VRKTestText(value));
}

void VRKTestMementoWrite::Write(const cls_FieldHandle& field, long value) {
  Put(field, "long", VRKTestText(value));
}

cls_WriteListObj* VRKTestMementoWrite::MakeListObj(unsigned) {
  Log("MakeListObj");
  return nullptr;
}

cls_WriteMapInt2Obj* VRKTestMementoWrite::MakeMapInt2Obj() {
  Log("MakeMapInt2Obj");
  return nullptr;
}

cls_WriteIntTableInt* VRKTestMementoWrite::MakeIntTableInt() {
  Log("MakeIntTableInt");
  return nullptr;
}

cls_WriteMapString2Obj* VRKTestMementoWrite::MakeMapString2Obj() {
  Log("MakeMapString2Obj");
  return nullptr;
}

cls_WriteListPrim<bool>* VRKTestMementoWrite::MakeListPrim(const bool&, int) {
  Log("MakeListPrim<bool>");
  return nullptr;
}

cls_WriteListPrim<cow_String>* VRKTestMementoWrite::MakeListPrim(const cow_String&, int) {
  Log("MakeListPrim<cow_String>");
  return nullptr;
}

cls_WriteListPrim<float>* VRKTestMementoWrite::MakeListPrim(const float&, int) {
  Log("MakeListPrim<float>");
  return nullptr;
}

cls_WriteListPrim<double>* VRKTestMementoWrite::MakeListPrim(const double&, int) {
  Log("MakeListPrim<double>");
  return nullptr;
}

cls_WriteListPrim<unsigned>* VRKTestMementoWrite::MakeListPrim(const unsigned&, int) {
  Log("MakeListPrim<unsigned>");
  return nullptr;
}

cls_WriteListPrim<int>* VRKTestMementoWrite::MakeListPrim(const int&, int) {
  Log("MakeListPrim<int>");
  return nullptr;
}

cls_WriteMapInt2Prim<unsigned>* VRKTestMementoWrite::MakeMapInt2Prim(const unsigned&) {
  Log("MakeMapInt2Prim<unsigned>");
  return nullptr;
}

cls_WriteMapInt2Prim<cow_String>* VRKTestMementoWrite::MakeMapInt2Prim(const cow_String&) {
  Log("MakeMapInt2Prim<cow_String>");
  return nullptr;
}

cls_WriteMapInt2Prim<int>* VRKTestMementoWrite::MakeMapInt2Prim(const int&) {
  Log("MakeMapInt2Prim<int>");
  return nullptr;
}

cls_WriteMapInt2Prim<float>* VRKTestMementoWrite::MakeMapInt2Prim(const float&) {
  Log("MakeMapInt2Prim<float>");
  return nullptr;
}

cls_WriteMapInt2Prim<double>* VRKTestMementoWrite::MakeMapInt2Prim(const double&) {
  Log("MakeMapInt2Prim<double>");
  return nullptr;
}

cls_WriteMapString2Prim<unsigned>* VRKTestMementoWrite::MakeMapString2Prim(const unsigned&) {
  Log("MakeMapString2Prim<unsigned>");
  return nullptr;
}

cls_WriteMapString2Prim<cow_String>* VRKTestMementoWrite::MakeMapString2Prim(const cow_String&) {
  Log("MakeMapString2Prim<cow_String>");
  return nullptr;
}

cls_WriteMapString2Prim<int>* VRKTestMementoWrite::MakeMapString2Prim(const int&) {
  Log("MakeMapString2Prim<int>");
  return nullptr;
}

cls_WriteMapString2Prim<float>* VRKTestMementoWrite::MakeMapString2Prim(const float&) {
  Log("MakeMapString2Prim<float>");
  return nullptr;
}

cls_WriteMapString2Prim<double>* VRKTestMementoWrite::MakeMapString2Prim(const double&) {
  Log("MakeMapString2Prim<double>");
  return nullptr;
}

cls_AgentListPrim<bool>* VRKTestMementoWrite::MakeAgentList(const bool&, int) {
  Log("MakeAgentList<bool>");
  return nullptr;
}

cls_AgentListPrim<double>* VRKTestMementoWrite::MakeAgentList(const double&, int) {
  Log("MakeAgentList<double>");
  return nullptr;
}

cls_AgentListPrim<float>* VRKTestMementoWrite::MakeAgentList(const float&, int) {
  Log("MakeAgentList<float>");
  return nullptr;
}

cls_AgentListPrim<int>* VRKTestMementoWrite::MakeAgentList(const int&, int) {
  Log("MakeAgentList<int>");
  return nullptr;
}

cls_AgentListPrim<cow_String>* VRKTestMementoWrite::MakeAgentList(const cow_String&, int) {
  Log("MakeAgentList<cow_String>");
  return nullptr;
}

cls_AgentListPrim<unsigned>* VRKTestMementoWrite::MakeAgentList(const unsigned&, int) {
  Log("MakeAgentList<unsigned>");
  return nullptr;
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

const std::string* VRKTestMementoRead::Find(const cls_FieldHandle& field) {
  auto value = m_Record.values.find(Name(field));
  Log("Read " + Name(field) + (value == m_Record.values.end() ? " absent" : ""));
  return value == m_Record.values.end() ? nullptr : &value->second;
}

template <class T>
T VRKTestMementoRead::Get(const cls_FieldHandle& field, T otherwise) {
  const std::string* text = Find(field);
  return text ? Parse(*text, otherwise) : otherwise;
}

cow_String VRKTestMementoRead::Read(const cls_FieldHandle& field, const cow_String& otherwise) {
  return Get<cow_String>(field, otherwise);
}

double VRKTestMementoRead::Read(const cls_FieldHandle& field, double otherwise) {
  return Get(field, otherwise);
}

float VRKTestMementoRead::Read(const cls_FieldHandle& field, float otherwise) {
  return Get(field, otherwise);
}

unsigned int VRKTestMementoRead::Read(const cls_FieldHandle& field, unsigned int otherwise) {
  return Get(field, otherwise);
}

int VRKTestMementoRead::Read(const cls_FieldHandle& field, int otherwise) {
  return Get(field, otherwise);
}

unsigned short VRKTestMementoRead::Read(const cls_FieldHandle& field, unsigned short otherwise) {
  return Get(field, otherwise);
}

short VRKTestMementoRead::Read(const cls_FieldHandle& field, short otherwise) {
  return Get(field, otherwise);
}

unsigned char VRKTestMementoRead::Read(const cls_FieldHandle& field, unsigned char otherwise) {
  return Get(field, otherwise);
}

char VRKTestMementoRead::Read(const cls_FieldHandle& field, char otherwise) {
  return Get(field, otherwise);
}

bool VRKTestMementoRead::Read(const cls_FieldHandle& field, bool otherwise) {
  return Get(field, otherwise);
}

long VRKTestMementoRead::Read(const cls_FieldHandle& field, long otherwise) {
  return Get(field, otherwise);
}

cls_ReadListObj* VRKTestMementoRead::MakeListObj() {
  Log("MakeListObj");
  return nullptr;
}

cls_ReadMapInt2Obj* VRKTestMementoRead::MakeMapInt2Obj() {
  Log("MakeMapInt2Obj");
  return nullptr;
}

cls_ReadIntTableInt* VRKTestMementoRead::MakeIntTableInt() {
  Log("MakeIntTableInt");
  return nullptr;
}

cls_ReadMapString2Obj* VRKTestMementoRead::MakeMapString2Obj() {
  Log("MakeMapString2Obj");
  return nullptr;
}

cls_ReadListPrim<bool>* VRKTestMementoRead::MakeListPrim(const bool&) {
  Log("MakeListPrim<bool>");
  return nullptr;
}

cls_ReadListPrim<cow_String>* VRKTestMementoRead::MakeListPrim(const cow_String&) {
  Log("MakeListPrim<cow_String>");
  return nullptr;
}

cls_ReadListPrim<float>* VRKTestMementoRead::MakeListPrim(const float&) {
  Log("MakeListPrim<float>");
  return nullptr;
}

cls_ReadListPrim<double>* VRKTestMementoRead::MakeListPrim(const double&) {
  Log("MakeListPrim<double>");
  return nullptr;
}

cls_ReadListPrim<unsigned>* VRKTestMementoRead::MakeListPrim(const unsigned&) {
  Log("MakeListPrim<unsigned>");
  return nullptr;
}

cls_ReadListPrim<int>* VRKTestMementoRead::MakeListPrim(const int&) {
  Log("MakeListPrim<int>");
  return nullptr;
}

cls_ReadMapInt2Prim<unsigned>* VRKTestMementoRead::MakeMapInt2Prim(const unsigned&) {
  Log("MakeMapInt2Prim<unsigned>");
  return nullptr;
}

cls_ReadMapInt2Prim<cow_String>* VRKTestMementoRead::MakeMapInt2Prim(const cow_String&) {
  Log("MakeMapInt2Prim<cow_String>");
  return nullptr;
}

cls_ReadMapInt2Prim<int>* VRKTestMementoRead::MakeMapInt2Prim(const int&) {
  Log("MakeMapInt2Prim<int>");
  return nullptr;
}

cls_ReadMapInt2Prim<float>* VRKTestMementoRead::MakeMapInt2Prim(const float&) {
  Log("MakeMapInt2Prim<float>");
  return nullptr;
}

cls_ReadMapInt2Prim<double>* VRKTestMementoRead::MakeMapInt2Prim(const double&) {
  Log("MakeMapInt2Prim<double>");
  return nullptr;
}

cls_ReadMapString2Prim<unsigned>* VRKTestMementoRead::MakeMapString2Prim(const unsigned&) {
  Log("MakeMapString2Prim<unsigned>");
  return nullptr;
}

cls_ReadMapString2Prim<cow_String>* VRKTestMementoRead::MakeMapString2Prim(const cow_String&) {
  Log("MakeMapString2Prim<cow_String>");
  return nullptr;
}

cls_ReadMapString2Prim<int>* VRKTestMementoRead::MakeMapString2Prim(const int&) {
  Log("MakeMapString2Prim<int>");
  return nullptr;
}

cls_ReadMapString2Prim<float>* VRKTestMementoRead::MakeMapString2Prim(const float&) {
  Log("MakeMapString2Prim<float>");
  return nullptr;
}

cls_ReadMapString2Prim<double>* VRKTestMementoRead::MakeMapString2Prim(const double&) {
  Log("MakeMapString2Prim<double>");
  return nullptr;
}

cls_AgentListPrim<bool>* VRKTestMementoRead::MakeAgentList(const bool&) {
  Log("MakeAgentList<bool>");
  return nullptr;
}

cls_AgentListPrim<double>* VRKTestMementoRead::MakeAgentList(const double&) {
  Log("MakeAgentList<double>");
  return nullptr;
}

cls_AgentListPrim<float>* VRKTestMementoRead::MakeAgentList(const float&) {
  Log("MakeAgentList<float>");
  return nullptr;
}

cls_AgentListPrim<int>* VRKTestMementoRead::MakeAgentList(const int&) {
  Log("MakeAgentList<int>");
  return nullptr;
}

cls_AgentListPrim<cow_String>* VRKTestMementoRead::MakeAgentList(const cow_String&) {
  Log("MakeAgentList<cow_String>");
  return nullptr;
}

cls_AgentListPrim<unsigned>* VRKTestMementoRead::MakeAgentList(const unsigned&) {
  Log("MakeAgentList<unsigned>");
  return nullptr;
}

cls_AgentBlob* VRKTestMementoRead::MakeAgentBlob() {
  Log("MakeAgentBlob");
  return m_Store.m_BlobAgent;
}
