#include "nex_AssertException.h"

nex_AssertException::~nex_AssertException() = default;
