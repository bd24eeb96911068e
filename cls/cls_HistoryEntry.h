// An entry that a store hangs on an object's identity (cls_Uid): entries of one uid form a
// circular double list, and all of them are deleted, through the virtual destructor, when
// the last copy of the uid goes. The library keeps the ring and deletes it; what an entry
// records is the store's:
//
//   class Revision : public cls_HistoryEntry {
//    public:
//     explicit Revision(cls_Uid& uid) {
//       if (uid.GetHistory()) Link(uid.GetHistory()); else uid.SetHistory(this);
//     }
//   };
//
// A lone entry points at itself. Entries belong to the thread of their uid.
#ifndef CLS_HISTORYENTRY_H
#define CLS_HISTORYENTRY_H

#include "VRKBasExport.h"
#include "mem_Alloc.h"

class VRKLNU_EXPORT cls_HistoryEntry : public mem_AllocationOperators {
 public:
  cls_HistoryEntry() = default;
  cls_HistoryEntry(const cls_HistoryEntry&) = delete;
  cls_HistoryEntry& operator=(const cls_HistoryEntry&) = delete;
  // Leaves the ring, so that the others stay linked.
  virtual ~cls_HistoryEntry();

  // Removes the entry from its ring and makes it a lone entry again.
  void UnLink();
  cls_HistoryEntry* Next() const { return m_Next; }
  cls_HistoryEntry* Previous() const { return m_Previous; }

  // Deletes every entry of the ring that `head` is on, `head` included.
  static void DeleteRing(cls_HistoryEntry* head);

 protected:
  // Inserts the entry directly after `head`. The entry must be lone.
  void Link(cls_HistoryEntry* head);

 private:
  cls_HistoryEntry* m_Next = this;
  cls_HistoryEntry* m_Previous = this;
};

#endif  // CLS_HISTORYENTRY_H
