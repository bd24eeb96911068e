// How the record printer writes a value: a bool as 0 or 1, a string as its text, anything
// else through the printer's operator<< for its type.
#ifndef PDC_VALUE_H
#define PDC_VALUE_H

#include "cow_String.h"
#include "pnt_PrettyPrint.h"

template <class T>
void pdc_PrintValue(pnt_PrettyPrint& printer, const T& value) {
  printer << value;
}
inline void pdc_PrintValue(pnt_PrettyPrint& printer, const bool& value) {
  printer << (value ? 1 : 0);
}
inline void pdc_PrintValue(pnt_PrettyPrint& printer, const cow_String& value) {
  printer << value.c_str();
}

#endif  // PDC_VALUE_H
