// A captured system error (see omi_SystemErrorCode) that can give the system's text.
#ifndef COW_SYSTEMERRORCODE_H
#define COW_SYSTEMERRORCODE_H

#include "VRKBasExport.h"
#include "cow_String.h"
#include "omi_SystemErrorCode.h"

class VRKLNU_EXPORT cow_SystemErrorCode : public omi_SystemErrorCode {
 public:
  // 0 captures the calling thread's errno.
  explicit cow_SystemErrorCode(ErrorCodeType code = 0) : omi_SystemErrorCode(code) {}
  cow_SystemErrorCode(const omi_SystemErrorCode& code) : omi_SystemErrorCode(code) {}

  // The system's text for the error (strerror).
  cow_String GetText() const;
};

#endif  // COW_SYSTEMERRORCODE_H
