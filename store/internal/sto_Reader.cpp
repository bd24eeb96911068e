#include "sto_Reader.h"

#include <cstdio>
#include <cstring>
#include <new>
#include <typeinfo>

#include "cls_ReadCollectionBase.h"
#include "cls_ReadVisitor.h"
#include "nex_Exception.h"
#include "nex_TextException.h"
#include "sto_Recycled.h"
#include "sto_Store.h"

namespace {

constexpr uint32_t kMagic = 0x31545356;
constexpr uint32_t kFormatVersion = 1;
constexpr int kMaxDepth = 4096;
constexpr size_t kObjectHead = 12;  // class, version, number

const char* KindName(unsigned kind) {
  switch (kind) {
    case sto_TagString:
      return "string";
    case sto_TagDouble:
      return "double";
    case sto_TagFloat:
      return "float";
    case sto_TagUnsigned:
      return "unsigned";
    case sto_TagInt:
      return "int";
    case sto_TagBool:
      return "bool";
    default:
      return "unknown";
  }
}

// The memento of one stored object (or of the graph's root, which has no class).
class Memento : public cls_MementoRead, public sto_Recycled<Memento> {
 public:
  using sto_Recycled<Memento>::operator new;
  using sto_Recycled<Memento>::operator delete;

 public:
  // The object whose item starts at `definition`, read when it is first asked for a field:
  // a reference to an object built already is never read again.
  Memento(sto_ReadSession* session, size_t definition, uint32_t number)
      : m_Session(session), m_Definition(definition), m_Number(number) {}
  // An object whose head is read: its items lie in [begin, end). The graph's root has no
  // class of its own (1) and number 0.
  Memento(sto_ReadSession* session, size_t begin, size_t end, unsigned classId, int version,
          uint32_t number)
      : m_Session(session),
        m_Definition(0),
        m_Number(number),
        m_Parsed(true),
        m_ItemsBegin(begin),
        m_End(end),
        m_Next(begin),
        m_ClassId(classId),
        m_Version(version) {}
  ~Memento() override { m_Session->Leave(m_Number); }

  unsigned ClassId() {
    Ensure();
    return m_ClassId;
  }
  int Version() {
    Ensure();
    return m_Version;
  }
  uint32_t Number() const { return m_Number; }
  sto_ReadSession* Session() const { return m_Session; }

  cow_String DbId() override { return cow_String(static_cast<unsigned>(m_Number)); }
  cls_Uid GetUid() override { return m_Session->Uid(m_Number); }
  int FieldIsPresent(const cls_FieldHandle& field) override {
    sto_Item item;
    return Find(field.Name(), item);
  }
  int DataIsPresent(const cls_FieldHandle& field) override {
    sto_Item item;
    return Find(field.Name(), item) && item.tag != sto_TagNull;
  }
  cls_MementoRead* MakeReadObj(const cls_FieldHandle& field) override {
    sto_Item item;
    return Find(field.Name(), item) ? m_Session->ObjectOf(item) : nullptr;
  }
  cls_MementoRead* MakeBaseReadObj() override {
    sto_Item item;
    return FindTag(sto_TagBase, item) ? m_Session->ObjectOf(item) : nullptr;
  }

  cow_String Read(const cls_FieldHandle& f, const cow_String& otherwise) override {
    sto_Item item;
    if (!Find(f.Name(), item) || item.tag == sto_TagNull) return otherwise;
    if (item.tag != sto_TagString) WrongType(f, item, "text");
    size_t next;
    cow_String value = m_Session->In().String(item.begin, next, "text");
    if (next != item.end)
      m_Session->Fail(item.start, nex_Translate("a string of the wrong length"));
    return value;
  }
  double Read(const cls_FieldHandle& f, double v) override { return Scalar(f, v); }
  float Read(const cls_FieldHandle& f, float v) override { return Scalar(f, v); }
  unsigned Read(const cls_FieldHandle& f, unsigned v) override { return Scalar(f, v); }
  int Read(const cls_FieldHandle& f, int v) override { return Scalar(f, v); }
  unsigned short Read(const cls_FieldHandle& f, unsigned short v) override { return Scalar(f, v); }
  short Read(const cls_FieldHandle& f, short v) override { return Scalar(f, v); }
  unsigned char Read(const cls_FieldHandle& f, unsigned char v) override { return Scalar(f, v); }
  char Read(const cls_FieldHandle& f, char v) override { return Scalar(f, v); }
  bool Read(const cls_FieldHandle& f, bool v) override { return Scalar(f, v); }
  long Read(const cls_FieldHandle& f, long v) override { return Scalar(f, v); }

  cls_ReadListObj* MakeListObj() override;
  cls_ReadMapInt2Obj* MakeMapInt2Obj() override;
  cls_ReadIntTableInt* MakeIntTableInt() override;
  cls_ReadMapString2Obj* MakeMapString2Obj() override;
  cls_ReadListPrim<bool>* MakeListPrim(const bool&) override { return ListPrim<bool>(); }
  cls_ReadListPrim<cow_String>* MakeListPrim(const cow_String&) override {
    return ListPrim<cow_String>();
  }
  cls_ReadListPrim<float>* MakeListPrim(const float&) override { return ListPrim<float>(); }
  cls_ReadListPrim<double>* MakeListPrim(const double&) override { return ListPrim<double>(); }
  cls_ReadListPrim<unsigned>* MakeListPrim(const unsigned&) override {
    return ListPrim<unsigned>();
  }
  cls_ReadListPrim<int>* MakeListPrim(const int&) override { return ListPrim<int>(); }
  cls_ReadMapInt2Prim<unsigned>* MakeMapInt2Prim(const unsigned&) override {
    return MapPrim<cls_ReadMapInt2Prim<unsigned>, int, unsigned>();
  }
  cls_ReadMapInt2Prim<cow_String>* MakeMapInt2Prim(const cow_String&) override {
    return MapPrim<cls_ReadMapInt2Prim<cow_String>, int, cow_String>();
  }
  cls_ReadMapInt2Prim<int>* MakeMapInt2Prim(const int&) override {
    return MapPrim<cls_ReadMapInt2Prim<int>, int, int>();
  }
  cls_ReadMapInt2Prim<float>* MakeMapInt2Prim(const float&) override {
    return MapPrim<cls_ReadMapInt2Prim<float>, int, float>();
  }
  cls_ReadMapInt2Prim<double>* MakeMapInt2Prim(const double&) override {
    return MapPrim<cls_ReadMapInt2Prim<double>, int, double>();
  }
  cls_ReadMapString2Prim<unsigned>* MakeMapString2Prim(const unsigned&) override {
    return MapPrim<cls_ReadMapString2Prim<unsigned>, cow_String, unsigned>();
  }
  cls_ReadMapString2Prim<cow_String>* MakeMapString2Prim(const cow_String&) override {
    return MapPrim<cls_ReadMapString2Prim<cow_String>, cow_String, cow_String>();
  }
  cls_ReadMapString2Prim<int>* MakeMapString2Prim(const int&) override {
    return MapPrim<cls_ReadMapString2Prim<int>, cow_String, int>();
  }
  cls_ReadMapString2Prim<float>* MakeMapString2Prim(const float&) override {
    return MapPrim<cls_ReadMapString2Prim<float>, cow_String, float>();
  }
  cls_ReadMapString2Prim<double>* MakeMapString2Prim(const double&) override {
    return MapPrim<cls_ReadMapString2Prim<double>, cow_String, double>();
  }
  cls_AgentListPrim<bool>* MakeAgentList(const bool&) override { return Agent<bool>(); }
  cls_AgentListPrim<double>* MakeAgentList(const double&) override { return Agent<double>(); }
  cls_AgentListPrim<float>* MakeAgentList(const float&) override { return Agent<float>(); }
  cls_AgentListPrim<int>* MakeAgentList(const int&) override { return Agent<int>(); }
  cls_AgentListPrim<cow_String>* MakeAgentList(const cow_String&) override {
    return Agent<cow_String>();
  }
  cls_AgentListPrim<unsigned>* MakeAgentList(const unsigned&) override { return Agent<unsigned>(); }
  cls_AgentBlob* MakeAgentBlob() override { return new sto_BlobAgent; }

 private:
  // Finds the field: where the last one ended, else anywhere in the object.
  bool Find(const cow_String& name, sto_Item& item) {
    Ensure();
    if (m_Next < m_End && m_Session->ItemAt(m_Next, m_End, &name, item)) {
      m_Next = item.end;
      return true;
    }
    for (size_t at = m_ItemsBegin; at < m_End; at = item.end)
      if (m_Session->ItemAt(at, m_End, &name, item)) {
        m_Next = item.end;
        return true;
      }
    return false;
  }
  bool FindTag(sto_Tag tag, sto_Item& item) {
    Ensure();
    for (size_t at = m_ItemsBegin; at < m_End; at = item.end)
      if (m_Session->ItemAt(at, m_End, nullptr, item), item.tag == tag) return true;
    return false;
  }
  [[noreturn]] void WrongType(const cls_FieldHandle& field, const sto_Item& item,
                              const char* wanted) const {
    m_Session->Fail(item.start,
                    nex_Translate("field \"%s\" of %s read as %s, which it doesn't hold",
                                  field.Name(), m_Session->ClassName(m_ClassId), wanted));
  }
  template <class T>
  T Scalar(const cls_FieldHandle& field, T otherwise);
  template <class T>
  cls_ReadListPrim<T>* ListPrim();
  template <class C, class K, class T>
  C* MapPrim();
  template <class T>
  cls_AgentListPrim<T>* Agent();

  void Ensure() {
    if (m_Parsed) return;
    m_Parsed = true;
    sto_Item object;
    m_Session->Head(m_Definition, object, m_ClassId, m_Version);
    m_ItemsBegin = m_Next = object.begin + kObjectHead;
    m_End = object.end;
  }

  sto_ReadSession* m_Session;
  size_t m_Definition;
  uint32_t m_Number;
  bool m_Parsed = false;
  size_t m_ItemsBegin = 0;
  size_t m_End = 0;
  size_t m_Next = 0;
  unsigned m_ClassId = 1;
  int m_Version = 0;
};

template <class T>
T Memento::Scalar(const cls_FieldHandle& field, T otherwise) {
  sto_Item item;
  if (!Find(field.Name(), item) || item.tag == sto_TagNull) return otherwise;
  const sto_Input& in = m_Session->In();
  const size_t size = item.end - item.begin;
  const int expected = sto_SizeOfKind(item.tag);
  if (item.tag == sto_TagString || expected == 0) WrongType(field, item, "a number");
  if (size != static_cast<size_t>(expected))
    m_Session->Fail(item.start, nex_Translate("a number of the wrong length"));
  size_t next;
  switch (item.tag) {
    case sto_TagDouble:
      return static_cast<T>(in.Get<double>(item.begin, next, "number"));
    case sto_TagFloat:
      return static_cast<T>(in.Get<float>(item.begin, next, "number"));
    case sto_TagUnsigned:
    case sto_TagUShort:
      return static_cast<T>(in.U32(item.begin, "number"));
    case sto_TagBool:
    case sto_TagUChar:
      return static_cast<T>(in.U8(item.begin, "number"));
    case sto_TagChar:
      return static_cast<T>(static_cast<char>(in.U8(item.begin, "number")));
    default:  // int, short, long
      return static_cast<T>(static_cast<int32_t>(in.U32(item.begin, "number")));
  }
}

// Reads entries one after another in a collection's payload.
class Entries {
 public:
  Entries(sto_ReadSession* session, const sto_Item& item, size_t head, int count)
      : m_Session(session), m_Pos(item.begin + head), m_End(item.end), m_Count(count) {}

  int HasMore() const { return m_Done < m_Count; }
  template <class T>
  T Take() {
    Require();
    T value = m_Session->In().Get<T>(m_Pos, m_Pos, "collection element");
    if (m_Pos > m_End) m_Session->Fail(m_Pos, nex_Translate("an element past its collection"));
    return value;
  }
  // The object item at the position; moves past it.
  cls_MementoRead* TakeObject() { return m_Session->ObjectOf(TakeItem()); }
  void SkipItem() { TakeItem(); }
  void Step() { ++m_Done; }
  size_t Position() const { return m_Pos; }
  void Seek(size_t position) { m_Pos = position; }

 private:
  sto_Item TakeItem() {
    Require();
    sto_Item item;
    m_Session->ItemAt(m_Pos, m_End, nullptr, item);
    m_Pos = item.end;
    return item;
  }
  void Require() const {
    if (m_Done >= m_Count) m_Session->Fail(m_Pos, nex_Translate("a read past a collection's end"));
  }

  sto_ReadSession* m_Session;
  size_t m_Pos;
  size_t m_End;
  int m_Count;
  int m_Done = 0;
};

// The element count of a collection, held against the bytes that would hold its elements.
int CountOf(sto_ReadSession* session, const sto_Item& item, size_t head, int minimum) {
  const uint32_t count = session->In().U32(item.begin + head - 4, "element count");
  const size_t room = item.end - item.begin - head;
  if (item.end < item.begin + head || count > room / static_cast<size_t>(minimum))
    session->Fail(item.start, nex_Translate("an element count of %d that its bytes can't hold",
                                            static_cast<int>(count)));
  return static_cast<int>(count);
}

// The kind of a collection's elements, which must be T's.
template <class T>
void CheckKind(sto_ReadSession* session, const sto_Item& item) {
  const unsigned kind = session->In().U8(item.begin, "element kind");
  if (kind != sto_kindOf<T>())
    session->Fail(item.start, nex_Translate("a list of %s read as a list of %s", KindName(kind),
                                            KindName(sto_kindOf<T>())));
}

// A list of values: its width, its count and its values.
template <class T>
class ListCursorBase : public cls_ReadListPrim<T> {
 public:
  ListCursorBase(sto_ReadSession* session, const sto_Item& item)
      : m_Width(static_cast<int32_t>(session->In().U32(item.begin + 1, "list width"))),
        m_Size(CountOf(session, item, 9, sto_SizeOfKind(sto_kindOf<T>()))),
        m_Entries(session, item, 9, m_Size) {
    if (m_Width < 0) session->Fail(item.start, nex_Translate("a list of width %d", m_Width));
  }
  int Size() override { return m_Size; }
  int RowLength() override { return m_Width; }
  int HasMore() override { return m_Entries.HasMore(); }

 protected:
  T Take() {
    T value = m_Entries.Take<T>();
    m_Entries.Step();
    return value;
  }

 private:
  int m_Width;
  int m_Size;
  Entries m_Entries;
};

template <class T>
class ListPrimCursor : public ListCursorBase<T> {
 public:
  using ListCursorBase<T>::ListCursorBase;
  T Next() override { return this->Take(); }
};

// Strings come through a result argument.
class StringListCursor : public ListCursorBase<cow_String> {
 public:
  using ListCursorBase::ListCursorBase;
  void Next(cow_String& result) override { result = Take(); }
};

// Maps give the value before the key: Value reads past the key to its value, Key takes the
// key and moves to the next entry.
template <class Base, class K, class T>
class MapPrimCursor : public Base {
 public:
  MapPrimCursor(sto_ReadSession* session, const sto_Item& item)
      : m_Entries(session, item, 5,
                  CountOf(session, item, 5,
                          sto_SizeOfKind(sto_kindOf<K>()) + sto_SizeOfKind(sto_kindOf<T>()))) {}
  int HasMore() override { return m_Entries.HasMore(); }
  T Value() override {
    const size_t entry = m_Entries.Position();
    m_Entries.Take<K>();
    T value = m_Entries.Take<T>();
    m_Entries.Seek(entry);
    return value;
  }

 protected:
  K TakeKey() {
    K key = m_Entries.Take<K>();
    m_Entries.Take<T>();
    m_Entries.Step();
    return key;
  }

  Entries m_Entries;
};

template <class T>
class IntMapPrimCursor : public MapPrimCursor<cls_ReadMapInt2Prim<T>, int, T> {
 public:
  using MapPrimCursor<cls_ReadMapInt2Prim<T>, int, T>::MapPrimCursor;
  int Key() override { return this->TakeKey(); }
};

template <class T>
class StringMapPrimCursor : public MapPrimCursor<cls_ReadMapString2Prim<T>, cow_String, T> {
 public:
  using MapPrimCursor<cls_ReadMapString2Prim<T>, cow_String, T>::MapPrimCursor;
  void Key(cow_String& result) override { result = this->TakeKey(); }
};

// Maps and lists of objects: the key (if any), then the element's item.
template <class Base, class K>
class ObjCursorBase : public Base {
 public:
  ObjCursorBase(sto_ReadSession* session, const sto_Item& item)
      : m_Entries(session, item, 4,
                  CountOf(session, item, 4, 9 + sto_SizeOfKind(sto_kindOf<K>()))) {}
  int HasMore() override { return m_Entries.HasMore(); }
  cls_MementoRead* MakeReadObj() override {
    m_Entry = m_Entries.Position();
    m_Entries.Take<K>();
    cls_MementoRead* memento = m_Entries.TakeObject();
    m_Entries.Seek(m_Entry);
    return memento;
  }

 protected:
  K TakeKey() {
    K key = m_Entries.Take<K>();
    m_Entries.SkipItem();
    m_Entries.Step();
    return key;
  }

  Entries m_Entries;
  size_t m_Entry = 0;
};

class IntMapObjCursor : public ObjCursorBase<cls_ReadMapInt2Obj, int> {
 public:
  using ObjCursorBase::ObjCursorBase;
  int Key() override { return TakeKey(); }
};

class StringMapObjCursor : public ObjCursorBase<cls_ReadMapString2Obj, cow_String> {
 public:
  using ObjCursorBase::ObjCursorBase;
  void Key(cow_String& result) override { result = TakeKey(); }
};

class ListObjCursor : public cls_ReadListObj {
 public:
  ListObjCursor(sto_ReadSession* session, const sto_Item& item)
      : m_Size(CountOf(session, item, 4, 9)), m_Entries(session, item, 4, m_Size) {}
  int Size() override { return m_Size; }
  int HasMore() override { return m_Entries.HasMore(); }
  cls_MementoRead* MakeReadObj() override {
    cls_MementoRead* memento = m_Entries.TakeObject();
    m_Entries.Step();
    return memento;
  }

 private:
  int m_Size;
  Entries m_Entries;
};

class IntTableCursor : public cls_ReadIntTableInt {
 public:
  IntTableCursor(sto_ReadSession* session, const sto_Item& item)
      : m_Entries(session, item, 0, static_cast<int>((item.end - item.begin) / 8)) {}
  int HasMore() override { return m_Entries.HasMore(); }
  int Value() override {
    const size_t entry = m_Entries.Position();
    m_Entries.Take<int>();
    const int value = m_Entries.Take<int>();
    m_Entries.Seek(entry);
    return value;
  }
  int Key() override {
    const int key = m_Entries.Take<int>();
    m_Entries.Take<int>();
    m_Entries.Step();
    return key;
  }

 private:
  Entries m_Entries;
};

template <class T>
cls_ReadListPrim<T>* Memento::ListPrim() {
  sto_Item item;
  if (!FindTag(sto_TagListPrim, item)) return nullptr;
  CheckKind<T>(m_Session, item);
  if constexpr (std::is_same<T, cow_String>::value)
    return new StringListCursor(m_Session, item);
  else
    return new ListPrimCursor<T>(m_Session, item);
}

template <class C, class K, class T>
C* Memento::MapPrim() {
  sto_Item item;
  const sto_Tag tag = std::is_same<K, int>::value ? sto_TagMapInt2Prim : sto_TagMapString2Prim;
  if (!FindTag(tag, item)) return nullptr;
  CheckKind<T>(m_Session, item);
  if constexpr (std::is_same<K, int>::value)
    return new IntMapPrimCursor<T>(m_Session, item);
  else
    return new StringMapPrimCursor<T>(m_Session, item);
}

cls_ReadListObj* Memento::MakeListObj() {
  sto_Item item;
  return FindTag(sto_TagListObj, item) ? new ListObjCursor(m_Session, item) : nullptr;
}

cls_ReadMapInt2Obj* Memento::MakeMapInt2Obj() {
  sto_Item item;
  return FindTag(sto_TagMapInt2Obj, item) ? new IntMapObjCursor(m_Session, item) : nullptr;
}

cls_ReadMapString2Obj* Memento::MakeMapString2Obj() {
  sto_Item item;
  return FindTag(sto_TagMapString2Obj, item) ? new StringMapObjCursor(m_Session, item) : nullptr;
}

cls_ReadIntTableInt* Memento::MakeIntTableInt() {
  sto_Item item;
  return FindTag(sto_TagIntTable, item) ? new IntTableCursor(m_Session, item) : nullptr;
}

template <class T>
cls_AgentListPrim<T>* Memento::Agent() {
  sto_Item item;
  if (!FindTag(sto_TagAgentList, item)) return nullptr;
  if (item.end - item.begin != 9)
    m_Session->Fail(item.start, nex_Translate("a list agent of the wrong length"));
  CheckKind<T>(m_Session, item);
  const sto_Input& in = m_Session->In();
  return m_Session->Agent<T>(in.U32(item.begin + 5, "extent"),
                             static_cast<int32_t>(in.U32(item.begin + 1, "extent quantum")),
                             GetUid(), item.start);
}

}  // namespace

sto_ReadSession::sto_ReadSession(const cow_String& bytes, const cls_ClassRegistrar* registrar)
    : m_Bytes(bytes),
      m_In(m_Bytes.c_str(), static_cast<size_t>(m_Bytes.Length())),
      m_Registrar(registrar) {
  if (m_In.U32(0, "graph header") != kMagic)
    Fail(0, nex_Translate("bytes that hold no stored graph"));
  if (m_In.U32(4, "graph header") != kFormatVersion)
    Fail(4, nex_Translate("a graph of format %d", static_cast<int>(m_In.U32(4, "format"))));
  const uint32_t length = m_In.U32(8, "record length");
  const uint32_t numbers = m_In.U32(12, "identity count");
  m_RecordBegin = 16;
  m_In.Require(m_RecordBegin, length, "record");
  m_RecordEnd = m_RecordBegin + length;
  if (numbers > length / kObjectHead) Fail(12, nex_Translate("an identity count of %u", numbers));
  m_Numbers.Reserve(static_cast<int>(numbers));
  size_t at = m_RecordEnd;
  const uint32_t count = m_In.U32(at, "extent count");
  at += 4;
  if (count > (m_In.Size() - at) / 5)
    Fail(at - 4, nex_Translate("an extent count of %d", static_cast<int>(count)));
  for (uint32_t i = 0; i < count; ++i) {
    const unsigned kind = m_In.U8(at, "extent kind");
    const uint32_t n = m_In.U32(at + 1, "extent size");
    const int size = sto_SizeOfKind(kind);
    if (size == 0 || n > 0x7fffffff)
      Fail(at, nex_Translate("an extent of kind %d", static_cast<int>(kind)));
    m_Extents.Append({kind, static_cast<int>(n), at + 5});
    at += 5;
    if (kind != sto_TagString) {
      m_In.Require(at, static_cast<size_t>(n) * size, "extent elements");
      at += static_cast<size_t>(n) * size;
    } else {
      for (uint32_t k = 0; k < n; ++k)
        m_In.SkipString(at, at, "extent string");
    }
  }
}

sto_ReadSession::~sto_ReadSession() = default;

cls_MementoRead* sto_ReadSession::NewRoot() {
  Enter(0, m_RecordBegin);
  return new Memento(this, m_RecordBegin, m_RecordEnd, 1, 0, 0);
}

void sto_ReadSession::Peek(unsigned& classId, int& version) {
  cls_ReadVisitor root(NewRoot());
  cls_ReadVisitor object(root, cls_FieldHandle(-1, "root"));
  Memento* memento = static_cast<Memento*>(object.Memento());
  if (memento == nullptr) Fail(m_RecordBegin, nex_Translate("a graph with no object"));
  classId = memento->ClassId();
  version = memento->Version();
}

void* sto_ReadSession::Build(const cls_ClassMetadata*& metadata) {
  cls_ReadVisitor root(NewRoot());
  cls_ReadVisitor object(root, cls_FieldHandle(-1, "root"));
  Memento* memento = static_cast<Memento*>(object.Memento());
  if (memento == nullptr) Fail(m_RecordBegin, nex_Translate("a graph with no object"));
  const unsigned classId = memento->ClassId();
  if (m_Registrar == nullptr || !m_Registrar->ClassIsPresent(classId))
    Fail(m_RecordBegin, nex_Translate("an object of class %s, which this program doesn't know",
                                      ClassName(classId)));
  const int version = m_Registrar->GetFirstClassVersionNumberGREQ(classId, memento->Version());
  metadata = m_Registrar->GetClassMetadata(classId, version).GetPtr();
  void* built = metadata->Ctor(object);
  if (built == nullptr)
    Fail(m_RecordBegin, nex_Translate("an object of the abstract class %s", ClassName(classId)));
  return built;
}

bool sto_ReadSession::ItemAt(size_t position, size_t limit, const cow_String* name,
                             sto_Item& item) const {
  item.tag = static_cast<sto_Tag>(m_In.U8(position, "item tag"));
  item.start = position;
  size_t next;
  const bool named = name != nullptr ? m_In.StringIs(position + 1, *name, next, "field name")
                                     : (m_In.SkipString(position + 1, next, "field name"), true);
  const uint32_t length = m_In.U32(next, "item length");
  item.begin = next + 4;
  item.end = item.begin + length;
  if (item.end > limit || item.end < item.begin)
    Fail(position, nex_Translate("an item that runs past its object"));
  return named;
}

cls_MementoRead* sto_ReadSession::ObjectOf(const sto_Item& item) {
  switch (item.tag) {
    case sto_TagNull:
      return nullptr;
    case sto_TagReference: {
      if (item.end - item.begin != 4)
        Fail(item.start, nex_Translate("a reference of the wrong length"));
      const uint32_t number = m_In.U32(item.begin, "reference");
      Number& entry = Entry(number, item.start);
      if (entry.definition == 0)
        entry.definition = FindDefinition(m_RecordBegin, m_RecordEnd, number, 0);
      if (entry.definition == 0)
        Fail(item.start, nex_Translate("a reference to object %d, which the graph doesn't hold",
                                       static_cast<int>(number)));
      if (entry.open > 0)
        Fail(item.start,
             nex_Translate("a cycle of references through object %d", static_cast<int>(number)));
      const size_t definition = entry.definition;
      Enter(number, definition);
      return new Memento(this, definition, number);
    }
    case sto_TagObject:
    case sto_TagBase: {
      sto_Item object;
      unsigned classId;
      int version;
      Head(item.start, object, classId, version);
      const uint32_t number = m_In.U32(object.begin + 8, "object number");
      Enter(number, item.start);
      return new Memento(this, object.begin + kObjectHead, object.end, classId, version, number);
    }
    default:
      Fail(item.start, nex_Translate("a field read as an object, which it doesn't hold"));
  }
}

void sto_ReadSession::Head(size_t start, sto_Item& object, unsigned& classId, int& version) {
  ItemAt(start, m_RecordEnd, nullptr, object);
  if (object.end - object.begin < kObjectHead)
    Fail(object.start, nex_Translate("an object too short for its head"));
  classId = m_In.U32(object.begin, "class");
  version = static_cast<int32_t>(m_In.U32(object.begin + 4, "version"));
  CheckVersion(classId, version, object.start);
}

cls_Uid sto_ReadSession::Uid(uint32_t number) {
  if (number == 0) return cls_Uid();
  return Entry(number, m_RecordBegin).uid;
}

template <class T>
cls_AgentListPrim<T>* sto_ReadSession::Agent(uint32_t number, int quantum, const cls_Uid& uid,
                                             size_t where) {
  if (number >= static_cast<uint32_t>(m_Extents.Count()))
    Fail(where, nex_Translate("a list on extent %d, which the graph doesn't hold",
                              static_cast<int>(number)));
  Extent& extent = m_Extents.Get(static_cast<int>(number));
  if (extent.kind != sto_kindOf<T>())
    Fail(where, nex_Translate("an extent of %s read as one of %s", KindName(extent.kind),
                              KindName(sto_kindOf<T>())));
  if (extent.decoded.GetPtr() == nullptr) {
    sto_Extent<T>* list = new sto_Extent<T>;
    extent.decoded = list;
    list->Decode(m_In, extent.position, extent.count);
  }
  return new sto_ListAgent<T>(extent.decoded, quantum, uid);
}

void sto_ReadSession::Enter(uint32_t number, size_t definition) {
  if (++m_Depth > kMaxDepth) {
    --m_Depth;
    Fail(definition, nex_Translate("objects nested deeper than %d", kMaxDepth));
  }
  if (number == 0) return;
  Number& entry = Entry(number, definition);
  if (entry.definition == 0) entry.definition = definition;
  ++entry.open;
}

void sto_ReadSession::Leave(uint32_t number) {
  --m_Depth;
  if (number != 0) --m_Numbers[static_cast<int>(number) - 1].open;
}

sto_ReadSession::Number& sto_ReadSession::Entry(uint32_t number, size_t where) {
  // Numbers are given from 1 up, one per object, and an object takes more than 12 bytes.
  if (number == 0 || number > (m_RecordEnd - m_RecordBegin) / kObjectHead)
    Fail(where, nex_Translate("an object number of %d", static_cast<int>(number)));
  if (number > static_cast<uint32_t>(m_Numbers.Count())) m_Numbers.Resize(static_cast<int>(number));
  return m_Numbers[static_cast<int>(number) - 1];
}

size_t sto_ReadSession::FindDefinition(size_t begin, size_t end, uint32_t number, int depth) const {
  if (depth > kMaxDepth) Fail(begin, nex_Translate("objects nested deeper than %d", kMaxDepth));
  sto_Item item;
  for (size_t at = begin; at < end; at = item.end) {
    ItemAt(at, end, nullptr, item);
    size_t inner = item.begin;
    switch (item.tag) {
      case sto_TagObject:
      case sto_TagBase:
        if (item.end - item.begin < kObjectHead) continue;
        if (m_In.U32(item.begin + 8, "object number") == number) return item.start;
        inner += kObjectHead;
        break;
      case sto_TagListObj:
      case sto_TagMapInt2Obj:
      case sto_TagMapString2Obj:
        // The elements' items, each behind its key.
        for (size_t element = item.begin + 4; element < item.end;) {
          if (item.tag == sto_TagMapInt2Obj) element += 4;
          if (item.tag == sto_TagMapString2Obj) m_In.SkipString(element, element, "key");
          sto_Item held;
          ItemAt(element, item.end, nullptr, held);
          if (const size_t found = FindDefinition(held.start, held.end, number, depth + 1))
            return found;
          element = held.end;
        }
        continue;
      default:
        continue;
    }
    if (const size_t found = FindDefinition(inner, item.end, number, depth + 1)) return found;
  }
  return 0;
}

void sto_ReadSession::CheckVersion(unsigned classId, int version, size_t where) {
  if (classId != m_LastClass) {
    m_LastClass = classId;
    m_LastVersion = m_Registrar != nullptr && m_Registrar->ClassIsPresent(classId)
                        ? m_Registrar->GetLastClassVersionNumber(classId)
                        : INT32_MAX;
  }
  const int newest = m_LastVersion;
  if (version > newest)
    Fail(where, nex_Translate("an object of class %s version %d, newer than version %d of this "
                              "program",
                              ClassName(classId), version, newest));
}

cow_String sto_ReadSession::ClassName(unsigned classId) const {
  if (m_Registrar != nullptr && m_Registrar->ClassIsPresent(classId))
    return m_Registrar->ConstGet(classId).GetRef().Name();
  char text[16];
  std::snprintf(text, sizeof text, "0x%X", classId);
  return cow_String(text);
}

void sto_ReadSession::Fail(size_t position, const atr_String& what) const {
  nex_TextException error(nex_Translate("Stored graph holds %s (at byte %d)", what.c_str(),
                                        static_cast<int>(position)));
  NEX_THROW(error);
}

void* sto_ReadSharedWith(cls_MementoRead* memento, void* (*build)(const cls_ReadVisitor& visitor)) {
  cls_ReadVisitor visitor(memento);
  if (memento == nullptr) return nullptr;
  // Mementos of other stores are built each time.
  if (typeid(*memento) != typeid(Memento)) return build(visitor);
  const Memento* stored = static_cast<const Memento*>(memento);
  if (void* known = stored->Session()->Built(stored->Number())) return known;
  void* object = build(visitor);
  stored->Session()->SetBuilt(stored->Number(), object);
  return object;
}
