#include "sto_Writer.h"

#include <cstring>

#include "sto_Recycled.h"

#include "cls_WriteCollectionBase.h"
#include "nex_Exception.h"
#include "nex_TextException.h"

namespace {

constexpr uint32_t kMagic = 0x31545356;  // "VST1" in the external byte order
constexpr uint32_t kFormatVersion = 1;

bool IsValueCollection(unsigned classId) {
  return classId == 0x230001 || classId == 0x230002;
}

template <class K, class T>
struct MapPrimOf;
template <class T>
struct MapPrimOf<int, T> {
  typedef cls_WriteMapInt2Prim<T> Base;
  static constexpr sto_Tag kTag = sto_TagMapInt2Prim;
};
template <class T>
struct MapPrimOf<cow_String, T> {
  typedef cls_WriteMapString2Prim<T> Base;
  static constexpr sto_Tag kTag = sto_TagMapString2Prim;
};

// The memento of one object, base-class part or the graph's root.
class Memento : public cls_MementoWrite, public sto_OpenItem, public sto_Recycled<Memento> {
 public:
  using sto_Recycled<Memento>::operator new;
  using sto_Recycled<Memento>::operator delete;

 public:
  Memento(sto_WriteSession* session, unsigned classId, const cls_Uid& uid)
      : m_ClassId(classId), m_Uid(uid) {
    m_Session = session;
    m_Open = true;
  }
  ~Memento() override { Finish(); }

  int FieldIsPresent(const cls_FieldHandle&) override { return 1; }
  cls_MementoWrite* MakeWriteObjWithPtr(const cls_FieldHandle& field, unsigned classId,
                                        const cls_Uid& uid, const void*) override {
    Resume();
    return m_Session->Object(this, sto_TagObject, field.Name(), classId, uid,
                             !IsValueCollection(classId));
  }
  cls_MementoWrite* MakeWriteObj(const cls_FieldHandle& field, unsigned classId, const cls_Uid& uid,
                                 const cow_COW<int, cow_Direct<int>>*) override {
    return MakeWriteObjWithPtr(field, classId, uid, nullptr);
  }
  cls_MementoWrite* MakeBaseWriteObj(unsigned classId, const cls_Uid& uid) override {
    Resume();
    return m_Session->Object(this, sto_TagBase, cow_String(), classId, uid, false);
  }
  void WriteNull(const cls_FieldHandle& field) override {
    Resume();
    m_Session->ItemHead(sto_TagNull, field.Name(), 0);
  }

  void Write(const cls_FieldHandle& f, const cow_String& v) override {
    Resume();
    m_Session->ItemHead(sto_TagString, f.Name(), 4 + v.Length());
    m_Session->Out().PutString(v);
  }
  void Write(const cls_FieldHandle& f, double v) override { Scalar(sto_TagDouble, f, v); }
  void Write(const cls_FieldHandle& f, float v) override { Scalar(sto_TagFloat, f, v); }
  void Write(const cls_FieldHandle& f, unsigned v) override { Scalar(sto_TagUnsigned, f, v); }
  void Write(const cls_FieldHandle& f, int v) override { Scalar(sto_TagInt, f, v); }
  void Write(const cls_FieldHandle& f, unsigned short v) override {
    Scalar(sto_TagUShort, f, static_cast<unsigned>(v));
  }
  void Write(const cls_FieldHandle& f, short v) override {
    Scalar(sto_TagShort, f, static_cast<int>(v));
  }
  void Write(const cls_FieldHandle& f, unsigned char v) override { Byte(sto_TagUChar, f, v); }
  void Write(const cls_FieldHandle& f, char v) override {
    Byte(sto_TagChar, f, static_cast<unsigned char>(v));
  }
  void Write(const cls_FieldHandle& f, bool v) override { Byte(sto_TagBool, f, v ? 1 : 0); }
  void Write(const cls_FieldHandle& f, long v) override {
    Scalar(sto_TagLong, f, static_cast<int>(v));
  }

  cls_WriteListObj* MakeListObj(unsigned) override;
  cls_WriteMapInt2Obj* MakeMapInt2Obj() override;
  cls_WriteIntTableInt* MakeIntTableInt() override;
  cls_WriteMapString2Obj* MakeMapString2Obj() override;
  cls_WriteListPrim<bool>* MakeListPrim(const bool&, int width) override {
    return ListPrim<bool>(width);
  }
  cls_WriteListPrim<cow_String>* MakeListPrim(const cow_String&, int width) override {
    return ListPrim<cow_String>(width);
  }
  cls_WriteListPrim<float>* MakeListPrim(const float&, int width) override {
    return ListPrim<float>(width);
  }
  cls_WriteListPrim<double>* MakeListPrim(const double&, int width) override {
    return ListPrim<double>(width);
  }
  cls_WriteListPrim<unsigned>* MakeListPrim(const unsigned&, int width) override {
    return ListPrim<unsigned>(width);
  }
  cls_WriteListPrim<int>* MakeListPrim(const int&, int width) override {
    return ListPrim<int>(width);
  }
  cls_WriteMapInt2Prim<unsigned>* MakeMapInt2Prim(const unsigned&) override {
    return MapPrim<int, unsigned>();
  }
  cls_WriteMapInt2Prim<cow_String>* MakeMapInt2Prim(const cow_String&) override {
    return MapPrim<int, cow_String>();
  }
  cls_WriteMapInt2Prim<int>* MakeMapInt2Prim(const int&) override { return MapPrim<int, int>(); }
  cls_WriteMapInt2Prim<float>* MakeMapInt2Prim(const float&) override {
    return MapPrim<int, float>();
  }
  cls_WriteMapInt2Prim<double>* MakeMapInt2Prim(const double&) override {
    return MapPrim<int, double>();
  }
  cls_WriteMapString2Prim<unsigned>* MakeMapString2Prim(const unsigned&) override {
    return MapPrim<cow_String, unsigned>();
  }
  cls_WriteMapString2Prim<cow_String>* MakeMapString2Prim(const cow_String&) override {
    return MapPrim<cow_String, cow_String>();
  }
  cls_WriteMapString2Prim<int>* MakeMapString2Prim(const int&) override {
    return MapPrim<cow_String, int>();
  }
  cls_WriteMapString2Prim<float>* MakeMapString2Prim(const float&) override {
    return MapPrim<cow_String, float>();
  }
  cls_WriteMapString2Prim<double>* MakeMapString2Prim(const double&) override {
    return MapPrim<cow_String, double>();
  }

  cls_AgentListPrim<bool>* MakeAgentList(const bool&, int quantum) override {
    return Agent<bool>(quantum);
  }
  cls_AgentListPrim<double>* MakeAgentList(const double&, int quantum) override {
    return Agent<double>(quantum);
  }
  cls_AgentListPrim<float>* MakeAgentList(const float&, int quantum) override {
    return Agent<float>(quantum);
  }
  cls_AgentListPrim<int>* MakeAgentList(const int&, int quantum) override {
    return Agent<int>(quantum);
  }
  cls_AgentListPrim<cow_String>* MakeAgentList(const cow_String&, int quantum) override {
    return Agent<cow_String>(quantum);
  }
  cls_AgentListPrim<unsigned>* MakeAgentList(const unsigned&, int quantum) override {
    return Agent<unsigned>(quantum);
  }
  cls_AgentBlob* MakeAgentBlob() override { return new sto_BlobAgent; }

  // The root holds no class that could declare the graph's object.
  void CheckCollectionType(cls_CollectionType tag, const cow_String& fieldName) override {
    if (m_Depth > 0) cls_CheckCollectionType(m_Session->Registrar(), m_ClassId, tag, fieldName);
  }

 private:
  template <class T>
  void Scalar(sto_Tag tag, const cls_FieldHandle& field, T value) {
    Resume();
    m_Session->ItemHead(tag, field.Name(), sizeof(T));
    m_Session->Out().Put(value);
  }
  void Byte(sto_Tag tag, const cls_FieldHandle& field, unsigned char value) {
    Resume();
    m_Session->ItemHead(tag, field.Name(), 1);
    m_Session->Out().PutU8(value);
  }
  template <class T>
  cls_WriteListPrim<T>* ListPrim(int width);
  template <class K, class T>
  typename MapPrimOf<K, T>::Base* MapPrim();
  template <class T>
  cls_AgentListPrim<T>* Agent(int quantum);
  void WriteAgentItem(unsigned kind, int quantum, const sto_ExtentHld& extent);
  // A collection object whose array is attached already writes no list: the list it pages on
  // goes into the graph instead.
  void Closing() override;

  unsigned m_ClassId;
  cls_Uid m_Uid;
  bool m_HasCollection = false;
};

// A collection's cursor: an item whose element count is patched when it closes.
template <class Base>
class Cursor : public Base, public sto_OpenItem {
 public:
  Cursor(sto_WriteSession* session, const sto_OpenItem* parent, sto_Tag tag) {
    session->Open(this, parent, tag, cow_String());
  }
  ~Cursor() override { Finish(); }

 protected:
  // Room for the count; the caller writes what comes before it first.
  void CountHere() {
    m_CountAt = m_Session->Out().Size();
    m_Session->Out().PutU32(0);
  }
  sto_Output& Element() {
    Resume();
    ++m_Count;
    return m_Session->Out();
  }

 private:
  void Closing() override { m_Session->Out().PatchU32(m_CountAt, m_Count); }

  size_t m_CountAt = 0;
  uint32_t m_Count = 0;
};

template <class T>
class ListPrimCursor : public Cursor<cls_WriteListPrim<T>> {
 public:
  ListPrimCursor(sto_WriteSession* session, const sto_OpenItem* parent, int width)
      : Cursor<cls_WriteListPrim<T>>(session, parent, sto_TagListPrim) {
    session->Out().PutU8(sto_kindOf<T>());
    session->Out().Put(width);
    this->CountHere();
  }
  void Append(const T* value) override { this->Element().Put(*value); }
  void AppendBlock(const T* values, int count) override {
    for (int i = 1; i < count; ++i)
      this->Element();
    if (count > 0) this->Element().PutArray(values, count);
  }
};

template <class Base, class K, class T>
class MapPrimCursor : public Cursor<Base> {
 public:
  MapPrimCursor(sto_WriteSession* session, const sto_OpenItem* parent, sto_Tag tag)
      : Cursor<Base>(session, parent, tag) {
    session->Out().PutU8(sto_kindOf<T>());
    this->CountHere();
  }
  void Put(const K* key, const T* value) override {
    sto_Output& out = this->Element();
    out.Put(*key);
    out.Put(*value);
  }
};

// Lists and maps of objects: each element is an item of its own, after its key.
template <class Base, class... Key>
class ObjCursor : public Cursor<Base> {
 public:
  ObjCursor(sto_WriteSession* session, const sto_OpenItem* parent, sto_Tag tag)
      : Cursor<Base>(session, parent, tag) {
    this->CountHere();
  }
  cls_MementoWrite* MakeWriteObj(const Key*... key, unsigned classId, const cls_Uid& uid,
                                 const cow_COW<int, cow_Direct<int>>*) override {
    return MakeWriteObjWithPtr(key..., classId, uid, nullptr);
  }
  cls_MementoWrite* MakeWriteObjWithPtr(const Key*... key, unsigned classId, const cls_Uid& uid,
                                        const void*) override {
    sto_Output& out = this->Element();
    (out.Put(*key), ...);
    return this->m_Session->Object(this, sto_TagObject, cow_String(), classId, uid,
                                   !IsValueCollection(classId));
  }
  void WriteNull(const Key*... key, unsigned classId) override {
    sto_Output& out = this->Element();
    (out.Put(*key), ...);
    this->m_Session->ItemHead(sto_TagNull, cow_String(), 4);
    out.PutU32(classId);
  }
};

class IntTableCursor : public cls_WriteIntTableInt, public sto_OpenItem {
 public:
  IntTableCursor(sto_WriteSession* session, const sto_OpenItem* parent) {
    session->Open(this, parent, sto_TagIntTable, cow_String());
  }
  ~IntTableCursor() override { Finish(); }
  void Put(int key, int value) override {
    Resume();
    m_Session->Out().Put(key);
    m_Session->Out().Put(value);
  }
};

template <class T>
cls_WriteListPrim<T>* Memento::ListPrim(int width) {
  Resume();
  m_HasCollection = true;
  return new ListPrimCursor<T>(m_Session, this, width);
}

template <class K, class T>
typename MapPrimOf<K, T>::Base* Memento::MapPrim() {
  Resume();
  m_HasCollection = true;
  return new MapPrimCursor<typename MapPrimOf<K, T>::Base, K, T>(m_Session, this,
                                                                 MapPrimOf<K, T>::kTag);
}

cls_WriteListObj* Memento::MakeListObj(unsigned) {
  Resume();
  m_HasCollection = true;
  return new ObjCursor<cls_WriteListObj>(m_Session, this, sto_TagListObj);
}

cls_WriteMapInt2Obj* Memento::MakeMapInt2Obj() {
  Resume();
  m_HasCollection = true;
  return new ObjCursor<cls_WriteMapInt2Obj, int>(m_Session, this, sto_TagMapInt2Obj);
}

cls_WriteMapString2Obj* Memento::MakeMapString2Obj() {
  Resume();
  m_HasCollection = true;
  return new ObjCursor<cls_WriteMapString2Obj, cow_String>(m_Session, this, sto_TagMapString2Obj);
}

cls_WriteIntTableInt* Memento::MakeIntTableInt() {
  Resume();
  m_HasCollection = true;
  return new IntTableCursor(m_Session, this);
}

template <class T>
cls_AgentListPrim<T>* Memento::Agent(int quantum) {
  Resume();
  sto_ExtentHld extent(new sto_Extent<T>);
  WriteAgentItem(sto_kindOf<T>(), quantum, extent);
  return new sto_ListAgent<T>(extent, quantum, m_Uid);
}

void Memento::WriteAgentItem(unsigned kind, int quantum, const sto_ExtentHld& extent) {
  m_HasCollection = true;
  const uint32_t number = m_Session->Extent(extent);
  m_Session->ItemHead(sto_TagAgentList, cow_String(), 9);
  m_Session->Out().PutU8(static_cast<unsigned char>(kind));
  m_Session->Out().Put(quantum);
  m_Session->Out().PutU32(number);
}

void Memento::Closing() {
  if (m_HasCollection || m_ClassId != 0x230001) return;
  if (sto_AgentEntry* agent = sto_FindAgent(m_Uid)) {
    agent->FlushOwners();
    WriteAgentItem(agent->extent.GetRef().Kind(), agent->extentQuantum, agent->extent);
  }
}

}  // namespace

void sto_OpenItem::Resume() const {
  if (!m_Open) {
    nex_TextException error(nex_Translate("A stored object was written to after its record ended"));
    NEX_THROW(error);
  }
  m_Session->Settle(this);
}

void sto_OpenItem::Finish() {
  if (!m_Open) return;
  m_Session->Settle(this);
  if (m_Depth > 0) m_Session->CloseTop();  // the root is no item of its own
  m_Open = false;
}

sto_WriteSession::sto_WriteSession(const cls_ClassRegistrar* registrar) : m_Registrar(registrar) {
  m_Out.PutU32(kMagic);
  m_Out.PutU32(kFormatVersion);
  m_RecordLengthAt = m_Out.Size();
  m_Out.PutU32(0);  // the record's length
  m_Out.PutU32(0);  // the count of identities, for the reader to make room at once
}

sto_WriteSession::~sto_WriteSession() {
  mem_Free(m_Slots);
}

cls_MementoWrite* sto_WriteSession::NewRoot() {
  return new Memento(this, 1, cls_Uid());
}

cow_String sto_WriteSession::Finish() {
  while (m_Open.Count() > 0)
    CloseTop();
  m_Out.PatchU32(m_RecordLengthAt, static_cast<uint32_t>(m_Out.Size() - m_RecordLengthAt - 8));
  m_Out.PatchU32(m_RecordLengthAt + 4, m_Numbers);
  m_Out.PutU32(static_cast<uint32_t>(m_Extents.Count()));
  for (int i = 0; i < m_Extents.Count(); ++i) {
    const sto_ExtentBase& extent = m_Extents.ConstGet(i).GetRef();
    m_Out.PutU8(static_cast<unsigned char>(extent.Kind()));
    extent.Encode(m_Out);
  }
  return m_Out.Take();
}

void sto_WriteSession::Open(sto_OpenItem* item, const sto_OpenItem* parent, sto_Tag tag,
                            const cow_String& name) {
  item->m_Session = this;
  item->m_Depth = parent->m_Depth + 1;
  item->m_Open = true;
  m_Out.PutU8(tag);
  m_Out.PutString(name);
  item->m_LengthAt = m_Out.Size();
  m_Out.PutU32(0);
  m_Open.Push(item);
}

void sto_WriteSession::Settle(const sto_OpenItem* item) {
  while (m_Open.Count() > item->m_Depth)
    CloseTop();
}

void sto_WriteSession::CloseTop() {
  sto_OpenItem* item = m_Open.Top();
  item->Closing();
  m_Out.PatchU32(item->m_LengthAt, static_cast<uint32_t>(m_Out.Size() - item->m_LengthAt - 4));
  item->m_Open = false;
  m_Open.Pop();
}

void sto_WriteSession::ItemHead(sto_Tag tag, const cow_String& name, uint32_t length) {
  m_Out.PutU8(tag);
  m_Out.PutString(name);
  m_Out.PutU32(length);
}

cls_MementoWrite* sto_WriteSession::Object(const sto_OpenItem* parent, sto_Tag tag,
                                           const cow_String& name, unsigned classId,
                                           const cls_Uid& uid, bool mayRefer) {
  bool seen = false;
  const uint32_t number = Number(uid, seen);
  if (seen && mayRefer) {
    ItemHead(sto_TagReference, name, 4);
    m_Out.PutU32(number);
    return nullptr;
  }
  Memento* memento = new Memento(this, classId, uid);
  Open(memento, parent, tag, name);
  m_Out.PutU32(classId);
  m_Out.Put(Version(classId));
  m_Out.PutU32(number);
  return memento;
}

uint32_t sto_WriteSession::Extent(const sto_ExtentHld& extent) {
  for (int i = 0; i < m_Extents.Count(); ++i)
    if (m_Extents.ConstGet(i).GetPtr() == extent.GetPtr()) return static_cast<uint32_t>(i);
  m_Extents.Append(extent);
  return static_cast<uint32_t>(m_Extents.Count() - 1);
}

uint32_t sto_WriteSession::Number(const cls_Uid& uid, bool& seen) {
  if (2 * (m_Numbers + 1) > m_SlotMask) {  // at most half full
    const uint32_t oldSize = m_Slots ? m_SlotMask + 1 : 0;
    Slot* old = m_Slots;
    const uint32_t size = oldSize ? 2 * oldSize : 1024;
    m_Slots = static_cast<Slot*>(mem_OperatorNewThrow(sizeof(Slot) * size));
    std::memset(static_cast<void*>(m_Slots), 0, sizeof(Slot) * size);
    m_SlotMask = size - 1;
    for (uint32_t i = 0; i < oldSize; ++i)
      if (old[i].key) {
        uint32_t at = Hash(old[i].key);
        while (m_Slots[at].key)
          at = (at + 1) & m_SlotMask;
        m_Slots[at] = old[i];
      }
    mem_Free(old);
  }
  const void* key = uid.Identity();
  uint32_t at = Hash(key);
  for (; m_Slots[at].key; at = (at + 1) & m_SlotMask)
    if (m_Slots[at].key == key) {
      seen = true;
      return m_Slots[at].number;
    }
  seen = false;
  m_Slots[at] = {key, ++m_Numbers};
  m_Seen.Push(uid);
  return m_Numbers;
}

uint32_t sto_WriteSession::Hash(const void* key) const {
  uint64_t bits = reinterpret_cast<uintptr_t>(key);
  bits = (bits ^ (bits >> 33)) * 0xFF51AFD7ED558CCDull;
  return static_cast<uint32_t>(bits ^ (bits >> 33)) & m_SlotMask;
}

int sto_WriteSession::Version(unsigned classId) {
  if (classId != m_LastClass) {
    m_LastClass = classId;
    m_LastVersion = m_Registrar != nullptr && m_Registrar->ClassIsPresent(classId)
                        ? m_Registrar->GetLastClassVersionNumber(classId)
                        : 0;
  }
  return m_LastVersion;
}
