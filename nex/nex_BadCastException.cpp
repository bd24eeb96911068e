#include "nex_BadCastException.h"

nex_BadCastException::~nex_BadCastException() = default;
