#include "uti_XypException.h"

uti_XypException::~uti_XypException() = default;
