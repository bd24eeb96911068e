// Walks a cow_List from first to last, a block at a time, with no allocation.
//
//   for (cow_ListIter<int> it(list); !it.IsDone(); it.Next()) sum += it.Current();
//
// The iterator holds a copy of the list, sharing its table: a write to the list while the
// iteration runs gives the writer its own table and leaves the iterator on the old contents.
// Like the list, it belongs to one thread at a time.
#ifndef COW_LISTITER_H
#define COW_LISTITER_H

#include "cow_List.h"
#include "mem_Alloc.h"

template <class T>
class cow_ListIter : public mem_AllocationOperators {
 public:
  explicit cow_ListIter(const cow_List<T>& list)
      : m_List(list), m_End(list.m_Head + list.m_Count), m_BlockSize(list.BlockSize()) {
    First();
  }

  // Back to the first element.
  void First() {
    m_Position = m_List.m_Head;
    m_Offset = m_Position & (m_BlockSize - 1);
    m_Data = m_List.m_Count == 0 ? nullptr : BlockData();
  }
  void Next() {
    ++m_Position;
    if (++m_Offset != m_BlockSize) return;
    m_Offset = 0;
    m_Data = m_Position < m_End ? BlockData() : nullptr;
  }
  bool IsDone() const { return m_Position >= m_End; }
  // The element at the position; the iteration must not be done.
  const T& Current() const { return m_Data[m_Offset]; }

 private:
  T* BlockData() const { return m_List.m_Table[m_Position >> m_List.m_Shift]->m_Data; }

  cow_List<T> m_List;
  T* m_Data;
  int m_End;
  int m_BlockSize;
  int m_Position;
  int m_Offset;
};

#endif  // COW_LISTITER_H
