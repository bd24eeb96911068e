// An in-memory ordered map from integer keys to values: a binary crit-bit tree (a PATRICIA
// tree), in which each internal node tests one bit of the key and a path holds only the bits
// at which keys differ. The persistent arrays index the blocks they hold in memory with it;
// it is not itself stored anywhere.
//
//   cls_PTrie<int, cls_Uid, 1> uids;
//   uids.Insert(4096, uid);
//   if (const cls_Uid* found = uids.ConstGetPtr(4096)) ...
//   for (cls_PTrieIter<int, cls_Uid, 1> it(uids); !it.IsDone(); it.Next()) ...
//   // First() is done by the iterator's constructor; keys come in unsigned order
//
// Keys are compared as bit strings, so they order as unsigned numbers: negative keys come
// last. A lookup costs one bit test a level, at most 32 levels, and one virtual call at each
// end of the walk, and allocates nothing; so does iteration, which keeps no stack: each step
// walks down the path of the current key again. Values are copied into the leaves. The nodes live
// in cells that the trie cuts from blocks of its own (cls_PTrieCells) and gives back when it goes.
//
// The trie keeps a working copy of the key of the current operation, which the nodes read
// their bits from, so that even a lookup writes to the trie: a trie is for one thread at a
// time, for reading too. Removing the current key during an iteration is not supported.
// There are no errors: a missing key gives null, and removing one does nothing.
#ifndef CLS_PTRIE_H
#define CLS_PTRIE_H

#include <cstddef>
#include <cstdint>
#include <new>
#include <type_traits>

#include "VRKBasExport.h"
#include "cls_Uid.h"
#include "mem_Alloc.h"

// A key as N 32-bit words, 0 by default. Bit b is bit b % 32 of word b / 32, counted from
// the least significant.
template <class K, int N>
class cls_PTrieKey {
 public:
  static_assert(std::is_integral<K>::value && sizeof(K) <= 4 * N, "an integer key of N words");
  static constexpr int kBits = 32 * N;

  cls_PTrieKey() : m_Words{} {}
  explicit cls_PTrieKey(K key) : m_Words{} {
    const uint64_t bits = static_cast<uint64_t>(key);
    for (int i = 0; i < N && i < 2; ++i)
      m_Words[i] = static_cast<uint32_t>(bits >> (32 * i));
  }

  // 0 or 1.
  int Bit(int b) const { return (m_Words[b >> 5] >> (b & 31)) & 1u; }
  // The highest bit at or below `startBit` at which the keys differ; -1 when none differs or
  // `startBit` is below 0.
  int FirstDifference(const cls_PTrieKey& other, int startBit) const {
    if (startBit < 0) return -1;
    uint32_t mask = (startBit & 31) == 31 ? ~0u : (2u << (startBit & 31)) - 1;
    for (int word = startBit >> 5; word >= 0; --word, mask = ~0u) {
      const uint32_t differ = (m_Words[word] ^ other.m_Words[word]) & mask;
      if (differ != 0) return word * 32 + 31 - __builtin_clz(differ);
    }
    return -1;
  }
  bool operator==(const cls_PTrieKey& other) const {
    for (int i = 0; i < N; ++i) {
      if (m_Words[i] != other.m_Words[i]) return false;
    }
    return true;
  }
  K Value() const {
    uint64_t bits = 0;
    for (int i = N < 2 ? N - 1 : 1; i >= 0; --i)
      bits = bits << 32 | m_Words[i];
    return static_cast<K>(bits);
  }

 private:
  uint32_t m_Words[N];
};

// The storage of a trie's nodes of one kind: cells of one size, cut from blocks that the trie
// takes from the memory layer as it grows (4 cells, then twice as many each time, up to 4096),
// and reused through a free list; the blocks go back with the trie. Cells are a power of two
// in size and aligned to it, so that no node straddles two cache lines. Keeping the nodes
// dense and free of per-allocation headers halves the memory that a look-up walks through.
template <size_t Size, size_t Align>
class cls_PTrieCells {
 public:
  cls_PTrieCells() = default;
  cls_PTrieCells(const cls_PTrieCells&) = delete;
  cls_PTrieCells& operator=(const cls_PTrieCells&) = delete;
  ~cls_PTrieCells() {
    while (m_Block != nullptr) {
      Block* const previous = m_Block->previous;
      mem_Free(m_Block);
      m_Block = previous;
    }
  }

  void* Take() {
    if (m_Free != nullptr) {
      FreeCell* const cell = m_Free;
      m_Free = cell->next;
      return cell;
    }
    if (m_Left == 0) AddBlock();
    void* const cell = m_Next;
    m_Next += kStride;
    --m_Left;
    return cell;
  }
  // Takes back a cell whose node is destroyed.
  void Give(void* cell) { m_Free = new (cell) FreeCell{m_Free}; }

 private:
  static constexpr size_t Stride() {
    size_t stride = sizeof(void*);
    while (stride < Size || stride < Align)
      stride *= 2;
    return stride;
  }
  static constexpr size_t kStride = Stride();

  struct FreeCell {
    FreeCell* next;
  };
  // A block is this header, room to align, and its cells.
  struct Block {
    Block* previous;
  };

  void AddBlock() {
    const size_t capacity = m_Block == nullptr ? 4 : (m_Capacity < 4096 ? 2 * m_Capacity : 4096);
    void* const raw = mem_OperatorNewThrow(sizeof(Block) + kStride + capacity * kStride);
    Block* const block = static_cast<Block*>(raw);
    block->previous = m_Block;
    m_Block = block;
    m_Capacity = capacity;
    m_Left = capacity;
    const uintptr_t first = reinterpret_cast<uintptr_t>(block + 1) + kStride - 1;
    m_Next = reinterpret_cast<unsigned char*>(first & ~uintptr_t{kStride - 1});
  }

  Block* m_Block = nullptr;
  FreeCell* m_Free = nullptr;
  unsigned char* m_Next = nullptr;
  size_t m_Left = 0;
  size_t m_Capacity = 0;
};

template <class K, class V, int N>
class cls_PTrie;
template <class K, class V, int N>
class cls_PTrieIter;
template <class K, class V, int N>
class cls_PTrieLeafNode;

template <class K, class V, int N>
class cls_PTrieNode : public mem_AllocationOperators {
 public:
  using Trie = cls_PTrie<K, V, N>;
  using Iter = cls_PTrieIter<K, V, N>;

  // `bit`: the bit an internal node tests, -1 for a leaf.
  explicit cls_PTrieNode(int bit) : m_Bit(bit) {}
  virtual ~cls_PTrieNode() {}
  // The value of the trie's working key in this subtree, or null.
  virtual const V* Locate(const Trie& trie, const K& key) const = 0;
  // Stores the working key's value in this subtree. Returns Trie::kDone when it is stored,
  // or else the bit at which the new key must branch off above.
  virtual int Insert(Trie& trie, const K& key, const V& value) = 0;
  // Removes the working key from this subtree; returns what takes this node's place: itself,
  // another node, or null.
  virtual cls_PTrieNode* Remove(Trie& trie, const K& key) = 0;
  // The next leaf after the iterator's key in this subtree: 1 when the iterator got one.
  virtual int Next(Iter& iter) const = 0;

  // The bit that an internal node tests; -1 for a leaf. Kept in the base so that a look-up
  // can walk down the internal nodes in a loop, without a virtual call a level: a chain of
  // calls, each through a pointer just loaded, took about twice as long.
  const int m_Bit;
};

template <class K, class V, int N>
class cls_PTrieInternalNode : public cls_PTrieNode<K, V, N> {
 public:
  using Node = cls_PTrieNode<K, V, N>;
  using Node::m_Bit;
  using typename Node::Iter;
  using typename Node::Trie;

  // A node on `bit` over `zero` and `one`, which it owns.
  cls_PTrieInternalNode(int bit, Node* zero, Node* one) : Node(bit), m_Child{zero, one} {}
  // Destroys the children it still holds; their cells go back with the trie's.
  ~cls_PTrieInternalNode() override {
    for (Node* child : m_Child) {
      if (child != nullptr) child->~Node();
    }
  }

  // Walks down the internal nodes below to the leaf that the working key's bits lead to, and
  // leaves the comparison to it.
  const V* Locate(const Trie& trie, const K& key) const override {
    const Node* node = this;
    do {
      node = static_cast<const cls_PTrieInternalNode*>(node)->m_Child[trie.m_Key.Bit(node->m_Bit)];
    } while (node->m_Bit >= 0);
    return node->Locate(trie, key);
  }

  int Insert(Trie& trie, const K& key, const V& value) override {
    Node*& child = m_Child[trie.m_Key.Bit(m_Bit)];
    const int branch = child->Insert(trie, key, value);
    if (branch > m_Bit) return branch;
    child = trie.Branch(branch, child, value);
    return Trie::kDone;
  }

  Node* Remove(Trie& trie, const K& key) override {
    const int side = trie.m_Key.Bit(m_Bit);
    Node* const child = m_Child[side];
    Node* const replacement = child->Remove(trie, key);
    if (replacement == child) return this;
    trie.Discard(child, replacement == nullptr);
    m_Child[side] = replacement;
    if (replacement != nullptr) return this;
    // One child is left: it takes this node's place, and this node must not destroy it.
    Node* const other = m_Child[1 - side];
    m_Child[1 - side] = nullptr;
    return other;
  }

  int Next(Iter& iter) const override {
    if (iter.m_Key.Bit(m_Bit) == 0 && m_Child[0]->Next(iter)) return 1;
    return m_Child[1]->Next(iter);
  }

 private:
  Node* m_Child[2];  // taken when the key's bit is 0 and 1
};

template <class K, class V, int N>
class cls_PTrieLeafNode : public cls_PTrieNode<K, V, N> {
 public:
  using Node = cls_PTrieNode<K, V, N>;
  using typename Node::Iter;
  using typename Node::Trie;
  using Key = cls_PTrieKey<K, N>;

  cls_PTrieLeafNode(const Key& key, const V& value) : Node(-1), m_Key(key), m_Value(value) {}

  const V* Locate(const Trie& trie, const K&) const override {
    return m_Key == trie.m_Key ? &m_Value : nullptr;
  }

  int Insert(Trie& trie, const K&, const V& value) override {
    if (!(m_Key == trie.m_Key)) return m_Key.FirstDifference(trie.m_Key, Trie::kDone - 1);
    m_Value = value;
    trie.SetItem(this);
    return Trie::kDone;
  }

  Node* Remove(Trie& trie, const K&) override {
    if (!(m_Key == trie.m_Key)) return this;
    trie.DecSize();
    return nullptr;
  }

  int Next(Iter& iter) const override {
    if (iter.m_Leaf == nullptr) {
      iter.m_Leaf = this;
      iter.m_Key = m_Key;
      return 1;
    }
    iter.m_Leaf = nullptr;
    iter.m_Key = Key();
    return 0;
  }

 private:
  friend class cls_PTrie<K, V, N>;
  friend class cls_PTrieIter<K, V, N>;

  Key m_Key;
  V m_Value;
};

template <class K, class V, int N>
class cls_PTrie : public mem_AllocationOperators {
 public:
  using Key = cls_PTrieKey<K, N>;
  using Node = cls_PTrieNode<K, V, N>;
  using Leaf = cls_PTrieLeafNode<K, V, N>;
  using Internal = cls_PTrieInternalNode<K, V, N>;
  // Exceeds every bit number: what a node's Insert returns when the value is stored.
  static constexpr int kDone = Key::kBits;

  cls_PTrie() = default;
  cls_PTrie(const cls_PTrie&) = delete;
  cls_PTrie& operator=(const cls_PTrie&) = delete;
  ~cls_PTrie() {
    if (m_Root != nullptr) m_Root->~Node();
  }

  // Stores a copy of `value` under `key`, replacing the value of a key already there; returns
  // the stored value.
  V& Insert(const K& key, const V& value) {
    m_Key = Key(key);
    if (m_Root == nullptr) {
      m_Root = NewLeaf(value);
    } else {
      const int branch = m_Root->Insert(*this, key, value);
      if (static_cast<unsigned>(branch) < static_cast<unsigned>(kDone))
        m_Root = Branch(branch, m_Root, value);
    }
    return m_Item->m_Value;
  }

  // Removes the key, if it is there.
  void Remove(const K& key) {
    m_Key = Key(key);
    if (m_Root == nullptr) return;
    Node* const replacement = m_Root->Remove(*this, key);
    if (replacement == m_Root) return;
    Discard(m_Root, replacement == nullptr);
    m_Root = replacement;
  }

  // The value of a key that is there. The trie must not be empty, and a missing key is
  // undefined: use ConstGetPtr when unsure.
  const V& ConstGet(const K& key) const {
    m_Key = Key(key);
    return *m_Root->Locate(*this, key);
  }
  // The value of the key, null when it is not there.
  const V* ConstGetPtr(const K& key) const {
    m_Key = Key(key);
    return m_Root ? m_Root->Locate(*this, key) : nullptr;
  }
  // 1 when the key is there, 0 otherwise.
  int IsMember(const K& key) const { return ConstGetPtr(key) != nullptr; }
  // The number of keys.
  int Size() const { return m_Size; }

 private:
  friend Internal;
  friend Leaf;
  friend class cls_PTrieIter<K, V, N>;

  void SetItem(Leaf* leaf) { m_Item = leaf; }
  void IncSize() { ++m_Size; }
  void DecSize() { --m_Size; }
  void Next(cls_PTrieIter<K, V, N>& iter) const {
    if (m_Root != nullptr) m_Root->Next(iter);
  }

  // A new leaf for the working key, which becomes the item.
  Leaf* NewLeaf(const V& value) {
    void* const cell = m_Leaves.Take();
    Leaf* leaf;
    try {
      leaf = new (cell) Leaf(m_Key, value);
    } catch (...) {
      m_Leaves.Give(cell);
      throw;
    }
    SetItem(leaf);
    IncSize();
    return leaf;
  }
  // A node on `bit` over `old` and a new leaf for the working key, on the side of the
  // key's bit.
  Internal* Branch(int bit, Node* old, const V& value) {
    void* const cell = m_Internals.Take();
    Leaf* leaf;
    try {
      leaf = NewLeaf(value);
    } catch (...) {
      m_Internals.Give(cell);
      throw;
    }
    return m_Key.Bit(bit) ? new (cell) Internal(bit, old, leaf)
                          : new (cell) Internal(bit, leaf, old);
  }
  // Destroys a node that holds no children, a leaf or an internal node, and gives back its
  // cell. A removed leaf leaves nothing in its place, a collapsed internal node its child.
  void Discard(Node* node, bool leaf) {
    node->~Node();
    if (leaf) {
      m_Leaves.Give(node);
    } else {
      m_Internals.Give(node);
    }
  }

  int m_Size = 0;
  mutable Key m_Key;  // the key of the current operation, which the nodes read
  Node* m_Root = nullptr;
  Leaf* m_Item = nullptr;  // the leaf of the latest Insert
  cls_PTrieCells<sizeof(Leaf), alignof(Leaf)> m_Leaves;
  cls_PTrieCells<sizeof(Internal), alignof(Internal)> m_Internals;
};

// Visits the keys of a trie in ascending unsigned order. The constructor goes to the first.
template <class K, class V, int N>
class cls_PTrieIter : public mem_AllocationOperators {
 public:
  explicit cls_PTrieIter(const cls_PTrie<K, V, N>& trie) : m_Trie(trie) { First(); }

  void First() {
    m_Key = cls_PTrieKey<K, N>();
    m_Leaf = nullptr;
    m_Trie.Next(*this);
  }
  void Next() { m_Trie.Next(*this); }
  bool IsDone() const { return m_Leaf == nullptr; }
  // The current entry; the iteration must not be done.
  K CurrentKey() const { return m_Key.Value(); }
  const V& CurrentValue() const { return m_Leaf->m_Value; }

 private:
  friend class cls_PTrieInternalNode<K, V, N>;
  friend class cls_PTrieLeafNode<K, V, N>;

  cls_PTrieKey<K, N> m_Key;
  const cls_PTrieLeafNode<K, V, N>* m_Leaf = nullptr;
  const cls_PTrie<K, V, N>& m_Trie;
};

// The instantiations the library holds: the arrays' block indexes (cls_ArrayPrim.h) and a
// trie of identities.
#define CLS_PTRIE_EXTERN(K, V, N)                                     \
  extern template class VRKLNU_EXPORT cls_PTrieNode<K, V, N>;         \
  extern template class VRKLNU_EXPORT cls_PTrieInternalNode<K, V, N>; \
  extern template class VRKLNU_EXPORT cls_PTrieLeafNode<K, V, N>;     \
  extern template class VRKLNU_EXPORT cls_PTrie<K, V, N>;             \
  extern template class VRKLNU_EXPORT cls_PTrieIter<K, V, N>
CLS_PTRIE_EXTERN(int, cls_Uid, 1);

#define CLS_PTRIE_INSTANTIATE(K, V, N)           \
  template class cls_PTrieNode<K, V, N>;         \
  template class cls_PTrieInternalNode<K, V, N>; \
  template class cls_PTrieLeafNode<K, V, N>;     \
  template class cls_PTrie<K, V, N>;             \
  template class cls_PTrieIter<K, V, N>

#endif  // CLS_PTRIE_H
