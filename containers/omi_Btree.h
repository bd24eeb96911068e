// The library's ordered dictionary: in spite of its name a height-balanced binary search tree,
// one key and two children per node, walked in key order by omi_BtreeIterator.
//
//   omi_Btree<int, int> sizes(-1);          // -1 is what ConstFind gives for a missing key
//   sizes.Insert(7, 70);                    // false, and no change, if 7 is present
//   int size = sizes.ConstFind(7);
//   for (omi_BtreeIterator<int, int> it(sizes); !it.IsDone(); it.Next()) use(it.CurrentKey());
//
// Balance. After an insertion or a removal each node on the path is rebalanced by one single
// rotation when its children's heights differ by more than one, a missing child weighing the
// same as a leaf. There is no double rotation: the tree stays roughly, not strictly, balanced,
// and only its search order is an invariant. This is intended; don't "fix" it into a full AVL.
//
// Key order (omi_BtreeKey): integers by the sign of their 32-bit difference, so that keys more
// than 2^31 apart order wrongly (accepted); strings in natural order or bytewise, as
// atr_getNaturalOrder() says at each comparison, so a tree must not outlive a change of it.
// Other key types supply a specialization of omi_BtreeKey.
//
// Copies clone every node. Insert, Remove, copying and destruction recurse to the tree's
// height. Nodes come from the memory layer, whose failure raises and leaves the tree as it was.
// Threads: a tree belongs to one thread at a time.
#ifndef OMI_BTREE_H
#define OMI_BTREE_H

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <type_traits>

#include "atr_StringBase.h"
#include "mem_Alloc.h"
#include "strnatcmp.h"

// Compare(sought, node): negative when `sought` lies left of `node`, 0 when they are equal,
// positive when it lies right.
template <class K, class Enable = void>
struct omi_BtreeKey;

template <class K>
struct omi_BtreeKey<K, std::enable_if_t<std::is_integral<K>::value>> {
  static int Compare(K sought, K node) {
    return static_cast<int32_t>(static_cast<uint32_t>(sought) - static_cast<uint32_t>(node));
  }
};

template <class K>
struct omi_BtreeKey<K, std::enable_if_t<std::is_base_of<atr_StringBase, K>::value>> {
  static int Compare(const K& sought, const K& node) {
    if (atr_getNaturalOrder()) return strnatcmp(sought.c_str(), node.c_str());
    return sought.Compare(node.c_str(), node.Length());
  }
};

template <class K, class V>
class omi_BtreeNode : public mem_AllocationOperators {
 public:
  omi_BtreeNode(const K& key, const V& value) : m_Value(value), m_Key(key) {}

  // 0 for a node with no children, else one more than the higher child.
  void UpdateHeight() { m_Height = 1 + std::max(HeightOrMinus1(m_Left), HeightOrMinus1(m_Right)); }
  // The height used for balancing: a missing child weighs as much as a leaf.
  static int BalanceHeight(const omi_BtreeNode* node) { return node ? node->m_Height : 0; }

  V m_Value;
  K m_Key;
  omi_BtreeNode* m_Left = nullptr;
  omi_BtreeNode* m_Right = nullptr;
  int m_Height = 0;

 private:
  static int HeightOrMinus1(const omi_BtreeNode* node) { return node ? node->m_Height : -1; }
};

template <class K, class V>
class omi_Btree : public mem_AllocationOperators {
 public:
  using Node = omi_BtreeNode<K, V>;

  // `notFound` is what ConstFind gives for a missing key, and the value of the stand-in
  // parent that a removal uses.
  omi_Btree() : m_NotFound() {}
  explicit omi_Btree(const V& notFound) : m_NotFound(notFound) {}
  omi_Btree(const omi_Btree& other)
      : m_Root(Clone(other.m_Root)), m_Size(other.m_Size), m_NotFound(other.m_NotFound) {}
  // Takes the other's nodes and leaves it empty.
  omi_Btree(omi_Btree&& other)
      : m_Root(other.m_Root), m_Size(other.m_Size), m_NotFound(other.m_NotFound) {
    other.m_Root = nullptr;
    other.m_Size = 0;
  }
  omi_Btree& operator=(const omi_Btree& other) {
    if (this == &other) return *this;
    Node* root = Clone(other.m_Root);
    Destroy(m_Root);
    m_Root = root;
    m_Size = other.m_Size;
    m_NotFound = other.m_NotFound;
    return *this;
  }
  ~omi_Btree() { Destroy(m_Root); }

  int Size() const { return m_Size; }
  const Node* Root() const { return m_Root; }

  // Adds the key with its value; false, with the old value kept, when the key is present.
  bool Insert(const K& key, const V& value);
  // Removes the key; false when it is absent.
  bool Remove(const K& key);
  // The value of the key, or the not-found value.
  const V& ConstFind(const K& key) const {
    const Node* node = Find(key);
    return node ? node->m_Value : m_NotFound;
  }
  bool IsMember(const K& key) const { return Find(key) != nullptr; }

 private:
  using Key = omi_BtreeKey<K>;

  const Node* Find(const K& key) const {
    const Node* node = m_Root;
    while (node != nullptr) {
      const int order = Key::Compare(key, node->m_Key);
      if (order == 0) break;
      node = order < 0 ? node->m_Left : node->m_Right;
    }
    return node;
  }

  static bool InsertBelow(Node* node, const K& key, const V& value);
  static bool RemoveBelow(Node* parent, Node* node, const K& key);
  static Node* Replacement(Node* node);
  static void RemoveNode(Node* parent, Node* node, Node* replacement);
  static Node* Rebalance(Node* node);
  static Node* Clone(const Node* node);
  static void Destroy(Node* node);

  Node* m_Root = nullptr;
  int m_Size = 0;
  V m_NotFound;
};

// In-order walk, from the lowest key. The iterator keeps the path to the current node, so the
// tree must not change while it walks.
template <class K, class V>
class omi_BtreeIterator : public mem_AllocationOperators {
 public:
  using Node = omi_BtreeNode<K, V>;

  // Starts at the lowest key.
  explicit omi_BtreeIterator(const omi_Btree<K, V>& tree) : m_Tree(tree) { First(); }
  ~omi_BtreeIterator() { mem_Free(m_Stack); }
  omi_BtreeIterator(const omi_BtreeIterator&) = delete;
  omi_BtreeIterator& operator=(const omi_BtreeIterator&) = delete;

  void First() {
    m_Count = 0;
    Push(m_Tree.Root());
  }
  void Next() {
    if (IsDone()) return;
    const Node* node = m_Stack[--m_Count];
    Push(node->m_Right);
  }
  bool IsDone() const { return m_Count == 0; }
  // The entry at the cursor; the walk must not be done.
  const K& CurrentKey() const { return m_Stack[m_Count - 1]->m_Key; }
  const V& CurrentValue() const { return m_Stack[m_Count - 1]->m_Value; }

 private:
  // Pushes `node` and its chain of left children.
  void Push(const Node* node) {
    for (; node != nullptr; node = node->m_Left) {
      if (m_Count == m_Capacity) Grow();
      m_Stack[m_Count++] = node;
    }
  }
  // Doubles the stack, from 8 entries.
  void Grow() {
    const int capacity = m_Capacity ? 2 * m_Capacity : 8;
    auto stack = static_cast<const Node**>(mem_OperatorNewThrow(sizeof(Node*) * capacity));
    if (m_Count) std::memcpy(stack, m_Stack, sizeof(Node*) * m_Count);
    mem_Free(m_Stack);
    m_Stack = stack;
    m_Capacity = capacity;
  }

  const omi_Btree<K, V>& m_Tree;
  const Node** m_Stack = nullptr;
  int m_Count = 0;
  int m_Capacity = 0;
};

template <class K, class V>
bool omi_Btree<K, V>::Insert(const K& key, const V& value) {
  if (m_Root == nullptr) {
    m_Root = new Node(key, value);
    m_Size = 1;
    return true;
  }
  if (!InsertBelow(m_Root, key, value)) return false;
  ++m_Size;
  m_Root = Rebalance(m_Root);
  return true;
}

template <class K, class V>
bool omi_Btree<K, V>::InsertBelow(Node* node, const K& key, const V& value) {
  const int order = Key::Compare(key, node->m_Key);
  if (order == 0) return false;
  Node*& link = order < 0 ? node->m_Left : node->m_Right;
  if (link == nullptr) {
    link = new Node(key, value);
  } else {
    if (!InsertBelow(link, key, value)) return false;
    link = Rebalance(link);
  }
  node->UpdateHeight();
  return true;
}

// A stand-in parent holds the root at its left link, so that removing the root swaps its
// replacement in like any other node's.
template <class K, class V>
bool omi_Btree<K, V>::Remove(const K& key) {
  if (m_Root == nullptr) return false;
  Node parent(K(), m_NotFound);
  parent.m_Left = m_Root;
  const bool removed = RemoveBelow(&parent, m_Root, key);
  if (removed) {
    --m_Size;
    m_Root = parent.m_Left;
    if (m_Root) m_Root = Rebalance(m_Root);
  }
  parent.m_Left = nullptr;
  return removed;
}

template <class K, class V>
bool omi_Btree<K, V>::RemoveBelow(Node* parent, Node* node, const K& key) {
  const int order = Key::Compare(key, node->m_Key);
  if (order == 0) {
    RemoveNode(parent, node, Replacement(node));
    return true;
  }
  Node*& link = order < 0 ? node->m_Left : node->m_Right;
  if (link == nullptr || !RemoveBelow(node, link, key)) return false;
  if (link != nullptr) {
    link = Rebalance(link);
    node->UpdateHeight();
  }
  return true;
}

// What takes the place of a removed node: its only child, or else the leftmost node of its
// right subtree, which takes over both of the node's subtrees. Only the heights of the
// successor and of its old parent are recomputed, as the design wants.
template <class K, class V>
typename omi_Btree<K, V>::Node* omi_Btree<K, V>::Replacement(Node* node) {
  if (node->m_Right == nullptr) return node->m_Left;
  if (node->m_Left == nullptr) return node->m_Right;
  Node* successor = node->m_Right;
  if (successor->m_Left != nullptr) {
    Node* successorParent = node->m_Right;
    for (successor = successorParent->m_Left; successor->m_Left != nullptr;
         successor = successor->m_Left)
      successorParent = successor;
    successorParent->m_Left = successor->m_Right;
    successorParent->UpdateHeight();
    successor->m_Right = node->m_Right;
  }
  successor->m_Left = node->m_Left;
  successor->UpdateHeight();
  return successor;
}

template <class K, class V>
void omi_Btree<K, V>::RemoveNode(Node* parent, Node* node, Node* replacement) {
  node->m_Left = node->m_Right = nullptr;
  (parent->m_Right != node ? parent->m_Left : parent->m_Right) = replacement;
  delete node;
  parent->UpdateHeight();
}

// One single rotation when the children's heights differ by more than one; returns the
// subtree's root.
template <class K, class V>
typename omi_Btree<K, V>::Node* omi_Btree<K, V>::Rebalance(Node* node) {
  const int skew = Node::BalanceHeight(node->m_Right) - Node::BalanceHeight(node->m_Left);
  Node* root;
  if (skew > 1) {
    root = node->m_Right;
    node->m_Right = root->m_Left;
    root->m_Left = node;
  } else if (skew < -1) {
    root = node->m_Left;
    node->m_Left = root->m_Right;
    root->m_Right = node;
  } else {
    return node;
  }
  node->UpdateHeight();
  root->UpdateHeight();
  return root;
}

template <class K, class V>
typename omi_Btree<K, V>::Node* omi_Btree<K, V>::Clone(const Node* node) {
  if (node == nullptr) return nullptr;
  Node* copy = new Node(node->m_Key, node->m_Value);
  copy->m_Height = node->m_Height;
  try {
    copy->m_Left = Clone(node->m_Left);
    copy->m_Right = Clone(node->m_Right);
  } catch (...) {
    Destroy(copy);
    throw;
  }
  return copy;
}

template <class K, class V>
void omi_Btree<K, V>::Destroy(Node* node) {
  if (node == nullptr) return;
  Destroy(node->m_Left);
  Destroy(node->m_Right);
  delete node;
}

#endif  // OMI_BTREE_H
