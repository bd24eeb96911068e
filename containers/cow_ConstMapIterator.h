// Iterators over a cow_Map: cow_ConstMapIterator lists the entries in the tree's own order,
// cow_ConstMapSortedIt by ascending key.
//
//   cow_ConstMapIterator<cow_String, int> it(map);
//   for (it.First(); !it.IsDone(); it.Next()) print(it.CurrentKey(), it.CurrentValue());
//
// An iterator holds a copy of the map's root, taken at construction, so that writes to the
// map afterwards leave it on the old entries. First() lists the entries into a table: in
// pre-order, each node before its 0 subtree and then its 1 subtree. That order is fixed by
// the keys and by the history of insertions and removals, and is not sorted.
#ifndef COW_CONSTMAPITERATOR_H
#define COW_CONSTMAPITERATOR_H

#include <cstdlib>

#include "atr_String.h"
#include "cow_Map.h"
#include "mem_Alloc.h"

template <class K, class V>
class cow_ConstMapIterator : public mem_AllocationOperators {
 public:
  explicit cow_ConstMapIterator(const cow_Map<K, V>& map)
      : m_Root(map.Root()), m_Count(map.Count()) {}
  ~cow_ConstMapIterator() { mem_Free(m_Table); }
  cow_ConstMapIterator(const cow_ConstMapIterator&) = delete;
  cow_ConstMapIterator& operator=(const cow_ConstMapIterator&) = delete;

  // Lists the entries and goes to the first. Needed before the first read.
  void First() { List(nullptr); }
  void Next() {
    if (!IsDone()) ++m_Cursor;
  }
  bool IsDone() const { return m_Table == nullptr || m_Table[m_Cursor] == nullptr; }
  // The entry at the cursor; the iteration must not be done.
  const K& CurrentKey() const { return m_Table[m_Cursor]->m_Key; }
  const V& CurrentValue() const { return m_Table[m_Cursor]->m_Value; }

 protected:
  using Node = cow_MapNode<K, V>;

  // Lists the entries, sorted with `compare` unless it is null, and goes to the first.
  void List(int (*compare)(const void*, const void*)) {
    mem_Free(m_Table);
    m_Table = nullptr;  // so that a failed allocation leaves no freed table behind
    m_Table = static_cast<const Node**>(mem_OperatorNewThrow(sizeof(Node*) * (m_Count + 1u)));
    const Node** end = m_Table;
    Walk(m_Root.GetPtr(), end);
    *end = nullptr;
    if (compare != nullptr) std::qsort(m_Table, m_Count, sizeof(Node*), compare);
    m_Cursor = 0;
  }

 private:
  // Pre-order: the node, its 0 subtree, then its 1 subtree.
  static void Walk(const Node* node, const Node**& out) {
    for (; node != nullptr; node = node->m_One.GetPtr()) {
      *out++ = node;
      Walk(node->m_Zero.GetPtr(), out);
    }
  }

  typename Node::Holder m_Root;
  int m_Count;
  int m_Cursor = 0;
  const Node** m_Table = nullptr;
};

template <class K, class V>
class cow_ConstMapSortedIt : public cow_ConstMapIterator<K, V> {
 public:
  using cow_ConstMapIterator<K, V>::cow_ConstMapIterator;

  // Lists the entries by ascending key and goes to the first.
  void First() { this->List(AscSortCmp); }

  // Orders two table entries (pointers to nodes) by key, ascending, for qsort.
  static int AscSortCmp(const void* a, const void* b) {
    const K& first = (*static_cast<const cow_MapNode<K, V>* const*>(a))->m_Key;
    const K& second = (*static_cast<const cow_MapNode<K, V>* const*>(b))->m_Key;
    return first < second ? -1 : second < first ? 1 : 0;
  }
};

#endif  // COW_CONSTMAPITERATOR_H
