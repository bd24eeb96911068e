// The calling thread's store of object identities (cls_Uid): entries in blocks of 2048,
// every entry of a new block chained on a free list, so that taking an identity is a pop and
// giving one back on the same thread a push, with no lock. An entry given back on another
// thread goes onto its home store's list of returns (a lock-free push), which the home
// thread takes over whole when its own list runs dry.
//
// The catalogue is destroyed at the thread's end (thread singleton at destruct level 2) or
// by Finalize in the thread; the package cls does that for the thread that stops it. Its
// blocks go back then, unless identities from them are still in use on other threads: the
// store then lives on until the last of those is given back.
#ifndef CLS_UIDCATALOG_H
#define CLS_UIDCATALOG_H

#include "VRKBasExport.h"
#include "cls_Uid.h"
#include "thr_ThreadSingleton.h"

class cls_UidCatalog;
extern template class VRKLNU_EXPORT thr_ThreadSingletonBase<cls_UidCatalog>;

class VRKLNU_EXPORT cls_UidCatalog : public thr_ThreadSingleton<cls_UidCatalog> {
 public:
  static constexpr int kBlockEntries = 2048;
  static constexpr thr_ThreadObjectDestructLevel kDestructLevel = 2;

  // The catalogue itself, like its blocks, comes from the memory layer outside its limit, so
  // that an allocation past the limit on a thread with no identities yet can still raise an
  // exception that takes one.
  static void* operator new(size_t size) { return mem_MallocThrow(size); }
  static void operator delete(void* object) { mem_Free(object); }

  // A fresh entry with a count of 1 and no history. A new block comes from the memory layer
  // outside its limit, so that the out-of-memory exception itself can still get its
  // identity; std::bad_alloc when the system refuses it.
  cls_UidCatalogEntry* Allocate();
  // Deletes the entry's history ring and gives the entry back to its home store, from any
  // thread.
  static void Release(cls_UidCatalogEntry* entry);

  int BlockCount() const;

 private:
  friend class thr_ThreadSingletonBase<cls_UidCatalog>;
  cls_UidCatalog();
  ~cls_UidCatalog();

  void AddBlock();

  cls_UidStore* m_Store;
  cls_UidCatalogEntry* m_FreeList = nullptr;
};

#endif  // CLS_UIDCATALOG_H
