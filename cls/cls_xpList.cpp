#include "cls_xpList.h"

#include "internal/cls_xpRecord.h"

template <class T>
cls_xpList<T>::cls_xpList(const cls_ReadVisitor& visitor, bool presize) : Base(visitor.GetUid()) {
  cls_ReadCursor<cls_ReadListPrim<T>> cursor(cls_xpListCursor<T>(visitor));
  if (!cursor) return;
  if (presize) Container::operator=(Container(cow_ListPresize, cursor->Size()));
  while (cursor->HasMore())
    this->Append(cls_ReadNext(*cursor));
}

template <class T>
void cls_xpList<T>::DBWrite(const cls_WriteVisitor& visitor) const {
  cls_xpWriteList<T>(visitor, this->m_Uid, cls_CollList, 1, this->Count(),
                     [this](int i) -> const T& { return this->ConstGet(i); });
}

template <class T>
cls_xp1DArrayList<T>::cls_xp1DArrayList(int size)
    : cls_xpList<T>(Container(cow_ListPresize, size)) {
  this->Fill(size, T());
}

template class cls_xpList<bool>;
template class cls_xpList<int>;
template class cls_xpList<unsigned>;
template class cls_xpList<float>;
template class cls_xpList<double>;
template class cls_xpList<cow_String>;
template class cls_xp1DArrayList<bool>;
template class cls_xp1DArrayList<int>;
template class cls_xp1DArrayList<unsigned>;
template class cls_xp1DArrayList<float>;
template class cls_xp1DArrayList<double>;
template class cls_xp1DArrayList<cow_String>;
