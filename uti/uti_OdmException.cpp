#include "uti_OdmException.h"

uti_OdmException::~uti_OdmException() = default;
