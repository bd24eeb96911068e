#include "cls_Uid.h"

#include <new>

#include "cls_HistoryEntry.h"
#include "cls_UidCatalog.h"

template class thr_ThreadSingletonBase<cls_UidCatalog>;
template class thr_ThreadSingleton<cls_UidCatalog>;

struct cls_UidCatalog::Block {
  Block* m_Previous;
  cls_UidCatalogEntry m_Entries[kBlockEntries];
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
  if (--entry->m_RefCount == 0) cls_UidCatalog::Instance().Release(entry);
}

cls_UidCatalog::~cls_UidCatalog() {
  while (m_LastBlock != nullptr) {
    Block* previous = m_LastBlock->m_Previous;
    mem_Free(m_LastBlock);
    m_LastBlock = previous;
  }
}

cls_UidCatalogEntry* cls_UidCatalog::Allocate() {
  if (m_FreeList == nullptr) AddBlock();
  cls_UidCatalogEntry* entry = m_FreeList;
  m_FreeList = entry->m_NextFree;
  entry->m_RefCount = 1;
  entry->m_History = nullptr;
  return entry;
}

void cls_UidCatalog::Release(cls_UidCatalogEntry* entry) {
  if (entry->m_History != nullptr) cls_HistoryEntry::DeleteRing(entry->m_History);
  entry->m_NextFree = m_FreeList;
  m_FreeList = entry;
}

void* cls_UidCatalog::operator new(size_t size) {
  void* object = mem_Malloc(size);
  if (object == nullptr) throw std::bad_alloc();
  return object;
}

void cls_UidCatalog::AddBlock() {
  Block* block = static_cast<Block*>(mem_Malloc(sizeof(Block)));
  if (block == nullptr) throw std::bad_alloc();
  block->m_Previous = m_LastBlock;
  m_LastBlock = block;
  ++m_BlockCount;
  for (int i = 0; i < kBlockEntries; ++i) {
    block->m_Entries[i].m_NextFree = i + 1 < kBlockEntries ? &block->m_Entries[i + 1] : nullptr;
  }
  m_FreeList = block->m_Entries;
}
