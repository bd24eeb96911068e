#include "pdc_PPerrAgentList.h"

#include <algorithm>

#include "pnt_PrettyPrint.h"

namespace {

const char* Banner(const float*) {
  return "FLOAT LIST";
}
const char* Banner(const int*) {
  return "INT LIST";
}

}  // namespace

template <class T>
pdc_PPerrAgentList<T>::pdc_PPerrAgentList(pnt_PrettyPrint& printer, int extentQuantum)
    : m_ExtentQuantum(extentQuantum) {
  printer << Banner(static_cast<const T*>(nullptr)) << pnt_forcedBreak;
}

template <class T>
void pdc_PPerrAgentList<T>::Write(int index, int count, const T*) {
  if (count > 0) m_Size = std::max(m_Size, index + count);
}

template <class T>
int pdc_PPerrAgentList<T>::Read(int, int, T*) {
  return 0;
}

template <class T>
void pdc_PPerrAgentList<T>::Link(cls_PC*) {}

pdc_PPerrAgentBlob::pdc_PPerrAgentBlob(pnt_PrettyPrint& printer) {
  printer << "BINARY DATA" << pnt_forcedBreak;
}

template class pdc_PPerrAgentList<float>;
template class pdc_PPerrAgentList<int>;
