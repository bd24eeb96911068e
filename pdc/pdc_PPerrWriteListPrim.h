// The printing cursors of lists and maps of values, which pdc_PPerrMementoWrite hands out:
// a list prints "[", one value a line one level in, and "]"; a map the same between "{" and
// "}", each line "key: value". A two-dimensional array prints as a list, one value a line.
// A bool prints as 0 or 1. Made with new by the memento, deleted by their user.
#ifndef PDC_PPERRWRITELISTPRIM_H
#define PDC_PPERRWRITELISTPRIM_H

#include "VRKBasExport.h"
#include "cls_WriteCollectionBase.h"

class pnt_PrettyPrint;

// Brackets around a collection on the printer: `open` on a line of its own and an indent at
// construction, an undent and `close` on a line of its own at destruction.
class VRKLNU_EXPORT pdc_PPerrBlock {
 public:
  pdc_PPerrBlock(pnt_PrettyPrint& printer, const char* open, const char* close);
  pdc_PPerrBlock(const pdc_PPerrBlock&) = delete;
  pdc_PPerrBlock& operator=(const pdc_PPerrBlock&) = delete;
  ~pdc_PPerrBlock();

  pnt_PrettyPrint& Printer() const { return m_Printer; }

 private:
  pnt_PrettyPrint& m_Printer;
  const char* m_Close;
};

// T is bool, int, unsigned, float, double or cow_String.
template <class T>
class pdc_PPerrWriteListPrim : public cls_WriteListPrim<T> {
 public:
  explicit pdc_PPerrWriteListPrim(pnt_PrettyPrint& printer) : m_Block(printer, "[", "]") {}
  void Append(const T* value) override;

 private:
  pdc_PPerrBlock m_Block;
};

// `Base` is the map cursor with keys of type K; T is int, unsigned, float, double or
// cow_String.
template <class Base, class K, class T>
class pdc_PPerrWriteMapPrim : public Base {
 public:
  explicit pdc_PPerrWriteMapPrim(pnt_PrettyPrint& printer) : m_Block(printer, "{", "}") {}
  void Put(const K* key, const T* value) override;

 private:
  pdc_PPerrBlock m_Block;
};

template <class T>
using pdc_PPerrWriteMapInt2Prim = pdc_PPerrWriteMapPrim<cls_WriteMapInt2Prim<T>, int, T>;
template <class T>
using pdc_PPerrWriteMapString2Prim =
    pdc_PPerrWriteMapPrim<cls_WriteMapString2Prim<T>, cow_String, T>;

#define PDC_PPERR_MAPS(T)                                                                     \
  extern template class VRKLNU_EXPORT pdc_PPerrWriteMapPrim<cls_WriteMapInt2Prim<T>, int, T>; \
  extern template class VRKLNU_EXPORT                                                         \
      pdc_PPerrWriteMapPrim<cls_WriteMapString2Prim<T>, cow_String, T>
PDC_PPERR_MAPS(int);
PDC_PPERR_MAPS(unsigned);
PDC_PPERR_MAPS(float);
PDC_PPERR_MAPS(double);
PDC_PPERR_MAPS(cow_String);
#undef PDC_PPERR_MAPS
extern template class VRKLNU_EXPORT pdc_PPerrWriteListPrim<bool>;
extern template class VRKLNU_EXPORT pdc_PPerrWriteListPrim<int>;
extern template class VRKLNU_EXPORT pdc_PPerrWriteListPrim<unsigned>;
extern template class VRKLNU_EXPORT pdc_PPerrWriteListPrim<float>;
extern template class VRKLNU_EXPORT pdc_PPerrWriteListPrim<double>;
extern template class VRKLNU_EXPORT pdc_PPerrWriteListPrim<cow_String>;

#endif  // PDC_PPERRWRITELISTPRIM_H
