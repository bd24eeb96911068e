#include "omi_FatalError.h"

omi_FatalError::omi_FatalError(const char* text, int errorNumber)
    : std::runtime_error(text ? text : ""), m_Errno(errorNumber) {}

omi_FatalError::~omi_FatalError() = default;
