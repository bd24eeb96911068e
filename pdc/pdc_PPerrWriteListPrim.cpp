#include "pdc_PPerrWriteListPrim.h"

#include "internal/pdc_Value.h"

pdc_PPerrBlock::pdc_PPerrBlock(pnt_PrettyPrint& printer, const char* open, const char* close)
    : m_Printer(printer), m_Close(close) {
  m_Printer << pnt_forcedBreak << open << pnt_indent << pnt_forcedBreak;
}

pdc_PPerrBlock::~pdc_PPerrBlock() {
  m_Printer << pnt_undent << m_Close << pnt_forcedBreak;
}

template <class T>
void pdc_PPerrWriteListPrim<T>::Append(const T* value) {
  pdc_PrintValue(m_Block.Printer(), *value);
  m_Block.Printer() << pnt_forcedBreak;
}

template <class Base, class K, class T>
void pdc_PPerrWriteMapPrim<Base, K, T>::Put(const K* key, const T* value) {
  pdc_PrintValue(m_Block.Printer(), *key);
  m_Block.Printer() << ": ";
  pdc_PrintValue(m_Block.Printer(), *value);
  m_Block.Printer() << pnt_forcedBreak;
}

template class pdc_PPerrWriteListPrim<bool>;
template class pdc_PPerrWriteListPrim<int>;
template class pdc_PPerrWriteListPrim<unsigned>;
template class pdc_PPerrWriteListPrim<float>;
template class pdc_PPerrWriteListPrim<double>;
template class pdc_PPerrWriteListPrim<cow_String>;

#define PDC_PPERR_MAPS(T)                                                \
  template class pdc_PPerrWriteMapPrim<cls_WriteMapInt2Prim<T>, int, T>; \
  template class pdc_PPerrWriteMapPrim<cls_WriteMapString2Prim<T>, cow_String, T>
PDC_PPERR_MAPS(int);
PDC_PPERR_MAPS(unsigned);
PDC_PPERR_MAPS(float);
PDC_PPERR_MAPS(double);
PDC_PPERR_MAPS(cow_String);
