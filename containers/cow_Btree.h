// An omi_Btree shared copy-on-write: copies share one tree, and a write to a shared tree first
// clones it for the writer.
//
//   cow_Btree<cow_String, unsigned> ids(0);
//   ids.InsertUnlessMember("mesh", 12);
//   cow_Btree<cow_String, unsigned> copy = ids;   // shares the tree
//   copy.InsertUnlessMember("load", 13);          // copy clones the tree first
//   for (cow_BtreeIterator<cow_String, unsigned> it(ids); !it.IsDone(); it.Next()) ...
//
// Order and lookups are those of omi_Btree. The use count of the shared tree is a plain
// integer: a tree and its copies, iterators included, belong to one thread at a time.
#ifndef COW_BTREE_H
#define COW_BTREE_H

#include "cow_COW.h"
#include "mem_Alloc.h"
#include "omi_Btree.h"

template <class K, class V>
class cow_Btree : public mem_AllocationOperators {
 public:
  using Tree = omi_Btree<K, V>;

  cow_Btree() : m_Tree(new Tree()) {}
  // `notFound` is what ConstFind gives for a missing key.
  explicit cow_Btree(const V& notFound) : m_Tree(new Tree(notFound)) {}

  int Size() const { return m_Tree.ConstGet().Size(); }
  // Adds the key with its value unless it is present; false, and no copy made, if it is.
  bool InsertUnlessMember(const K& key, const V& value) {
    return !IsMember(key) && m_Tree.Get().Insert(key, value);
  }
  const V& ConstFind(const K& key) const { return m_Tree.ConstGet().ConstFind(key); }
  bool IsMember(const K& key) const { return m_Tree.ConstGet().IsMember(key); }

  const Tree& ConstGetTree() const { return m_Tree.ConstGet(); }

 private:
  cow_COW<Tree> m_Tree;
};

// In-order walk of a cow_Btree from the lowest key. The iterator shares the tree it was
// given, so writes to the tree during the walk give the writer its own copy and leave the
// iterator on the old entries.
template <class K, class V>
class cow_BtreeIterator : public mem_AllocationOperators {
 public:
  // Starts at the lowest key.
  explicit cow_BtreeIterator(const cow_Btree<K, V>& tree)
      : m_Tree(tree), m_Walk(m_Tree.ConstGetTree()) {}

  void First() { m_Walk.First(); }
  void Next() { m_Walk.Next(); }
  bool IsDone() const { return m_Walk.IsDone(); }
  // The entry at the cursor; the walk must not be done.
  const K& CurrentKey() const { return m_Walk.CurrentKey(); }
  const V& CurrentValue() const { return m_Walk.CurrentValue(); }

 private:
  cow_Btree<K, V> m_Tree;
  omi_BtreeIterator<K, V> m_Walk;
};

#endif  // COW_BTREE_H
