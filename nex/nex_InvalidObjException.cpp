#include "nex_InvalidObjException.h"

nex_InvalidObjException::~nex_InvalidObjException() = default;
