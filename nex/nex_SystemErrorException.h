// A failed system call, with the system's two error codes; AsString gives the system's text.
//
//   if (::rename(from, to) != 0) NEX_THROW(nex_SystemErrorException(omi_SystemErrorCode(0)));
#ifndef NEX_SYSTEMERROREXCEPTION_H
#define NEX_SYSTEMERROREXCEPTION_H

#include "VRKBasExport.h"
#include "cow_SystemErrorCode.h"
#include "nex_Exception.h"

class VRKLNU_EXPORT nex_SystemErrorException
    : public nex_ConcreteException<nex_SystemErrorException, 0x1F0008> {
 public:
  explicit nex_SystemErrorException(const omi_SystemErrorCode& error);
  // The identity first, then both codes (default -1). Both are stored through the unsigned
  // slot, and the runtime's code is read back as signed; that pairing is intended.
  explicit nex_SystemErrorException(const cls_ReadVisitor& visitor);
  ~nex_SystemErrorException() override;

  atr_String AsString() const override;
  void DBWrite(const cls_WriteVisitor& visitor) const override;

  static void InitializeMetadata(cls_ClassRegistrar& registrar);

  const cow_SystemErrorCode& ErrorCode() const { return m_Value; }

 private:
  cow_SystemErrorCode m_Value;
  cls_Uid m_Uid;
};

#endif  // NEX_SYSTEMERROREXCEPTION_H
