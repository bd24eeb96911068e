#include "omi_SystemErrorCode.h"

#include <cerrno>

omi_SystemErrorCode::omi_SystemErrorCode(ErrorCodeType code)
    : m_NativeErrorCode(code != 0 ? code : static_cast<unsigned>(errno)),
      m_CRTErrorCode(static_cast<int>(m_NativeErrorCode)) {}
