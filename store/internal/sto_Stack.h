// A growing array for the store's bookkeeping (open items, identities held, numbers of a
// graph): push, pop and index, with blocks from the memory layer. Elements are copied when
// it grows. One thread at a time.
#ifndef STO_STACK_H
#define STO_STACK_H

#include <new>

#include "mem_Alloc.h"

template <class T>
class sto_Stack {
 public:
  sto_Stack() = default;
  sto_Stack(const sto_Stack&) = delete;
  sto_Stack& operator=(const sto_Stack&) = delete;
  ~sto_Stack() { Release(m_Items, m_Count); }

  int Count() const { return m_Count; }
  T& operator[](int index) { return m_Items[index]; }
  T& Top() { return m_Items[m_Count - 1]; }
  void Push(const T& item) {
    if (m_Count == m_Capacity) Grow(m_Capacity ? 2 * m_Capacity : 64);
    new (m_Items + m_Count++) T(item);
  }
  void Pop() { m_Items[--m_Count].~T(); }
  // Makes room for `capacity` elements.
  void Reserve(int capacity) {
    if (capacity > m_Capacity) Grow(capacity);
  }
  // Grows to `count` elements, the new ones made by T().
  void Resize(int count) {
    if (count > m_Capacity) Grow(count > 2 * m_Capacity ? count : 2 * m_Capacity);
    while (m_Count < count)
      new (m_Items + m_Count++) T();
  }

 private:
  void Grow(int capacity) {
    T* items = static_cast<T*>(mem_OperatorNewThrow(sizeof(T) * static_cast<size_t>(capacity)));
    for (int i = 0; i < m_Count; ++i)
      new (items + i) T(m_Items[i]);
    Release(m_Items, m_Count);
    m_Items = items;
    m_Capacity = capacity;
  }
  static void Release(T* items, int count) {
    for (int i = 0; i < count; ++i)
      items[i].~T();
    mem_Free(items);
  }

  T* m_Items = nullptr;
  int m_Count = 0;
  int m_Capacity = 0;
};

#endif  // STO_STACK_H
