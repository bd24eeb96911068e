#include "cls_ArrayPrim.h"

#include "cls_CollectionType.h"
#include "cls_MementoWrite.h"
#include "cls_ReadVisitor.h"
#include "cls_WriteVisitor.h"
#include "internal/cls_AgentOwner.h"
#include "internal/cls_Report.h"

namespace {

// Where a bad index's reference points: not an element of any array.
template <class T>
T& Scratch() {
  static T scratch;
  return scratch;
}

}  // namespace

template <class T>
cls_ArrayPrim<T>::cls_ArrayPrim() : m_Trie(new Trie) {}

template <class T>
cls_ArrayPrim<T>::cls_ArrayPrim(const cls_ReadVisitor& visitor)
    : m_Trie(new Trie), m_Agent(cls_StoredAgent<T>(visitor)), m_Uid(visitor.GetUid()) {
  if (m_Agent == nullptr) return;
  m_Size = m_Agent->Size();
  cls_JoinAgent(m_Agent, *this);
}

template <class T>
cls_ArrayPrim<T>::cls_ArrayPrim(const cls_ArrayPrim& other)
    : cls_PC(),
      m_Trie(other.m_Trie),
      m_Agent(other.m_Agent),
      m_Size(other.m_Size),
      m_Uid(other.m_Uid) {
  if (m_Agent != nullptr) cls_JoinAgent(m_Agent, *this);
}

template <class T>
cls_ArrayPrim<T>& cls_ArrayPrim<T>::operator=(const cls_ArrayPrim& other) {
  if (this == &other) return *this;
  Unlink();
  if (m_Agent != nullptr) cls_LeaveAgent(m_Agent, *this);
  m_Trie = other.m_Trie;
  m_Agent = other.m_Agent;
  m_Size = other.m_Size;
  m_Uid = other.m_Uid;
  if (m_Agent != nullptr) cls_JoinAgent(m_Agent, *this);
  return *this;
}

template <class T>
cls_ArrayPrim<T>::~cls_ArrayPrim() {
  if (m_Agent != nullptr) cls_LeaveAgent(m_Agent, *this);
  Unlink();
}

template <class T>
void cls_ArrayPrim<T>::Detach() {
  if (m_Agent != nullptr && cls_LeaveAgent(m_Agent, *this)) m_Uid.NewUid();
  Unlink();
}

template <class T>
void cls_ArrayPrim<T>::Flush() const {
  if (m_Agent == nullptr || m_Agent->IsReadOnly()) return;
  for (cls_PTrieIter<int, cls_ArrayPrimBuffer<T>, 1> it(m_Trie.GetRef()); !it.IsDone(); it.Next()) {
    cls_ArrayPrimBufferImpl<T>* block = it.CurrentValue().Get();
    const int count = BlockCount(it.CurrentKey());
    if (!block->m_Dirty || count < 1) continue;
    m_Agent->Write(it.CurrentKey(), count, block->m_Data);
    block->m_Dirty = 0;
  }
  m_Agent->Flush();
}

template <class T>
void cls_ArrayPrim<T>::Evict(int keep) const {
  if (m_Agent == nullptr) return;
  Trie& trie = m_Trie.GetRef();
  const int kept = keep < 0 ? -1 : BlockKey(keep);  // -1 is no block's key
  // The common case, one block and the one to keep, walks nothing.
  if (trie.Size() == 0 || (trie.Size() == 1 && trie.IsMember(kept))) return;
  // Removing a key would disturb the walk: keys are noted, and removed after it, in batches.
  constexpr int kBatch = 64;
  int noted[kBatch];
  int count;
  do {
    count = 0;
    for (cls_PTrieIter<int, cls_ArrayPrimBuffer<T>, 1> it(trie); !it.IsDone() && count < kBatch;
         it.Next()) {
      const int key = it.CurrentKey();
      if (key == kept) continue;
      const cls_ArrayPrimBufferImpl<T>* block = it.CurrentValue().Get();
      if (block->m_Dirty && BlockCount(key) > 0)
        m_Agent->Write(key, BlockCount(key), block->m_Data);
      noted[count++] = key;
    }
    for (int i = 0; i < count; ++i)
      trie.Remove(noted[i]);
  } while (count == kBatch);
}

template <class T>
cls_ArrayPrimBufferImpl<T>* cls_ArrayPrim<T>::GetBuffer(int index) const {
  if (index < 0 || index > m_Size) return nullptr;
  const int key = BlockKey(index);
  Trie& trie = m_Trie.GetRef();
  const cls_ArrayPrimBuffer<T>* held = trie.ConstGetPtr(key);
  // Held, and nothing else to evict: the common case of sequential access.
  if (held != nullptr && (m_Agent == nullptr || trie.Size() == 1)) return held->Get();
  Evict(index);
  if (held != nullptr) return held->Get();  // evicting others moves no leaf
  cls_ArrayPrimBufferImpl<T>* block = trie.Insert(key, cls_ArrayPrimBuffer<T>::New()).Get();
  // Growing onto a new block: there is nothing to read.
  if (index == key && index == m_Size) return block;
  if (m_Agent == nullptr) {
    cls_Report(Messages().missingAgent);
    return block;
  }
  m_Agent->Read(key, BlockCount(key), block->m_Data);
  return block;
}

template <class T>
void cls_ArrayPrim<T>::Append(const T& value) {
  cls_ArrayPrimBufferImpl<T>* block = GetBuffer(m_Size);
  block->m_Data[m_Size & (kBlockSize - 1)] = value;
  block->m_Dirty = 1;
  ++m_Size;
}

template <class T>
void cls_ArrayPrim<T>::AppendBlock(const T* values, int count) {
  if (m_Agent == nullptr) {
    cls_Report(Messages().appendBlock);
    return;
  }
  Flush();
  if (count > 0) {
    m_Agent->Write(m_Size, count, values);
    // The block that held the old end is clean now, and stale past it: it is read again
    // when needed.
    m_Trie.GetRef().Remove(BlockKey(m_Size));
    m_Size += count;
  }
  Flush();
}

template <class T>
T& cls_ArrayPrim<T>::Get(int index) {
  cls_ArrayPrimBufferImpl<T>* block = GetBuffer(index);
  if (block == nullptr) {
    cls_Report(Messages().get);
    return Scratch<T>();
  }
  block->m_Dirty = 1;
  return block->m_Data[index & (kBlockSize - 1)];
}

template <class T>
const T& cls_ArrayPrim<T>::ConstGet(int index) const {
  const cls_ArrayPrimBufferImpl<T>* block = GetBuffer(index);
  if (block == nullptr) {
    cls_Report(Messages().constGet);
    return Scratch<T>();
  }
  return block->m_Data[index & (kBlockSize - 1)];
}

template <class T>
void cls_ArrayPrim<T>::Release() const {
  Evict(-1);
}

template <class T>
int cls_ArrayPrim<T>::Refresh() {
  if (m_Agent == nullptr || !m_Agent->Refresh()) return 0;
  m_Size = m_Agent->Size();
  Evict(-1);
  return 1;
}

template <class T>
void cls_ArrayPrim<T>::DBWrite(const cls_WriteVisitor& visitor) const {
  WriteAs(visitor, cls_CollList);
}

template <class T>
void cls_ArrayPrim<T>::WriteAs(const cls_WriteVisitor& visitor, cls_CollectionType family) const {
  if (!visitor.StartWrite(TypeId(), m_Uid)) return;
  visitor.CheckCollectionType(cls_CollectionTypeFix(family, static_cast<const T*>(nullptr)));
  DBWriteBody(visitor);
}

template <class T>
void cls_ArrayPrim<T>::DBWriteBody(const cls_WriteVisitor& visitor) const {
  if (m_Agent != nullptr || visitor.Memento() == nullptr) return;
  m_Agent = visitor.Memento()->MakeAgentList(T(), 1);
  if (m_Agent == nullptr) return;
  cls_JoinAgent(m_Agent, *this);
  const int stored = m_Agent->Size();
  if (m_Size == 0) {
    m_Size = stored;
    return;
  }
  // The elements in memory go over the start of what the list holds. The message is the
  // system's own, its odd "(s)" included.
  if (stored != 0) cls_Report("cls_ArrayPrim::DBWrite: Index conflicts(s) in list.");
  Evict(m_Size);
  Flush();
}

template <class T>
unsigned cls_ArrayPrim<T>::DynTypeId() const {
  return TypeId();
}

template <class T>
const cls_ArrayPrimMessages& cls_ArrayPrim<T>::Messages() const {
  static constexpr cls_ArrayPrimMessages kMessages = {
      "cls_ArrayPrim::AppendBlock: Collection must be associated with a database for this "
      "method.",
      "In cls_ArrayPrim::GetBuffer() Missing agent.",
      "In cls_ArrayPrim::ConstGet() Index out of range.",
      "In cls_ArrayPrim::Get() Index out of range.",
  };
  return kMessages;
}

template class cls_ArrayPrim<int>;
template class cls_ArrayPrim<float>;
template class cls_ArrayPrim<double>;
template class cls_ArrayPrim<bool>;
template class cls_ArrayPrim<cow_String>;
