// The growable array of the memory resource manager: a count, a capacity and a block from the
// memory layer; an append to a full array doubles the capacity first (from 4).
//
//   mrm_Array<mrm_PhaseNode*> stack;
//   stack.Append(root);
//   mrm_PhaseNode* top = stack.Last();
//
// Indices are not checked: callers test them against Count() where they can be wrong.
// Elements are moved when the block grows. Not copyable.
#ifndef MRM_ARRAY_H
#define MRM_ARRAY_H

#include <new>
#include <utility>

#include "mem_Alloc.h"

template <class T>
class mrm_Array {
 public:
  mrm_Array() = default;
  mrm_Array(mrm_Array&& other) noexcept
      : m_Count(other.m_Count), m_Capacity(other.m_Capacity), m_Data(other.m_Data) {
    other.m_Count = other.m_Capacity = 0;
    other.m_Data = nullptr;
  }
  mrm_Array(const mrm_Array&) = delete;
  mrm_Array& operator=(const mrm_Array&) = delete;
  ~mrm_Array() {
    Truncate(0);
    mem_Free(m_Data);
  }

  int Count() const { return m_Count; }
  T& operator[](int i) { return m_Data[i]; }
  const T& operator[](int i) const { return m_Data[i]; }
  T& Last() { return m_Data[m_Count - 1]; }
  const T& Last() const { return m_Data[m_Count - 1]; }

  void Append(T value) {
    if (m_Count == m_Capacity) Grow();
    new (m_Data + m_Count) T(std::move(value));
    ++m_Count;
  }
  // Removes the last element and gives it back.
  T Pop() {
    T last(std::move(Last()));
    Truncate(m_Count - 1);
    return last;
  }

 private:
  void Truncate(int count) {
    while (m_Count > count)
      m_Data[--m_Count].~T();
  }
  void Grow() {
    const int capacity = m_Capacity ? 2 * m_Capacity : 4;
    T* data = static_cast<T*>(mem_OperatorNewThrow(sizeof(T) * capacity));
    for (int i = 0; i < m_Count; ++i) {
      new (data + i) T(std::move(m_Data[i]));
      m_Data[i].~T();
    }
    mem_Free(m_Data);
    m_Data = data;
    m_Capacity = capacity;
  }

  int m_Count = 0;
  int m_Capacity = 0;
  T* m_Data = nullptr;
};

#endif  // MRM_ARRAY_H
