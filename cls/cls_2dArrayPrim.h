// A persistent array addressed by row and column: a cls_ArrayPrim whose element (row, col)
// is at index width * row + col. The width (the column count) is 1 until SetWidth changes
// it; copies take it over, and a store doesn't keep it, so a reader sets it again.
//
//   cls_2dArrayPrim<double> stress;
//   stress.SetWidth(6);
//   for (int i = 0; i < 6 * elements; ++i) stress.Append(0.0);
//   stress.Get(2, 5) = 1.5;
//
// Only the final index is range-checked, with this class's own messages; the rest is as for
// cls_ArrayPrim (paging, ownership, threads). Written as a two-dimensional array record (tag
// 8x for T). Instantiated for float and double.
#ifndef CLS_2DARRAYPRIM_H
#define CLS_2DARRAYPRIM_H

#include "VRKBasExport.h"
#include "cls_ArrayPrim.h"

template <class T>
class cls_2dArrayPrim : public cls_ArrayPrim<T> {
 public:
  cls_2dArrayPrim() = default;
  explicit cls_2dArrayPrim(const cls_ReadVisitor& visitor) : cls_ArrayPrim<T>(visitor) {}

  void DBWrite(const cls_WriteVisitor& visitor) const override;

  // Sets the column count; a value below 1 is taken as 1.
  void SetWidth(int columns) { m_Width = columns < 1 ? 1 : columns; }
  int Width() const { return m_Width; }

  using cls_ArrayPrim<T>::Get;
  using cls_ArrayPrim<T>::ConstGet;
  T& Get(int row, int col) { return Get(m_Width * row + col); }
  const T& ConstGet(int row, int col) const { return ConstGet(m_Width * row + col); }

 protected:
  const cls_ArrayPrimMessages& Messages() const override;

 private:
  int m_Width = 1;
};

extern template class VRKLNU_EXPORT cls_2dArrayPrim<float>;
extern template class VRKLNU_EXPORT cls_2dArrayPrim<double>;

#endif  // CLS_2DARRAYPRIM_H
