// The value-semantics dictionary of the library: a digital search tree shared copy-on-write.
//
//   cow_Map<cow_String, int> sizes;
//   sizes.Insert("mesh", 12);
//   cow_Map<cow_String, int> copy = sizes;  // shares the root
//   copy.Get("mesh") = 13;                  // copy unshares the path to "mesh" only
//   if (sizes.IsMember("mesh")) use(sizes.ConstGet("mesh"));  // still 12
//
// Keys are never ordered against each other: each node holds one key, and a key's own bits
// choose the way down (cow_MapKey), equality alone ending the search. There is no
// rebalancing; the depth of a tree depends on how the keys' bits fall and on the history of
// insertions and removals. Walks that free or list a whole tree recurse along it.
//
// Preconditions: Get and ConstGet need a key that is present (test with IsMember first).
// Debug builds stop on an assertion otherwise; release builds end the process with abort().
//
// Threads: the use counts of the shared nodes are plain integers. A map and its copies,
// iterators included, belong to one thread at a time.
#ifndef COW_MAP_H
#define COW_MAP_H

#include <cassert>
#include <cstdint>
#include <cstdlib>
#include <type_traits>

#include "atr_StringBase.h"
#include "cow_COW.h"
#include "mem_Alloc.h"

// How a key chooses its way down a cow_Map: Bit(key, depth) gives the child to follow from a
// node at that depth (0 at the root), Equal ends the search.
template <class K, class Enable = void>
struct cow_MapKey;

// Integer keys: bit `depth mod 32`, low bit first.
template <class K>
struct cow_MapKey<K, std::enable_if_t<std::is_integral<K>::value>> {
  static bool Bit(K key, int depth) { return (static_cast<uint32_t>(key) >> (depth & 31)) & 1u; }
  static bool Equal(K a, K b) { return a == b; }
};

// String keys of length n: past depth n, 0. Otherwise the low bit of a byte taken from both
// ends in turn, byte 0, byte n-1, byte 1, byte n-2 ..., so that the ends of a name separate
// keys first. At depth n the byte read is inside the string or its terminator.
template <class K>
struct cow_MapKey<K, std::enable_if_t<std::is_base_of<atr_StringBase, K>::value>> {
  static bool Bit(const K& key, int depth) {
    const int length = key.Length();
    if (depth > length) return false;
    const int index = depth % 2 == 0 ? depth / 2 : length - depth / 2 - 1;
    return static_cast<unsigned char>(key.c_str()[index]) & 1u;
  }
  static bool Equal(const K& a, const K& b) { return a == b; }
};

// One key and its value, with the subtrees of the keys whose bit at this depth is 0 and 1.
template <class K, class V>
class cow_MapNode : public mem_AllocationOperators {
 public:
  using Holder = cow_COW<cow_MapNode, cow_Direct<cow_MapNode>>;

  cow_MapNode(const K& key, const V& value)
      : m_Key(key), m_Value(value), m_Zero(nullptr), m_One(nullptr) {}

  K m_Key;
  V m_Value;
  Holder m_Zero;
  Holder m_One;
};

template <class K, class V>
class cow_Map : public mem_AllocationOperators {
 public:
  using Node = cow_MapNode<K, V>;
  using Holder = typename Node::Holder;

  // Copies share the root; the first write to either unshares the path that it walks.
  cow_Map() : m_Root(nullptr), m_Count(0) {}

  int Count() const { return m_Count; }

  // Sets the value of the key, adding the key if it is absent. Always returns true.
  bool Insert(const K& key, const V& value);
  // The value of a present key, for writing: the path to it becomes this map's own.
  V& Get(const K& key);
  // The value of a present key, for reading.
  const V& ConstGet(const K& key) const {
    const Node* node = Find(key);
    if (node == nullptr) AbsentKey();
    return node->m_Value;
  }
  bool IsMember(const K& key) const { return Find(key) != nullptr; }
  // Removes the key; false when it was absent. The keys below the removed node move up the
  // one side first, each staying on a path that its bits agree with.
  bool Remove(const K& key);

  // The root holder, empty for an empty map: for walks over the nodes.
  const Holder& Root() const { return m_Root; }

 private:
  using Key = cow_MapKey<K>;

  const Node* Find(const K& key) const;
  // The holder of the key's node, or the empty holder where it would go; the nodes above it
  // become this map's own.
  Holder* Locate(const K& key);
  [[noreturn]] static void AbsentKey() {
    assert(false && "cow_Map: Get or ConstGet of a key that is not in the map");
    std::abort();
  }

  Holder m_Root;
  int m_Count;
};

template <class K, class V>
const typename cow_Map<K, V>::Node* cow_Map<K, V>::Find(const K& key) const {
  const Node* node = m_Root.GetPtr();
  for (int depth = 0; node != nullptr && !Key::Equal(node->m_Key, key); ++depth)
    node = (Key::Bit(key, depth) ? node->m_One : node->m_Zero).GetPtr();
  return node;
}

template <class K, class V>
typename cow_Map<K, V>::Holder* cow_Map<K, V>::Locate(const K& key) {
  Holder* holder = &m_Root;
  for (int depth = 0; holder->GetPtr() != nullptr; ++depth) {
    if (Key::Equal(holder->ConstGet().m_Key, key)) break;
    Node& node = holder->Get();
    holder = Key::Bit(key, depth) ? &node.m_One : &node.m_Zero;
  }
  return holder;
}

template <class K, class V>
bool cow_Map<K, V>::Insert(const K& key, const V& value) {
  Holder* holder = Locate(key);
  if (holder->GetPtr() != nullptr) {
    holder->Get().m_Value = value;
  } else {
    holder->cow_CountedHld<Node>::operator=(new Node(key, value));
    ++m_Count;
  }
  return true;
}

template <class K, class V>
V& cow_Map<K, V>::Get(const K& key) {
  Holder* holder = Locate(key);
  if (holder->GetPtr() == nullptr) AbsentKey();
  return holder->Get().m_Value;
}

template <class K, class V>
bool cow_Map<K, V>::Remove(const K& key) {
  if (!IsMember(key)) return false;
  Holder* holder = Locate(key);
  for (;;) {
    const Node& current = holder->ConstGet();
    const bool one = current.m_One.GetPtr() != nullptr;
    if (!one && current.m_Zero.GetPtr() == nullptr) break;
    Node& node = holder->Get();
    Holder& child = one ? node.m_One : node.m_Zero;
    node.m_Key = child.ConstGet().m_Key;
    node.m_Value = child.ConstGet().m_Value;
    holder = &child;
  }
  // The last node in hand has no child: a sole holder deletes it, a sharing one leaves it to
  // the others.
  holder->cow_CountedHld<Node>::operator=(nullptr);
  --m_Count;
  return true;
}

#endif  // COW_MAP_H
