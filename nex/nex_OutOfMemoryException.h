// Memory ran out, or the job's memory limit was reached. While package nex is up, every
// throwing allocation of the memory layer that fails raises this exception:
//
//   mem_Mallopt(-5, limit);
//   try { ... } catch (const nex_Exception& e) { aio_cerr << e.UserReport(); }
//
// Its report is not its own: JournalMessage (and AsString) give the package's specific
// out-of-memory message, which starts as a fixed text and to which every exception built
// with a text appends that text, for good; the generic message (GetOutOfMemoryMsgGeneric)
// grows alike. This is intended: a message once given stays part of every later report.
// Writing an exception stores the current specific message, and reading one back makes the
// stored message the specific message of the process. Both messages live from the start to
// the stop of package nex; outside that span they read empty. They are plain values: use
// them from one thread at a time.
#ifndef NEX_OUTOFMEMORYEXCEPTION_H
#define NEX_OUTOFMEMORYEXCEPTION_H

#include "VRKBasExport.h"
#include "atr_String.h"
#include "cow_COW.h"
#include "cow_CountedHld.h"
#include "cow_String.h"
#include "nex_Exception.h"

// What ran out; the library stores and persists the value as an int.
enum nex_OutOfMemoryErrEnm : int {
  nex_OutOfMemoryUnknown = 0,
  nex_OutOfMemoryLimitReached = 1,   // the memory layer's limit (mem_Mallopt -5)
  nex_OutOfMemorySystemRefused = 2,  // the system had no memory to give
};

class VRKLNU_EXPORT nex_OutOfMemoryException
    : public nex_ConcreteException<nex_OutOfMemoryException, 0x1F0009> {
 public:
  explicit nex_OutOfMemoryException(nex_OutOfMemoryErrEnm error);
  // Also appends `message` to both package messages.
  nex_OutOfMemoryException(const atr_String& message, nex_OutOfMemoryErrEnm error);
  // Reads "m_Msg" and "m_Err", the identity, and makes the message read the specific
  // message of the process.
  explicit nex_OutOfMemoryException(const cls_ReadVisitor& visitor);
  ~nex_OutOfMemoryException() override;

  // JournalMessage().
  atr_String AsString() const override;
  // Takes the specific message into "m_Msg" first (also on a const object), then writes the
  // base level, "m_Msg" and "m_Err".
  void DBWrite(const cls_WriteVisitor& visitor) const override;
  // The specific message, shared.
  virtual atr_String JournalMessage() const;
  // "OutOfMemory".
  virtual cow_String PythonType() const;

  // Declares the class (concrete, version 871, parent nex_Exception) with its fields.
  static void InitializeMetadata(cls_ClassRegistrar& registrar);
  // The generic message; null while package nex is down.
  static atr_String* GetOutOfMemoryMsgGeneric();

  nex_OutOfMemoryErrEnm Error() const { return m_Err; }

 private:
  mutable atr_String m_Msg;
  nex_OutOfMemoryErrEnm m_Err;
  cls_Uid m_Uid;
};

extern template class VRKLNU_EXPORT cow_CountedHld<nex_OutOfMemoryException>;
extern template class VRKLNU_EXPORT cow_COW<nex_OutOfMemoryException>;

#endif  // NEX_OUTOFMEMORYEXCEPTION_H
