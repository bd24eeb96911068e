// The base layer's exception: a text and the errno value that goes with it (0 for none).
// The base layer and package bio raise it; it derives from std::runtime_error, so that
// what() gives the text and a copy never fails.
#ifndef OMI_FATALERROR_H
#define OMI_FATALERROR_H

#include <stdexcept>

#include "VRKBasExport.h"

class VRKLNU_EXPORT omi_FatalError : public std::runtime_error {
 public:
  omi_FatalError(const char* text, int errorNumber);
  ~omi_FatalError() override;

  const char* Text() const { return what(); }
  int Errno() const { return m_Errno; }

 private:
  int m_Errno;
};

#endif  // OMI_FATALERROR_H
