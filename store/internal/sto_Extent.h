// The stored lists on which persistent arrays page (cls_ArrayPrim and its kin), and the
// agents through which the arrays reach them. An extent holds one list's elements for the
// graph being written or read; an agent is an array's handle on an extent, counted by the
// arrays that share it (see cls_AgentListPrim.h), while the extent is shared by the agent and
// the graph, so that a list written by an array that has already let go of its agent is still
// there when the graph is finished. Memory comes from the memory layer; one thread at a time.
#ifndef STO_EXTENT_H
#define STO_EXTENT_H

#include "cls_AgentBlob.h"
#include "cls_AgentListPrim.h"
#include "cls_PC.h"
#include "cls_Uid.h"
#include "cow_CountedHld.h"
#include "mem_Alloc.h"
#include "sto_Bytes.h"

class sto_ExtentBase : public mem_AllocationOperators {
 public:
  virtual ~sto_ExtentBase() = default;
  virtual unsigned Kind() const = 0;
  virtual int Size() const = 0;
  // The count and the elements in the external form.
  virtual void Encode(sto_Output& out) const = 0;
};
typedef cow_CountedHld<sto_ExtentBase> sto_ExtentHld;

template <class T>
class sto_Extent : public sto_ExtentBase {
 public:
  sto_Extent() = default;
  sto_Extent(const sto_Extent&) = delete;
  sto_Extent& operator=(const sto_Extent&) = delete;
  ~sto_Extent() override;

  unsigned Kind() const override { return sto_kindOf<T>(); }
  int Size() const override { return m_Size; }
  void Encode(sto_Output& out) const override;
  // The `count` elements at `position` of `in`, checked against its bytes.
  void Decode(const sto_Input& in, size_t position, int count);

  // Stores `count` elements at `index`, growing the list when they reach past its end (a gap
  // is filled with T()).
  void Write(int index, int count, const T* values);
  // Up to `count` elements at `index`; the number read.
  int Read(int index, int count, T* values) const;

 private:
  void Reserve(int size);

  T* m_Values = nullptr;
  int m_Size = 0;
  int m_Capacity = 0;
};

// The ring of arrays that share an agent hangs on this anchor, which is never flushed or
// detached itself.
class sto_OwnerRing : public cls_PC {
 public:
  void Flush() const override {}
  void Detach() override {}
};

// What a live agent tells about its list. Live agents stand in a per-thread registry by the
// identity of their list, so that an array saved again after it was attached (it then writes
// no list of its own) still puts its list into the graph.
struct sto_AgentEntry {
  sto_AgentEntry(const sto_ExtentHld& list, int quantum) : extent(list), extentQuantum(quantum) {}
  // Has every array on the agent write its changed blocks to the list.
  virtual void FlushOwners() = 0;

  sto_ExtentHld extent;
  int extentQuantum;
};
void sto_RegisterAgent(const cls_Uid& uid, sto_AgentEntry* entry);
void sto_UnregisterAgent(sto_AgentEntry* entry);
// The live agent of the list with the identity, or null.
sto_AgentEntry* sto_FindAgent(const cls_Uid& uid);

template <class T>
class sto_ListAgent : public cls_AgentListPrim<T>, public sto_AgentEntry {
 public:
  sto_ListAgent(const sto_ExtentHld& extent, int extentQuantum, const cls_Uid& uid)
      : sto_AgentEntry(extent, extentQuantum), m_Uid(uid) {
    sto_RegisterAgent(m_Uid, this);
  }
  ~sto_ListAgent() override { sto_UnregisterAgent(this); }

  int Size() const override { return List().Size(); }
  int ExtentQuantum() const override { return extentQuantum; }
  // Nothing else writes the extent behind the arrays' backs.
  int Refresh() override { return 0; }
  void Flush() override {}
  void Write(int index, int count, const T* values) override { List().Write(index, count, values); }
  int Read(int index, int count, T* values) override { return List().Read(index, count, values); }
  void AddRef() override { ++m_References; }
  void Release() override { --m_References; }
  int RefCount() const override { return m_References; }
  int IsReadOnly() const override { return 0; }
  void Link(cls_PC* owner) override { m_Owners.Link(owner); }
  void FlushOwners() override {
    for (cls_PC* owner = m_Owners.Next(); owner != &m_Owners; owner = owner->Next())
      owner->Flush();
  }

 private:
  sto_Extent<T>& List() const { return static_cast<sto_Extent<T>&>(extent.GetRef()); }

  cls_Uid m_Uid;
  int m_References = 0;
  sto_OwnerRing m_Owners;
};

// Blobs carry nothing through this store's agent: the agent has no operation but its
// deletion.
class sto_BlobAgent : public cls_AgentBlob {};

#endif  // STO_EXTENT_H
