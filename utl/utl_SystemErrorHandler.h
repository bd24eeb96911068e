// The process-wide switch that decides what a write does on a full disk: by default
// utl_File raises utl_FileExceptionFull; a client that wants a message on the console
// instead, and the short count back, sets isActive:
//
//   utl_SystemErrorHandler::Instance().isActive = true;
//
// The object is made at its first use and destroyed with package utl. The switch may be read
// and set from any thread.
#ifndef UTL_SYSTEMERRORHANDLER_H
#define UTL_SYSTEMERRORHANDLER_H

#include <atomic>

#include "VRKBasExport.h"
#include "atr_String.h"
#include "omi_Singleton.h"

class utl_SystemErrorHandler;
extern template class VRKLNU_EXPORT omi_SingletonBase<utl_SystemErrorHandler>;

class VRKLNU_EXPORT utl_SystemErrorHandler : public omi_Singleton<utl_SystemErrorHandler> {
 public:
  // Prints `text` on standard output and flushes it. The text is the format of printf, so a
  // '%' in it is interpreted: intended.
  void handleError(const atr_String& text);

  // Set: a full disk prints a message instead of raising. Off at first.
  std::atomic<bool> isActive{false};

 private:
  friend class omi_SingletonBase<utl_SystemErrorHandler>;
  utl_SystemErrorHandler();
  ~utl_SystemErrorHandler();
};

#endif  // UTL_SYSTEMERRORHANDLER_H
