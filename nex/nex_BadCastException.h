// A checked cast that failed (nex_canDynamicCastRef): the text names both classes.
#ifndef NEX_BADCASTEXCEPTION_H
#define NEX_BADCASTEXCEPTION_H

#include "VRKBasExport.h"
#include "nex_ValueException.h"

class VRKLNU_EXPORT nex_BadCastException
    : public nex_ValueException<nex_BadCastException, 0x1F0005, atr_String> {
 public:
  static constexpr const char* kClassName = "nex_BadCastException";

  using nex_ValueException::nex_ValueException;
  ~nex_BadCastException() override;
};

#endif  // NEX_BADCASTEXCEPTION_H
