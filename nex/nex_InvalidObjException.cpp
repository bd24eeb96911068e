#include "nex_InvalidObjException.h"

template class nex_ConcreteException<nex_InvalidObjException, 0x1F0007>;
template class nex_ValueException<nex_InvalidObjException, 0x1F0007, atr_String>;

nex_InvalidObjException::~nex_InvalidObjException() = default;
