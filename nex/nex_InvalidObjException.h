// An object used in a state that does not allow the operation; the text says why.
#ifndef NEX_INVALIDOBJEXCEPTION_H
#define NEX_INVALIDOBJEXCEPTION_H

#include "VRKBasExport.h"
#include "nex_ValueException.h"

class VRKLNU_EXPORT nex_InvalidObjException
    : public nex_ValueException<nex_InvalidObjException, 0x1F0007, atr_String> {
 public:
  static constexpr const char* kClassName = "nex_InvalidObjException";

  using nex_ValueException::nex_ValueException;
  ~nex_InvalidObjException() override;
};

#endif  // NEX_INVALIDOBJEXCEPTION_H
