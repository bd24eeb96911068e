#include "nex_TextException.h"

nex_TextException::~nex_TextException() = default;
