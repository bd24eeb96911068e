#include "utl_SystemErrorHandler.h"

#include <cstdio>

template class omi_SingletonBase<utl_SystemErrorHandler>;

utl_SystemErrorHandler::utl_SystemErrorHandler() = default;
utl_SystemErrorHandler::~utl_SystemErrorHandler() = default;

void utl_SystemErrorHandler::handleError(const atr_String& text) {
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wformat-security"
  std::printf(text.c_str());
#pragma GCC diagnostic pop
  std::fflush(stdout);
}
