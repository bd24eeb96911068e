// A captured system error: the native code and the runtime's code. On this platform both
// are errno values.
//
//   if (::unlink(path) != 0) raise(omi_SystemErrorCode(0));  // 0 takes the current errno
#ifndef OMI_SYSTEMERRORCODE_H
#define OMI_SYSTEMERRORCODE_H

#include "VRKBasExport.h"

class VRKLNU_EXPORT omi_SystemErrorCode {
 public:
  typedef unsigned int ErrorCodeType;

  // The value 0 captures the last error of the calling thread (errno); any other value is
  // taken as the error number.
  explicit omi_SystemErrorCode(ErrorCodeType code);

  unsigned int m_NativeErrorCode;
  int m_CRTErrorCode;
};

#endif  // OMI_SYSTEMERRORCODE_H
