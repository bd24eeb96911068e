#include "cls_xp2DArray.h"

#include "internal/cls_xpRecord.h"

template <class T>
cls_xp2DArray<T>::cls_xp2DArray(const cls_ReadVisitor& visitor) : Base(visitor.GetUid()) {
  cls_ReadCursor<cls_ReadListPrim<T>> cursor(cls_xpListCursor<T>(visitor));
  if (!cursor) return;
  const int columns = cursor->RowLength();
  if (columns <= 0) return;
  const int rows = cursor->Size() / columns;
  if (rows <= 0) return;
  Container::operator=(Container(rows, columns));
  for (int row = 0, column = 0; row < rows && cursor->HasMore();) {
    this->Get(row, column) = cls_ReadNext(*cursor);
    if (++column == columns) {
      column = 0;
      ++row;
    }
  }
}

template <class T>
void cls_xp2DArray<T>::DBWrite(const cls_WriteVisitor& visitor) const {
  const T* values = this->ConstData();
  cls_xpWriteList<T>(visitor, this->m_Uid, cls_Coll2DArray, this->Columns(),
                     this->Rows() * this->Columns(),
                     [values](int i) -> const T& { return values[i]; });
}

template class cls_xp2DArray<int>;
template class cls_xp2DArray<float>;
template class cls_xp2DArray<double>;
