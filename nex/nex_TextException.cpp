#include "nex_TextException.h"

template class nex_ConcreteException<nex_TextException, 0x1F0002>;
template class nex_ValueException<nex_TextException, 0x1F0002, atr_String>;

nex_TextException::~nex_TextException() = default;
