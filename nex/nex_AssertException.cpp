#include "nex_AssertException.h"

template class nex_ConcreteException<nex_AssertException, 0x1F0004>;
template class nex_ValueException<nex_AssertException, 0x1F0004, cow_String>;

nex_AssertException::~nex_AssertException() = default;
