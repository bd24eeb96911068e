// A two-dimensional array of numbers, shared copy-on-write: copies share one block of
// elements until one of them writes.
//
//   cow_2DArray<double> stress(3, 6);      // 3 rows of 6, all 0
//   stress.Get(2, 5) = 1.5;
//   cow_2DArray<double> saved = stress;    // shares
//   const double* rows = saved.ConstData();  // row-major, Rows() * Columns() elements
//
// Bad index: ConstGet and Get with a row or column outside the array, and a negative
// dimension, end the process with abort(), as a bad index into a cow_List does. Allocation
// failure raises through the memory layer. An array and its copies belong to one thread at a
// time.
#ifndef COW_2DARRAY_H
#define COW_2DARRAY_H

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <type_traits>

#include "cow_COW.h"
#include "cow_CountedHld.h"
#include "mem_Alloc.h"

// The shared block of a cow_2DArray: the dimensions and the elements, row-major.
template <class T>
class cow_2DArrayRep : public mem_AllocationOperators {
 public:
  static_assert(std::is_trivially_copyable<T>::value, "elements are copied as bytes");

  // All elements 0.
  cow_2DArrayRep(int rows, int columns) : m_Rows(rows), m_Columns(columns) {
    m_Data = static_cast<T*>(mem_OperatorNewThrow(Bytes()));
    std::fill_n(m_Data, static_cast<size_t>(rows) * static_cast<size_t>(columns), T());
  }
  cow_2DArrayRep(const cow_2DArrayRep& other) : m_Rows(other.m_Rows), m_Columns(other.m_Columns) {
    m_Data = static_cast<T*>(mem_OperatorNewThrow(Bytes()));
    std::memcpy(m_Data, other.m_Data, Bytes());
  }
  ~cow_2DArrayRep() { mem_Free(m_Data); }
  cow_2DArrayRep& operator=(const cow_2DArrayRep&) = delete;

  int m_Rows;
  int m_Columns;
  T* m_Data;

 private:
  // A size past the address space asks for the largest block, so that the allocation fails.
  size_t Bytes() const {
    const size_t count = static_cast<size_t>(m_Rows) * static_cast<size_t>(m_Columns);
    return count > SIZE_MAX / sizeof(T) ? SIZE_MAX : count * sizeof(T);
  }
};

template <class T>
class cow_2DArray : public mem_AllocationOperators {
 public:
  // An array of 0 rows and 0 columns.
  cow_2DArray() : cow_2DArray(0, 0) {}
  // `rows` rows of `columns` elements, all 0.
  cow_2DArray(int rows, int columns) : m_Rep(Checked(rows, columns)) {}

  int Rows() const { return m_Rep.ConstGet().m_Rows; }
  int Columns() const { return m_Rep.ConstGet().m_Columns; }

  const T& ConstGet(int row, int column) const {
    return m_Rep.ConstGet().m_Data[Index(row, column)];
  }
  // For writing: a shared array is copied for this one first.
  T& Get(int row, int column) {
    const size_t index = Index(row, column);
    return m_Rep.Get().m_Data[index];
  }
  // All elements, row after row.
  const T* ConstData() const { return m_Rep.ConstGet().m_Data; }

 private:
  static cow_2DArrayRep<T>* Checked(int rows, int columns) {
    if (rows < 0 || columns < 0) std::abort();
    return new cow_2DArrayRep<T>(rows, columns);
  }
  size_t Index(int row, int column) const {
    if (static_cast<unsigned>(row) >= static_cast<unsigned>(Rows()) ||
        static_cast<unsigned>(column) >= static_cast<unsigned>(Columns()))
      std::abort();
    return static_cast<size_t>(row) * Columns() + column;
  }

  cow_COW<cow_2DArrayRep<T>> m_Rep;
};

#endif  // COW_2DARRAY_H
