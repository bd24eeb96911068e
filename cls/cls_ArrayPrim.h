// A persistent array: it looks like an ordinary growable array, while only one block of 2048
// elements of it is in memory once it has a store behind it.
//
//   cls_ArrayPrim<double> loads;
//   for (...) loads.Append(value);        // in memory, every block kept
//   loads.DBWrite(fieldVisitor);          // spills to the store; from now on it pages
//   double first = loads.ConstGet(0);     // the block of 0 comes back, the others go
//
// An array is unattached (no agent: every block stays in memory) until its first DBWrite
// or its read constructor attaches it to a store's agent (cls_AgentListPrim.h); from then on
// every access evicts all blocks but its own, writing dirty ones back, and reads its block
// from the agent when it is not in memory. Detach lets the store go again. AppendBlock sends
// its data straight to the store.
//
// Copies share everything: the blocks in memory, the agent, the size and the identity; they
// stand in the agent's ring of owners (cls_PC), and the last one to leave flushes and
// deletes the agent.
//
// Misuse is reported, not raised: a bad index or a missing agent prints a message on
// standard error and execution goes on (the reference returned for a bad index is not
// usable; the message is the only defence). Nothing here throws but the store and the
// allocation of a block. Not synchronised: even ConstGet changes the blocks in memory, so
// copies of an array stay on one thread.
//
// Instantiated for int, float, double, bool and cow_String.
#ifndef CLS_ARRAYPRIM_H
#define CLS_ARRAYPRIM_H

#include "VRKBasExport.h"
#include "cls_AgentListPrim.h"
#include "cls_CollectionType.h"
#include "cls_PC.h"
#include "cls_PTrie.h"
#include "cls_Uid.h"
#include "cow_CountedHld.h"
#include "cow_String.h"
#include "mem_Alloc.h"

class cls_ReadVisitor;
class cls_WriteVisitor;

// One block: a use count (starting at 1), a dirty flag and the elements, constructed and
// destroyed with the block.
template <class T>
struct cls_ArrayPrimBufferImpl : public mem_AllocationOperators {
  static constexpr int kSize = 2048;

  int m_RefCount = 1;
  char m_Dirty = 0;
  T m_Data[kSize]{};
};

// A counted handle to one block: copies share it, and the last one frees it.
template <class T>
class cls_ArrayPrimBuffer {
 public:
  using Impl = cls_ArrayPrimBufferImpl<T>;

  // A handle to a new block.
  static cls_ArrayPrimBuffer New() { return cls_ArrayPrimBuffer(new Impl); }

  cls_ArrayPrimBuffer(const cls_ArrayPrimBuffer& other) : m_Impl(other.m_Impl) {
    ++m_Impl->m_RefCount;
  }
  cls_ArrayPrimBuffer& operator=(const cls_ArrayPrimBuffer& other) {
    ++other.m_Impl->m_RefCount;
    Release();
    m_Impl = other.m_Impl;
    return *this;
  }
  ~cls_ArrayPrimBuffer() { Release(); }

  Impl* Get() const { return m_Impl; }

 private:
  explicit cls_ArrayPrimBuffer(Impl* impl) : m_Impl(impl) {}
  void Release() {
    if (--m_Impl->m_RefCount == 0) delete m_Impl;
  }

  Impl* m_Impl;
};

// What an array prints when it is misused; each array class has its own.
struct cls_ArrayPrimMessages {
  const char* appendBlock;
  const char* missingAgent;
  const char* constGet;
  const char* get;
};

template <class T>
class cls_ArrayPrim : public cls_PC {
 public:
  using Trie = cls_PTrie<int, cls_ArrayPrimBuffer<T>, 1>;
  static constexpr int kBlockSize = cls_ArrayPrimBufferImpl<T>::kSize;

  static unsigned TypeId() { return 0x230001; }

  // Empty, unattached, with a fresh identity.
  cls_ArrayPrim();
  // Attached to the stored list: its size is the list's, its identity the stored one.
  explicit cls_ArrayPrim(const cls_ReadVisitor& visitor);
  // Shares the blocks, the agent, the size and the identity.
  cls_ArrayPrim(const cls_ArrayPrim& other);
  cls_ArrayPrim& operator=(const cls_ArrayPrim& other);
  // Leaves the agent (the last owner flushes and deletes it) and the ring.
  ~cls_ArrayPrim() override;

  // Writes the dirty blocks to the agent, then flushes the agent; nothing when unattached or
  // when the agent is read-only.
  void Flush() const override;
  // Leaves the agent; the last owner flushes and deletes it and takes a new identity. The
  // blocks in memory stay.
  void Detach() override;
  // The array as a list record (tag 5x for T): the first write attaches it to the agent
  // that the memento gives (a store that gives none leaves it unattached).
  virtual void DBWrite(const cls_WriteVisitor& visitor) const;
  virtual unsigned DynTypeId() const;

  int Size() const { return m_Size; }
  void Append(const T& value);
  // Sends `count` values straight to the store (flushing before and after) and grows by
  // them; the flushes happen also for a count of 0. An unattached array has no store to
  // send them to: it prints why, and changes nothing.
  void AppendBlock(const T* values, int count);
  // The element, for writing (its block becomes dirty) and for reading. A bad index prints a
  // message; the reference is then not usable.
  T& Get(int index);
  const T& ConstGet(int index) const;
  // Drops every block from memory, writing dirty ones back; an unattached array keeps them.
  void Release() const;
  // When the agent says that the stored contents changed: takes the size from it, drops
  // every block and returns 1. Otherwise (and unattached) 0.
  int Refresh();
  // Attaches an unattached array to the memento's agent: the elements in memory then go to
  // the store. Nothing when attached already.
  void DBWriteBody(const cls_WriteVisitor& visitor) const;

  // The number of blocks in memory.
  int BlocksInMemory() const { return m_Trie.GetRef().Size(); }
  bool IsAttached() const { return m_Agent != nullptr; }
  const cls_Uid& Uid() const { return m_Uid; }

 protected:
  virtual const cls_ArrayPrimMessages& Messages() const;
  // DBWrite with the tag of `family` for T.
  void WriteAs(const cls_WriteVisitor& visitor, cls_CollectionType family) const;
  // The block of `index` (0 to Size(), Size() allowed for growth), or null when out of
  // range. Evicts the other blocks first when attached.
  cls_ArrayPrimBufferImpl<T>* GetBuffer(int index) const;

 private:
  static int BlockKey(int index) { return index & -kBlockSize; }
  // How many elements of the block at `key` the store holds.
  int BlockCount(int key) const { return key + kBlockSize > m_Size ? m_Size - key : kBlockSize; }
  // Writes back and drops every block but the one holding `keep` (all when `keep` is
  // negative); nothing when unattached.
  void Evict(int keep) const;

  mutable cow_CountedHld<Trie> m_Trie;
  mutable cls_AgentListPrim<T>* m_Agent = nullptr;
  mutable int m_Size = 0;
  cls_Uid m_Uid;
};

extern template class VRKLNU_EXPORT cls_ArrayPrim<int>;
extern template class VRKLNU_EXPORT cls_ArrayPrim<float>;
extern template class VRKLNU_EXPORT cls_ArrayPrim<double>;
extern template class VRKLNU_EXPORT cls_ArrayPrim<bool>;
extern template class VRKLNU_EXPORT cls_ArrayPrim<cow_String>;

#endif  // CLS_ARRAYPRIM_H
