#include "nex_BadCastException.h"

template class nex_ConcreteException<nex_BadCastException, 0x1F0005>;
template class nex_ValueException<nex_BadCastException, 0x1F0005, atr_String>;

nex_BadCastException::~nex_BadCastException() = default;
