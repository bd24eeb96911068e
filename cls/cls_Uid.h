// The in-memory identity of a persistent object. Copies of a uid share one identity, so that
// the copies of an object are one object to a store; a new uid, or NewUid(), is a new one:
//
//   cls_Uid a;          // a fresh identity
//   cls_Uid b = a;      // the same identity: a == b
//   b.NewUid();         // b is now another object
//
// Identities come from the calling thread's cls_UidCatalog, a free-list pop with no lock.
// Threads: a uid and its copies belong to one thread at a time, but that thread may change:
// a uid carried to another thread (an exception raised on a pool thread, say) stays valid
// after the thread that made it has ended, and its entry goes back to the catalogue it came
// from. The library must be up (package cls).
#ifndef CLS_UID_H
#define CLS_UID_H

#include <cstdint>

#include "VRKBasExport.h"
#include "mem_Alloc.h"

class cls_HistoryEntry;
struct cls_UidStore;

// One identity: its use count and the head of the store's history ring (null when none).
// On a free list the count's place links to the next free entry. `m_Home` is the store
// whose block holds the entry.
struct cls_UidCatalogEntry {
  union {
    int32_t m_RefCount;
    cls_UidCatalogEntry* m_NextFree;
  };
  cls_HistoryEntry* m_History;
  cls_UidStore* m_Home;
};

class VRKLNU_EXPORT cls_Uid : public mem_AllocationOperatorsTiny {
 public:
  cls_Uid() : m_Entry(AllocateUid()) {}
  cls_Uid(const cls_Uid& other) : m_Entry(other.m_Entry) { ++m_Entry->m_RefCount; }
  cls_Uid& operator=(const cls_Uid& other);
  ~cls_Uid() { Release(m_Entry); }

  // Drops this identity and takes a fresh one.
  void NewUid();
  // True when both share one identity.
  bool operator==(const cls_Uid& other) const { return m_Entry == other.m_Entry; }
  bool operator!=(const cls_Uid& other) const { return m_Entry != other.m_Entry; }

  // The store's history ring of this identity, null while there is none. The ring is
  // deleted with the identity.
  cls_HistoryEntry* GetHistory() const { return m_Entry->m_History; }
  void SetHistory(cls_HistoryEntry* head) { m_Entry->m_History = head; }

  // Copies that share the identity.
  int UseCount() const { return m_Entry->m_RefCount; }
  // The identity as an address, the same for all copies while one of them lives: a key for a
  // store's tables of the objects it has seen.
  const void* Identity() const { return m_Entry; }

  // A fresh entry from the calling thread's catalogue, as default construction takes one:
  // a use count of 1 and no history. The count is the caller's, who gives the entry back
  // with cls_UidCatalog::Release once it falls to 0.
  static cls_UidCatalogEntry* AllocateUid();

 private:
  static void Release(cls_UidCatalogEntry* entry);

  cls_UidCatalogEntry* m_Entry;
};

#endif  // CLS_UID_H
