#include "cls_ExtQuant.h"

#include <cstdio>
#include <cstdlib>

template class thr_ThreadSingletonBase<cls_ExtQuant>;

int cls_ExtQuant::ExtentQuantum(const cow_String& name, int otherwise) {
  if (m_State == kUndecided) {
    m_State = std::getenv("EXTENT_QUANTUM_OVERRIDE") ? kOverride : kOff;
    if (m_State == kOverride) std::fputs("***** EXTENT_QUANTUM_OVERRIDE activated.\n", stdout);
  }
  if (m_State == kOff) return otherwise;
  if (m_Resolved.IsMember(name)) return m_Resolved.ConstFind(name);
  const char* text = std::getenv(name.c_str());
  int value = text ? std::atoi(text) : otherwise;
  if (value < 1) value = otherwise;
  std::printf("***** %s = %d\n", name.c_str(), value);
  m_Resolved.InsertUnlessMember(name, value);
  return value;
}
