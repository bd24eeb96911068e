// A command error of kind "OdmError", told by one message for the job's journal (see
// uti_JournalException).
#ifndef UTI_ODMEXCEPTION_H
#define UTI_ODMEXCEPTION_H

#include "VRKBasExport.h"
#include "uti_JournalException.h"

class VRKLNU_EXPORT uti_OdmException : public uti_JournalException<uti_OdmException, 0x2001A> {
 public:
  static constexpr const char* kClassName = "uti_OdmException";
  static constexpr const char* kPythonType = "OdmError";

  using uti_JournalException::uti_JournalException;
  ~uti_OdmException() override;
};

#endif  // UTI_ODMEXCEPTION_H
