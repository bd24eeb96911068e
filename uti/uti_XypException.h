// A command error of kind "XypError", told by one message for the job's journal (see
// uti_JournalException).
#ifndef UTI_XYPEXCEPTION_H
#define UTI_XYPEXCEPTION_H

#include "VRKBasExport.h"
#include "uti_JournalException.h"

class VRKLNU_EXPORT uti_XypException : public uti_JournalException<uti_XypException, 0x2001B> {
 public:
  static constexpr const char* kClassName = "uti_XypException";
  static constexpr const char* kPythonType = "XypError";

  using uti_JournalException::uti_JournalException;
  ~uti_XypException() override;
};

#endif  // UTI_XYPEXCEPTION_H
