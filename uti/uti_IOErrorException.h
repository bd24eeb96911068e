// A failed system call of package uti: the function that failed, the system's error number
// and, where there is one, what it was working on (a path, a command):
//
//   if (fd < 0) NEX_THROW(uti_IOErrorException("open", errno, path));
//   // UserReport: "IOError: open failed for /tmp/out.txt: Permission denied"
//
// A command error (nex_CommandException) of kind "IOError"; persistent like every exception.
#ifndef UTI_IOERROREXCEPTION_H
#define UTI_IOERROREXCEPTION_H

#include "VRKBasExport.h"
#include "cow_String.h"
#include "nex_CommandException.h"

class VRKLNU_EXPORT uti_IOErrorException
    : public nex_ConcreteException<uti_IOErrorException, 0x20019, nex_CommandException> {
 public:
  uti_IOErrorException(const cow_String& function, int code,
                       const cow_String& subject = cow_String());
  // The base level, then "m_Function", "m_Code" (default 0) and "m_Subject", then the identity.
  explicit uti_IOErrorException(const cls_ReadVisitor& visitor);
  ~uti_IOErrorException() override;

  // "<function> failed: <system text>", with " for <subject>" after the function when there
  // is a subject. The system text is that of the code as an error number.
  atr_String JournalMessage() const override;
  // "IOError".
  cow_String PythonType() const override;
  void DBWrite(const cls_WriteVisitor& visitor) const override;

  // Declares the class (concrete, version 800, parent nex_CommandException) with its fields.
  static void InitializeMetadata(cls_ClassRegistrar& registrar);

  const cow_String& Function() const { return m_Function; }
  int Code() const { return m_Code; }
  const cow_String& Subject() const { return m_Subject; }

 private:
  cow_String m_Function;
  int m_Code;
  cow_String m_Subject;
  cls_Uid m_Uid;
};

#endif  // UTI_IOERROREXCEPTION_H
