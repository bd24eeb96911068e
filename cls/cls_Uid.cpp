#include "cls_Uid.h"

#include <atomic>
#include <new>

#include "cls_HistoryEntry.h"
#include "cls_UidCatalog.h"

template class thr_ThreadSingletonBase<cls_UidCatalog>;

// The blocks of one catalogue, and the entries given back to it on other threads. `m_Users`
// counts the entries out, plus one for the catalogue while it lives; whoever brings it to
// 0 frees the blocks and the store.
struct cls_UidStore {
  struct Block {
    Block* m_Previous;
    cls_UidCatalogEntry m_Entries[cls_UidCatalog::kBlockEntries];
  };

  // One user goes; the last one takes the store with it.
  void Leave() {
    if (m_Users.fetch_sub(1, std::memory_order_acq_rel) != 1) return;
    while (m_LastBlock != nullptr) {
      Block* previous = m_LastBlock->m_Previous;
      mem_Free(m_LastBlock);
      m_LastBlock = previous;
    }
    this->~cls_UidStore();
    mem_Free(this);
  }

  // An entry given back on another thread.
  void Return(cls_UidCatalogEntry* entry) {
    entry->m_NextFree = m_Returns.load(std::memory_order_relaxed);
    while (!m_Returns.compare_exchange_weak(entry->m_NextFree, entry, std::memory_order_release,
                                            std::memory_order_relaxed)) {
    }
  }

  Block* m_LastBlock = nullptr;
  int m_BlockCount = 0;
  std::atomic<cls_UidCatalogEntry*> m_Returns{nullptr};
  std::atomic<long> m_Users{1};
};

cls_Uid& cls_Uid::operator=(const cls_Uid& other) {
  ++other.m_Entry->m_RefCount;
  Release(m_Entry);
  m_Entry = other.m_Entry;
  return *this;
}

void cls_Uid::NewUid() {
  cls_UidCatalogEntry* fresh = AllocateUid();
  Release(m_Entry);
  m_Entry = fresh;
}

cls_UidCatalogEntry* cls_Uid::AllocateUid() {
  return cls_UidCatalog::Instance().Allocate();
}

void cls_Uid::Release(cls_UidCatalogEntry* entry) {
  if (--entry->m_RefCount == 0) cls_UidCatalog::Release(entry);
}

cls_UidCatalog::cls_UidCatalog()
    : thr_ThreadSingleton<cls_UidCatalog>(kDestructLevel),
      m_Store(new (mem_MallocThrow(sizeof(cls_UidStore))) cls_UidStore) {}

cls_UidCatalog::~cls_UidCatalog() {
  m_Store->Leave();
}

int cls_UidCatalog::BlockCount() const {
  return m_Store->m_BlockCount;
}

cls_UidCatalogEntry* cls_UidCatalog::Allocate() {
  if (m_FreeList == nullptr)
    m_FreeList = m_Store->m_Returns.exchange(nullptr, std::memory_order_acquire);
  if (m_FreeList == nullptr) AddBlock();
  cls_UidCatalogEntry* entry = m_FreeList;
  m_FreeList = entry->m_NextFree;
  entry->m_RefCount = 1;
  entry->m_History = nullptr;
  m_Store->m_Users.fetch_add(1, std::memory_order_relaxed);
  return entry;
}

void cls_UidCatalog::Release(cls_UidCatalogEntry* entry) {
  if (entry->m_History != nullptr) cls_HistoryEntry::DeleteRing(entry->m_History);
  cls_UidStore* home = entry->m_Home;
  cls_UidCatalog* mine = thr_ThreadSingletonBase<cls_UidCatalog>::Instance();
  if (mine != nullptr && mine->m_Store == home) {
    entry->m_NextFree = mine->m_FreeList;
    mine->m_FreeList = entry;
  } else {
    home->Return(entry);
  }
  home->Leave();
}

void cls_UidCatalog::AddBlock() {
  auto* block = static_cast<cls_UidStore::Block*>(mem_MallocThrow(sizeof(cls_UidStore::Block)));
  block->m_Previous = m_Store->m_LastBlock;
  m_Store->m_LastBlock = block;
  ++m_Store->m_BlockCount;
  for (int i = 0; i < kBlockEntries; ++i) {
    cls_UidCatalogEntry& entry = block->m_Entries[i];
    entry.m_Home = m_Store;
    entry.m_NextFree = i + 1 < kBlockEntries ? &block->m_Entries[i + 1] : nullptr;
  }
  m_FreeList = block->m_Entries;
}
