// A command that ran and failed: the command and the status it ended with.
//
//   int status = uti_Spawn::AndWait(command, directory, arguments, redirection, environment);
//   if (status != 0) NEX_THROW(uti_CmdFailedException(command, status));
//   // UserReport: "uti_CmdFailed: /usr/bin/sort returned 2"
//
// Persistent like every exception.
#ifndef UTI_CMDFAILEDEXCEPTION_H
#define UTI_CMDFAILEDEXCEPTION_H

#include "VRKBasExport.h"
#include "cow_String.h"
#include "nex_Exception.h"

class VRKLNU_EXPORT uti_CmdFailedException
    : public nex_ConcreteException<uti_CmdFailedException, 0x2001F> {
 public:
  uti_CmdFailedException(const cow_String& command, int status);
  // The base level, then "m_Command" and "m_Status" (default 0), then the identity.
  explicit uti_CmdFailedException(const cls_ReadVisitor& visitor);
  ~uti_CmdFailedException() override;

  // "uti_CmdFailed: <command> returned <status>".
  atr_String AsString() const override;
  void DBWrite(const cls_WriteVisitor& visitor) const override;

  // Declares the class (concrete, version 800, parent nex_Exception) with its fields.
  static void InitializeMetadata(cls_ClassRegistrar& registrar);

  const cow_String& Command() const { return m_Command; }
  int Status() const { return m_Status; }

 private:
  cow_String m_Command;
  int m_Status;
  cls_Uid m_Uid;
};

#endif  // UTI_CMDFAILEDEXCEPTION_H
