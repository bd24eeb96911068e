// The abstract base of errors of a command, which say what kind of error they are in a
// scripting sense (PythonType) and what goes into the job's journal (JournalMessage).
// AsString gives "<PythonType>: <JournalMessage>". Other packages derive the concrete ones.
#ifndef NEX_COMMANDEXCEPTION_H
#define NEX_COMMANDEXCEPTION_H

#include "VRKBasExport.h"
#include "atr_String.h"
#include "cow_String.h"
#include "nex_Exception.h"

class VRKLNU_EXPORT nex_CommandException : public nex_Exception {
 public:
  ~nex_CommandException() override;

  atr_String AsString() const override;
  unsigned DynTypeId() const override;
  // The base level; the class's own record holds only its identity.
  void DBWrite(const cls_WriteVisitor& visitor) const override;
  virtual atr_String JournalMessage() const = 0;
  virtual cow_String PythonType() const = 0;

  static unsigned TypeId() { return 0x1F0003; }
  // Declares the class (abstract, version 800, parent nex_Exception).
  static void InitializeMetadata(cls_ClassRegistrar& registrar);

 protected:
  nex_CommandException();
  nex_CommandException(const nex_CommandException& other);
  explicit nex_CommandException(const cls_ReadVisitor& visitor);

 private:
  cls_Uid m_Uid;
};

#endif  // NEX_COMMANDEXCEPTION_H
