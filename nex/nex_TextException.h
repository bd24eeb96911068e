// An error told by its text alone:
//
//   nex_TextException error(nex_Translate("cannot read %s", name));
//   NEX_THROW(error);
//
// Other packages derive their fixed-text errors from it.
#ifndef NEX_TEXTEXCEPTION_H
#define NEX_TEXTEXCEPTION_H

#include "VRKBasExport.h"
#include "nex_ValueException.h"

class VRKLNU_EXPORT nex_TextException
    : public nex_ValueException<nex_TextException, 0x1F0002, atr_String> {
 public:
  static constexpr const char* kClassName = "nex_TextException";

  using nex_ValueException::nex_ValueException;
  ~nex_TextException() override;
};

#endif  // NEX_TEXTEXCEPTION_H
