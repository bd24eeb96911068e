// The writing side of the store: a write session lays one object graph out as a record in
// the external form, and its mementos and cursors are what the objects' DBWrite talks to.
//
// A record is a run of items: a tag, a field name, the payload's length, the payload. An
// object's payload is its class, its version (the newest the registrar knows, else 0), its
// identity's number in the graph and its own items; a base-class part is an item of its
// derived object, a nested object an item of its holder, a collection an item of its
// collection object. Objects and collections are written in place and their lengths patched
// when they end, which is when their memento or cursor is deleted or when the object holding
// them writes again, whichever comes first. An identity seen before in the graph is written
// as a reference to its number and its memento is declined (null), so that a shared object
// goes out once; value collections (classes 0x230001 and 0x230002) are written again, since
// their writers don't take a refusal.
//
// One thread, one graph at a time. Store exceptions: a write to an object whose record was
// already closed raises nex_TextException.
#ifndef STO_WRITER_H
#define STO_WRITER_H

#include <cstdint>

#include "cls_ClassRegistrar.h"
#include "cls_MementoWrite.h"
#include "cls_Uid.h"
#include "cow_List.h"
#include "sto_Bytes.h"
#include "sto_Extent.h"
#include "sto_Stack.h"

class sto_WriteSession;

// An object or a collection being written, whose length is patched when it closes.
class sto_OpenItem {
 public:
  virtual ~sto_OpenItem() = default;

 protected:
  friend class sto_WriteSession;
  // Brings the session's output to this item, closing what was opened inside it; raises when
  // the item itself was closed.
  void Resume() const;
  // Closes the item (and what is open inside it) if it is still open.
  void Finish();
  // Called when the item closes, before its length is patched.
  virtual void Closing() {}

  sto_WriteSession* m_Session = nullptr;
  int m_Depth = 0;
  size_t m_LengthAt = 0;
  bool m_Open = false;
};

class sto_WriteSession {
 public:
  explicit sto_WriteSession(const cls_ClassRegistrar* registrar);
  sto_WriteSession(const sto_WriteSession&) = delete;
  sto_WriteSession& operator=(const sto_WriteSession&) = delete;
  ~sto_WriteSession();

  // The memento of the graph's root, over which the graph's one object is written.
  cls_MementoWrite* NewRoot();
  // The bytes of the graph: header, record and extents. The session is spent.
  cow_String Finish();

  sto_Output& Out() { return m_Out; }
  const cls_ClassRegistrar* Registrar() const { return m_Registrar; }

  // Starts an item inside `parent`: its tag, name and room for its length.
  void Open(sto_OpenItem* item, const sto_OpenItem* parent, sto_Tag tag, const cow_String& name);
  // Closes every item opened inside `item`.
  void Settle(const sto_OpenItem* item);
  // An item whose payload is known in full: tag, name, length.
  void ItemHead(sto_Tag tag, const cow_String& name, uint32_t length);
  // The memento of an object in an item of `parent`, or null after writing a reference when
  // the identity was written before (and `mayRefer`).
  cls_MementoWrite* Object(const sto_OpenItem* parent, sto_Tag tag, const cow_String& name,
                           unsigned classId, const cls_Uid& uid, bool mayRefer);
  // The number of the extent in the graph, added at its first sight.
  uint32_t Extent(const sto_ExtentHld& extent);
  // Closes the item opened last.
  void CloseTop();

 private:
  uint32_t Hash(const void* key) const;
  // The identity's number in the graph; `seen` tells whether it had one already.
  uint32_t Number(const cls_Uid& uid, bool& seen);
  int Version(unsigned classId);

  const cls_ClassRegistrar* m_Registrar;
  sto_Output m_Out;
  size_t m_RecordLengthAt;
  sto_Stack<sto_OpenItem*> m_Open;
  cow_List<sto_ExtentHld> m_Extents;
  // Identities by address in an open-addressed table of (key, number) pairs.
  struct Slot {
    const void* key;
    uint32_t number;
  };
  Slot* m_Slots = nullptr;
  uint32_t m_SlotMask = 0;
  uint32_t m_Numbers = 0;
  sto_Stack<cls_Uid> m_Seen;  // holds each identity, so that none is reused while the table has it
  unsigned m_LastClass = 0;
  int m_LastVersion = 0;
};

#endif  // STO_WRITER_H
