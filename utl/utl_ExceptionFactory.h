// The factory through which the shared layer raises the library's system errors
// (VRKBasUtlExceptionModel): a failed system call becomes VRKLnuSystemErrorException.
// Package utl installs one at its start and withdraws it at its stop; it has no state.
//
// The error is a plain text error to everyone but its own catchers: it copies, reports its
// class and persists as nex_TextException (type id 0x1F0002).
#ifndef UTL_EXCEPTIONFACTORY_H
#define UTL_EXCEPTIONFACTORY_H

#include "VRKBasExport.h"
#include "VRKBasUtlExceptionModel.h"
#include "cow_SystemErrorCode.h"
#include "nex_TextException.h"

class VRKLNU_EXPORT utl_ExceptionFactory : public VRKBasUtlExceptionFactory {
 public:
  ~utl_ExceptionFactory() override;
  // Raises VRKLnuSystemErrorException.
  [[noreturn]] void RaiseSystemError(cow_SystemErrorCode error) override;
};

// A failed system call: its stored text is the system's text, AsString adds "System Error: ".
class VRKLNU_EXPORT VRKLnuSystemErrorException : public nex_TextException {
 public:
  explicit VRKLnuSystemErrorException(const cow_SystemErrorCode& error);
  ~VRKLnuSystemErrorException() override;

  atr_String AsString() const override;
  [[noreturn]] void Propagate() const override;

  const cow_SystemErrorCode& ErrorCode() const { return m_Error; }

 private:
  cow_SystemErrorCode m_Error;
};

#endif  // UTL_EXCEPTIONFACTORY_H
