// Asks the program to stop with an exit code, and optionally a message:
//
//   NEX_THROW(nex_ExitException(atr_String(), 3));   // AsString: "Exit code: 3"
//
// The top of the program catches it and exits with ExitCode().
#ifndef NEX_EXITEXCEPTION_H
#define NEX_EXITEXCEPTION_H

#include "VRKBasExport.h"
#include "atr_String.h"
#include "nex_Exception.h"

class VRKLNU_EXPORT nex_ExitException : public nex_ConcreteException<nex_ExitException, 0x1F0006> {
 public:
  nex_ExitException(const atr_String& message, int code);
  // The identity first, then "m_Value.m_Msg" and "m_Value.m_Err" (default 0).
  explicit nex_ExitException(const cls_ReadVisitor& visitor);
  ~nex_ExitException() override;

  // The message, or "Exit code: " and the code when there is none.
  atr_String AsString() const override;
  void DBWrite(const cls_WriteVisitor& visitor) const override;

  static void InitializeMetadata(cls_ClassRegistrar& registrar);

  const atr_String& Message() const { return m_Value.m_Msg; }
  int ExitCode() const { return m_Value.m_Err; }

 private:
  struct Value {
    atr_String m_Msg;
    int m_Err;
  };
  Value m_Value;
  cls_Uid m_Uid;
};

#endif  // NEX_EXITEXCEPTION_H
