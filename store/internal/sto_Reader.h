// The reading side of the store: a read session checks a graph's bytes (header, record
// length, extent table) and hands out the mementos and cursors through which read
// constructors take their fields back (see sto_Writer.h for the layout).
//
// A memento finds a field by its name: first where the previous field ended, which is where
// it lies when fields are read in the order they were written, else by a walk over the
// object's items. A field that isn't there, or holds nothing, reads as the default given. A
// reference resolves to the object stored first under its number. Every read is held to the
// bytes of the graph and to the bounds of its object; a count is held against the bytes that
// would hold its elements before anything is allocated; objects nest at most 4096 deep.
// Corrupt or truncated bytes, a reference that closes a cycle, an object of a version newer
// than the registrar's newest, or a field read as a type it doesn't hold raise
// nex_TextException saying what and at which byte.
#ifndef STO_READER_H
#define STO_READER_H

#include <cstdint>

#include "cls_ClassRegistrar.h"
#include "cls_MementoRead.h"
#include "cls_Uid.h"
#include "cow_List.h"
#include "sto_Bytes.h"
#include "sto_Extent.h"
#include "sto_Stack.h"

// One item of a record: its tag, where it starts, and its payload's bounds.
struct sto_Item {
  sto_Tag tag;
  size_t start;
  size_t begin;
  size_t end;
};

class sto_ReadSession {
 public:
  // Checks the bytes' header and extent table; keeps a share of `bytes`.
  sto_ReadSession(const cow_String& bytes, const cls_ClassRegistrar* registrar);
  sto_ReadSession(const sto_ReadSession&) = delete;
  sto_ReadSession& operator=(const sto_ReadSession&) = delete;
  ~sto_ReadSession();

  // The memento over the graph's root, whose one field "root" is the graph's object.
  cls_MementoRead* NewRoot();
  // The graph's object rebuilt by its class's metadata, chosen by the stored class and
  // version (the first registered version not below it); `metadata` tells the class.
  void* Build(const cls_ClassMetadata*& metadata);
  // The class and version of the graph's object, without building it.
  void Peek(unsigned& classId, int& version);

  const sto_Input& In() const { return m_In; }
  const cls_ClassRegistrar* Registrar() const { return m_Registrar; }

  // The item at `position`, which must end by `limit`; `name` (when given) is compared
  // with the item's name.
  bool ItemAt(size_t position, size_t limit, const cow_String* name, sto_Item& item) const;
  // The memento of the object an item holds: null for a null item, the object stored first
  // under the number for a reference.
  cls_MementoRead* ObjectOf(const sto_Item& item);
  // The head of the object whose item starts at `start`: the item, its class and version,
  // which must not be newer than the registrar's newest.
  void Head(size_t start, sto_Item& object, unsigned& classId, int& version);
  // The identity of a number in the graph; all records of one number share it.
  cls_Uid Uid(uint32_t number);
  // A list agent on extent `number`, which must hold elements of T.
  template <class T>
  cls_AgentListPrim<T>* Agent(uint32_t number, int quantum, const cls_Uid& uid, size_t where);

  // Bookkeeping of the mementos open on the stack of read constructors.
  void Enter(uint32_t number, size_t definition);
  void Leave(uint32_t number);
  // The object built already for a number by sto_ReadShared, or null; and its record.
  void* Built(uint32_t number) { return number ? Entry(number, m_RecordBegin).built : nullptr; }
  void SetBuilt(uint32_t number, void* object) {
    if (number) Entry(number, m_RecordBegin).built = object;
  }
  // A name for the class in messages.
  cow_String ClassName(unsigned classId) const;
  [[noreturn]] void Fail(size_t position, const atr_String& what) const;

 private:
  struct Number {
    cls_Uid uid;            // shared by every record of the number
    size_t definition = 0;  // the item of the object stored first under it; 0 until known
    int open = 0;           // mementos open on it
    void* built = nullptr;  // the object built for it as a shared pointer
  };
  Number& Entry(uint32_t number, size_t where);
  // The payload of the first object stored under `number` in [begin, end), or 0.
  size_t FindDefinition(size_t begin, size_t end, uint32_t number, int depth) const;
  void CheckVersion(unsigned classId, int version, size_t where);

  cow_String m_Bytes;
  sto_Input m_In;
  const cls_ClassRegistrar* m_Registrar;
  size_t m_RecordBegin;
  size_t m_RecordEnd;
  sto_Stack<Number> m_Numbers;
  unsigned m_LastClass = 0;  // the class whose newest version was looked up last
  int m_LastVersion = 0;
  int m_Depth = 0;
  struct Extent {
    unsigned kind;
    int count;
    size_t position;
    sto_ExtentHld decoded{nullptr};
  };
  cow_List<Extent> m_Extents;
};

#endif  // STO_READER_H
