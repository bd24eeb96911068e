// An internal condition that failed: the text of the condition, raised at the assertion's
// location. AsString gives the text through "%s".
//
//   if (!isActive) NEX_THROW(nex_AssertException("isActive"));
#ifndef NEX_ASSERTEXCEPTION_H
#define NEX_ASSERTEXCEPTION_H

#include "VRKBasExport.h"
#include "nex_ValueException.h"

class VRKLNU_EXPORT nex_AssertException
    : public nex_ValueException<nex_AssertException, 0x1F0004, cow_String> {
 public:
  static constexpr const char* kClassName = "nex_AssertException";

  using nex_ValueException::nex_ValueException;
  ~nex_AssertException() override;
};

#endif  // NEX_ASSERTEXCEPTION_H
