// Work that stopped because it was interrupted, and by what: the user at the keyboard, a
// request to stop, or another signal.
//
//   if (interruptRequested) NEX_THROW(uti_InterruptedException(uti_InterruptedException::Stop));
//   // UserReport: "uti_Stop"
//
// Persistent like every exception.
#ifndef UTI_INTERRUPTEDEXCEPTION_H
#define UTI_INTERRUPTEDEXCEPTION_H

#include "VRKBasExport.h"
#include "nex_Exception.h"

class VRKLNU_EXPORT uti_InterruptedException
    : public nex_ConcreteException<uti_InterruptedException, 0x20020> {
 public:
  enum CauseEnm {
    Keyboard = 0,  // the user interrupted (SIGINT)
    Stop = 1,      // the job was asked to stop (SIGTERM, a stop request)
    Signal = 2,    // any other signal
  };

  explicit uti_InterruptedException(CauseEnm cause);
  // The base level, then "m_Cause" (default Signal), then the identity.
  explicit uti_InterruptedException(const cls_ReadVisitor& visitor);
  ~uti_InterruptedException() override;

  // "uti_Keyboard", "uti_Stop" or "uti_Signal".
  atr_String AsString() const override;
  void DBWrite(const cls_WriteVisitor& visitor) const override;

  // Declares the class (concrete, version 800, parent nex_Exception) with its field.
  static void InitializeMetadata(cls_ClassRegistrar& registrar);

  CauseEnm Cause() const { return m_Cause; }

 private:
  CauseEnm m_Cause;
  cls_Uid m_Uid;
};

#endif  // UTI_INTERRUPTEDEXCEPTION_H
