// The library's sequence: an indexed list in fixed-size blocks that grows at both ends, shared
// copy-on-write at two levels, the block table and each block.
//
//   cow_List<cow_String> names;
//   names.Append("b");
//   names.Prepend("a");
//   cow_List<cow_String> copy = names;  // constant time: shares the table
//   copy.Get(1) = "c";                  // copy takes its own table and that one block
//
// Copying costs no allocation. A write to a shared list copies the table and the blocks it
// touches; blocks it doesn't touch stay shared. Elements live in raw block storage and are
// constructed and destroyed in place, each exactly once.
//
// Block size: 16 elements by default; a list made with room for N >= 256 elements uses blocks
// of N/8 to N/16 elements (from the floor of log2 N). The block size stays until Resize(0).
//
// Bad index: every checked access (ConstGet, operator[], Get, InsertIndex, RemoveIndex, Pop)
// with an index outside the list calls RaiseOutOfRange, which ends the process with abort():
// no exception is raised and no message is written. Resize with a negative size does the
// same. Allocation failure raises through the memory layer (mem_OutOfMemoryHandler) and
// leaves the list's contents as they were.
//
// Element types: copy-constructible, copy-assignable and equality-comparable; copies,
// assignments and destructors should not throw, or a throwing one may leave elements moved.
//
// Threads: the table and block use counts are plain integers. A list and all its copies,
// iterators included, belong to one thread at a time.
#ifndef COW_LIST_H
#define COW_LIST_H

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <new>
#include <utility>

#include "cow_ListBlock.h"
#include "mem_Alloc.h"

// Tag of the constructor that makes room for a number of elements.
enum cow_ListConstruct { cow_ListPresize };

template <class T>
class cow_ListIter;

template <class T>
class cow_List : public mem_AllocationOperators {
 public:
  cow_List() { Initialize(0); }
  // Empty, with room for `size` elements; the size also chooses the block size.
  cow_List(cow_ListConstruct, int size) { Initialize(size); }
  // Shares the other list's table: constant time, no allocation.
  cow_List(const cow_List& other)
      : m_Count(other.m_Count),
        m_TableLength(other.m_TableLength),
        m_Shift(other.m_Shift),
        m_Head(other.m_Head),
        m_TableCount(other.m_TableCount),
        m_Table(other.m_Table) {
    ++*m_TableCount;
  }
  // Drops this list's share, as the destructor, and shares the other's table.
  cow_List& operator=(const cow_List& other) {
    if (this != &other) {
      cow_List shared(other);
      Swap(shared);
    }
    return *this;
  }
  // The last sharer of the table destroys the elements and frees the blocks and the table.
  ~cow_List() {
    if (*m_TableCount > 1) {
      --*m_TableCount;
      return;
    }
    Resize(0);
    mem_Free(m_TableCount);
  }

  int Count() const { return m_Count; }

  // Checked reads.
  const T& ConstGet(int index) const {
    CheckIndex(index);
    return UncheckedConstGet(index);
  }
  const T& operator[](int index) const { return ConstGet(index); }
  // Checked write access: the table and the element's block become this list's own first.
  T& Get(int index) {
    CheckIndex(index);
    return UncheckedGet(index);
  }
  // The same without the index check; the index must be inside the list.
  const T& UncheckedConstGet(int index) const { return *Slot(m_Head + index); }
  T& UncheckedGet(int index) {
    if (T* slot = WritableSlot(m_Head + index)) return *slot;
    Detach();
    MakePrivate(index, index);
    return *Slot(m_Head + index);
  }

  void Append(const T& value) {
    const int position = m_Head + m_Count;
    T* slot = WritableSlot(position);
    if (slot == nullptr || TableLengthFor(position + 1) != m_TableLength) {
      Resize(m_Count + 1);
      MakePrivate(m_Count, m_Count);
      slot = Slot(position);
    }
    Construct(slot, value);
    ++m_Count;
  }
  void Prepend(const T& value) {
    T* slot = m_Head == 0 ? nullptr : WritableSlot(m_Head - 1);
    if (slot == nullptr) {
      MakeFrontRoom();
      MakePrivate(-1, -1);
      slot = Slot(m_Head - 1);
    }
    Construct(slot, value);
    --m_Head;
    ++m_Count;
  }
  // Inserts before `index` (Count() appends), moving the shorter side of the list.
  void InsertIndex(int index, const T& value);
  // Removes the element, moving the shorter side of the list.
  void RemoveIndex(int index);
  // A copy of the last element, which is removed.
  T Pop() {
    CheckIndex(m_Count - 1);
    T last(UncheckedConstGet(m_Count - 1));
    RemoveIndex(m_Count - 1);
    return last;
  }

  // Below the count, drops the elements from `size` on. Above it, only makes room: the count
  // stays, and the callers that add elements raise it. Resize(0) also resets the block size.
  void Resize(int size);
  // Grows the list to `size` elements with copies of `value`; never shrinks it.
  void Fill(int size, const T& value);
  // The list becomes a copy of the `size` elements at `values`.
  void SetFromArray(const T* values, int size);
  // Appends all elements of `other`, which may be this list.
  void Concatenate(const cow_List& other);
  // The elements [from, to), with `from` raised to 0 and `to` limited to the count; an
  // inverted range gives an empty list.
  cow_List Slice(int from, int to) const;
  // A new array of the elements from array new, which the caller releases with delete[];
  // `count` is set to the number of elements.
  T* GetCArray(int& count) const;

  // Same count, and each pair of elements the same object or equal.
  bool IsEqual(const cow_List& other) const;
  bool operator==(const cow_List& other) const { return IsEqual(other); }
  bool operator!=(const cow_List& other) const { return !IsEqual(other); }
  // The lowest index of an element equal to `value`, or -1.
  int FindMember(const T& value) const;
  bool IsMember(const T& value) const { return FindMember(value) >= 0; }
  // Removes the first element equal to `value`; false when there is none.
  bool RemoveMember(const T& value);
  // Appends `value` unless an equal element is present; true when it appended.
  bool AppendUnlessMember(const T& value);
  // The elements of this list that are not in `other`, in order.
  cow_List Difference(const cow_List& other) const;

  // Called with a bad index: ends the process with abort(), writing nothing.
  [[noreturn]] static void RaiseOutOfRange(int index);

  // Layout, for diagnostics: the block size is 1 << BlockShift(), element 0 lies Head()
  // elements from the start of the first table slot, and the table has TableLength() slots.
  int BlockShift() const { return m_Shift; }
  int Head() const { return m_Head; }
  int TableLength() const { return m_TableLength; }

 private:
  friend class cow_ListIter<T>;
  using Block = cow_ListBlock<T>;

  static constexpr int kDefaultShift = 4;
  static constexpr int kTableStep = 16;

  void Initialize(int size);
  void Swap(cow_List& other) {
    std::swap(m_Count, other.m_Count);
    std::swap(m_TableLength, other.m_TableLength);
    std::swap(m_Shift, other.m_Shift);
    std::swap(m_Head, other.m_Head);
    std::swap(m_TableCount, other.m_TableCount);
    std::swap(m_Table, other.m_Table);
  }
  void CheckIndex(int index) const {
    if (static_cast<unsigned>(index) >= static_cast<unsigned>(m_Count)) RaiseOutOfRange(index);
  }

  int BlockSize() const { return 1 << m_Shift; }
  // The slot of the position when the table and its block are this list's own, so that a
  // write there needs no Detach and no MakePrivate; null otherwise. Keeps the common writes,
  // appends and prepends inline.
  T* WritableSlot(int position) const {
    if (*m_TableCount != 1) return nullptr;
    const int block = position >> m_Shift;
    if (block >= m_TableLength) return nullptr;
    Block* const held = m_Table[block];
    if (held == nullptr || held->m_UseCount != 1) return nullptr;
    return held->m_Data + (position & (BlockSize() - 1));
  }
  // The table length that Resize gives a list whose positions end at `end`.
  int TableLengthFor(int64_t end) const {
    return (BlocksFor(end) + kTableStep - 1) / kTableStep * kTableStep;
  }
  // Blocks that hold positions [0, end).
  int BlocksFor(int64_t end) const { return static_cast<int>((end + BlockSize() - 1) >> m_Shift); }
  T* Slot(int position) const {
    return m_Table[position >> m_Shift]->m_Data + (position & (BlockSize() - 1));
  }
  T& At(int index) const { return *Slot(m_Head + index); }
  // Builds a copy of `value` in the raw storage of `slot`.
  static void Construct(T* slot, const T& value) { ::new (static_cast<void*>(slot)) T(value); }
  // The live positions [first, end) of block `block`, given the live range [m_Head, liveEnd).
  void LiveRange(int block, int liveEnd, int& first, int& end) const {
    first = std::max(m_Head, block << m_Shift);
    end = std::min(liveEnd, (block + 1) << m_Shift);
  }

  // Gives this list a table of its own when others share it.
  void Detach();
  // After Detach: every block that holds an index in [first, last] becomes this list's own,
  // new where the slot is empty.
  void MakePrivate(int first, int last);
  // A new block with copies of the live elements of block `block` below position `liveEnd`;
  // the old block loses this list's count.
  Block* CopyBlock(int block, int liveEnd);
  // Drops this list's count of the block in the slot and clears it; the last holder destroys
  // the block's live elements, last first.
  void ReleaseBlock(int block);
  void ReleaseBlocks(int from) {
    for (int block = from; block < m_TableLength; ++block)
      ReleaseBlock(block);
  }
  void DestroyRange(Block* block, int first, int end) {
    for (int position = end; position-- > first;)
      block->m_Data[position & (BlockSize() - 1)].~T();
  }
  // After shrinking to `size` > 0: the elements at and after `size` leave the last block.
  void TrimLastBlock(int size);
  void SetTableLength(int length);
  // Frees table slots in front of element 0 before a prepend.
  void MakeFrontRoom();

  int m_Count;
  int m_TableLength;
  int m_Shift;
  int m_Head;
  int* m_TableCount;
  Block** m_Table;
};

template <class T>
void cow_List<T>::Initialize(int size) {
  m_Count = m_TableLength = m_Head = 0;
  m_Shift = kDefaultShift;
  m_Table = nullptr;
  m_TableCount = static_cast<int*>(mem_OperatorNewTinyThrow(sizeof(int)));
  *m_TableCount = 1;
  if (size <= 0) return;
  // The floor of log2 from the exponent of the single-precision value.
  const float asFloat = static_cast<float>(size);
  uint32_t bits;
  std::memcpy(&bits, &asFloat, sizeof bits);
  const int exponent = static_cast<int>((bits >> 23) & 0xff) - 127;
  int blocks = 0;
  if (exponent - 3 > kDefaultShift) {
    m_Shift = exponent - 3;
    blocks = BlocksFor(size);
  }
  try {
    SetTableLength(blocks + kTableStep);
  } catch (...) {
    mem_Free(m_TableCount);
    throw;
  }
}

template <class T>
void cow_List<T>::Detach() {
  if (*m_TableCount == 1) return;
  int* count = static_cast<int*>(mem_OperatorNewTinyThrow(sizeof(int)));
  Block** table = nullptr;
  if (m_TableLength != 0) {
    try {
      table = static_cast<Block**>(cow_ReallocOrRaise(nullptr, sizeof(Block*) * m_TableLength));
    } catch (...) {
      mem_Free(count);
      throw;
    }
    std::memcpy(table, m_Table, sizeof(Block*) * m_TableLength);
    for (int slot = 0; slot < m_TableLength; ++slot)
      if (table[slot] != nullptr) ++table[slot]->m_UseCount;
  }
  --*m_TableCount;
  *count = 1;
  m_TableCount = count;
  m_Table = table;
}

template <class T>
void cow_List<T>::MakePrivate(int first, int last) {
  const int lastBlock = (m_Head + last) >> m_Shift;
  for (int block = (m_Head + first) >> m_Shift; block <= lastBlock; ++block) {
    Block*& slot = m_Table[block];
    if (slot == nullptr)
      slot = new Block(BlockSize());
    else if (slot->m_UseCount > 1)
      slot = CopyBlock(block, m_Head + m_Count);
  }
}

template <class T>
typename cow_List<T>::Block* cow_List<T>::CopyBlock(int block, int liveEnd) {
  Block* old = m_Table[block];
  Block* copy = new Block(BlockSize());
  int first, end;
  LiveRange(block, liveEnd, first, end);
  int position = first;
  try {
    for (; position < end; ++position) {
      const int offset = position & (BlockSize() - 1);
      Construct(copy->m_Data + offset, old->m_Data[offset]);
    }
  } catch (...) {
    DestroyRange(copy, first, position);
    delete copy;
    throw;
  }
  --old->m_UseCount;
  return copy;
}

template <class T>
void cow_List<T>::ReleaseBlock(int block) {
  Block* released = m_Table[block];
  m_Table[block] = nullptr;
  if (released == nullptr || --released->m_UseCount != 0) return;
  int first, end;
  LiveRange(block, m_Head + m_Count, first, end);
  DestroyRange(released, first, end);
  delete released;
}

template <class T>
void cow_List<T>::TrimLastBlock(int size) {
  const int newEnd = m_Head + size;
  const int block = (newEnd - 1) >> m_Shift;
  int first, end;
  LiveRange(block, m_Head + m_Count, first, end);
  if (end <= newEnd) return;
  Block*& slot = m_Table[block];
  if (slot->m_UseCount > 1)
    slot = CopyBlock(block, newEnd);
  else
    DestroyRange(slot, newEnd, end);
}

template <class T>
void cow_List<T>::SetTableLength(int length) {
  if (length == m_TableLength) return;
  if (length == 0) {
    mem_Free(m_Table);
    m_Table = nullptr;
  } else {
    m_Table = static_cast<Block**>(cow_ReallocOrRaise(m_Table, sizeof(Block*) * length));
    if (length > m_TableLength)
      std::memset(m_Table + m_TableLength, 0, sizeof(Block*) * (length - m_TableLength));
  }
  m_TableLength = length;
}

template <class T>
void cow_List<T>::Resize(int size) {
  if (size < 0) RaiseOutOfRange(size);
  Detach();
  const int needed = size == 0 ? 0 : BlocksFor(int64_t{m_Head} + size);
  const int length = size == 0 ? 0 : TableLengthFor(int64_t{m_Head} + size);
  if (size < m_Count) {
    ReleaseBlocks(needed);
    if (size > 0) TrimLastBlock(size);
  } else if (length < m_TableLength) {
    ReleaseBlocks(length);  // blocks without live elements, left by a failed construction
  }
  SetTableLength(length);
  if (size == 0) {
    m_Count = m_Head = 0;
    m_Shift = kDefaultShift;
  } else if (size < m_Count) {
    m_Count = size;
  }
}

template <class T>
void cow_List<T>::MakeFrontRoom() {
  if (m_Head != 0) {
    Detach();
    return;
  }
  const int used = BlocksFor(m_Count);
  if (used == m_TableLength)
    Resize(used * BlockSize() + 1);
  else
    Detach();
  // Moves the used slots to the end of the table and all free ones to the front at once.
  std::rotate(m_Table, m_Table + used, m_Table + m_TableLength);
  m_Head = (m_TableLength - used) << m_Shift;
}

template <class T>
void cow_List<T>::InsertIndex(int index, const T& value) {
  if (index == m_Count) return Append(value);
  if (index == 0) return Prepend(value);
  CheckIndex(index);
  const T copy(value);  // `value` may be an element that the shifting below moves
  if (index >= m_Count - index) {
    Resize(m_Count + 1);
    MakePrivate(index, m_Count);
    Construct(Slot(m_Head + m_Count), At(m_Count - 1));
    ++m_Count;
    for (int i = m_Count - 2; i > index; --i)
      At(i) = At(i - 1);
  } else {
    MakeFrontRoom();
    MakePrivate(-1, index);
    Construct(Slot(m_Head - 1), At(0));
    --m_Head;
    ++m_Count;
    for (int i = 1; i < index; ++i)
      At(i) = At(i + 1);
  }
  At(index) = copy;
}

template <class T>
void cow_List<T>::RemoveIndex(int index) {
  CheckIndex(index);
  Detach();
  if (index < m_Count - index) {
    MakePrivate(0, index);
    for (int i = index; i > 0; --i)
      At(i) = At(i - 1);
    Slot(m_Head)->~T();
    ++m_Head;
    --m_Count;
    if ((m_Head & (BlockSize() - 1)) == 0) ReleaseBlock((m_Head - 1) >> m_Shift);
  } else {
    MakePrivate(index, m_Count - 1);
    for (int i = index; i < m_Count - 1; ++i)
      At(i) = At(i + 1);
    --m_Count;
    const int end = m_Head + m_Count;
    Slot(end)->~T();
    if ((end & (BlockSize() - 1)) == 0) ReleaseBlock(end >> m_Shift);
  }
}

template <class T>
void cow_List<T>::Fill(int size, const T& value) {
  if (size <= m_Count) return;
  Resize(size);
  MakePrivate(m_Count, size - 1);
  for (; m_Count < size; ++m_Count)
    Construct(Slot(m_Head + m_Count), value);
}

template <class T>
void cow_List<T>::SetFromArray(const T* values, int size) {
  Resize(size);
  if (size == 0) return;
  MakePrivate(0, size - 1);
  // Block by block: assign over live elements, construct the rest.
  for (int index = 0; index < size;) {
    const int position = m_Head + index;
    const int chunk = std::min(size - index, BlockSize() - (position & (BlockSize() - 1)));
    T* target = Slot(position);
    for (int i = 0; i < chunk; ++i, ++index) {
      if (index < m_Count) {
        target[i] = values[index];
      } else {
        Construct(target + i, values[index]);
        ++m_Count;
      }
    }
  }
}

template <class T>
void cow_List<T>::Concatenate(const cow_List& other) {
  const cow_List source(other);  // keeps the elements while this list grows
  for (int i = 0; i < source.m_Count; ++i)
    Append(source.UncheckedConstGet(i));
}

template <class T>
cow_List<T> cow_List<T>::Slice(int from, int to) const {
  from = std::max(from, 0);
  to = std::min(to, m_Count);
  if (from >= to) return cow_List();
  cow_List slice(cow_ListPresize, to - from);
  for (int i = from; i < to; ++i)
    slice.Append(UncheckedConstGet(i));
  return slice;
}

template <class T>
T* cow_List<T>::GetCArray(int& count) const {
  T* array = new T[m_Count];
  try {
    for (int i = 0; i < m_Count; ++i)
      array[i] = UncheckedConstGet(i);
  } catch (...) {
    delete[] array;
    throw;
  }
  count = m_Count;
  return array;
}

template <class T>
bool cow_List<T>::IsEqual(const cow_List& other) const {
  if (m_Count != other.m_Count) return false;
  for (int i = 0; i < m_Count; ++i) {
    const T& mine = UncheckedConstGet(i);
    const T& theirs = other.UncheckedConstGet(i);
    if (&mine != &theirs && !(mine == theirs)) return false;
  }
  return true;
}

template <class T>
int cow_List<T>::FindMember(const T& value) const {
  for (int i = 0; i < m_Count; ++i)
    if (UncheckedConstGet(i) == value) return i;
  return -1;
}

template <class T>
bool cow_List<T>::RemoveMember(const T& value) {
  const int index = FindMember(value);
  if (index < 0) return false;
  RemoveIndex(index);
  return true;
}

template <class T>
bool cow_List<T>::AppendUnlessMember(const T& value) {
  if (IsMember(value)) return false;
  Append(value);
  return true;
}

template <class T>
cow_List<T> cow_List<T>::Difference(const cow_List& other) const {
  cow_List difference;
  for (int i = 0; i < m_Count; ++i)
    if (!other.IsMember(UncheckedConstGet(i))) difference.Append(UncheckedConstGet(i));
  return difference;
}

template <class T>
void cow_List<T>::RaiseOutOfRange(int) {
  std::abort();
}

#endif  // COW_LIST_H
