#include "cow_SystemErrorCode.h"

#include <string.h>

cow_String cow_SystemErrorCode::GetText() const {
  char buffer[256];
  // The GNU strerror_r returns the text, in the buffer or in static storage.
  return cow_String(strerror_r(static_cast<int>(m_NativeErrorCode), buffer, sizeof buffer));
}
