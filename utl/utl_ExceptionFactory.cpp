#include "utl_ExceptionFactory.h"

namespace {
// The raise site as reports have always named it.
constexpr const char* kSource = "utl_ExceptionFactory";
constexpr int kLine = 12;
}  // namespace

utl_ExceptionFactory::~utl_ExceptionFactory() = default;

void utl_ExceptionFactory::RaiseSystemError(cow_SystemErrorCode error) {
  VRKLnuSystemErrorException(error).Throw(kSource, kLine);
}

VRKLnuSystemErrorException::VRKLnuSystemErrorException(const cow_SystemErrorCode& error)
    : nex_TextException(nex_Translate("%s", error.GetText())), m_Error(error) {}

VRKLnuSystemErrorException::~VRKLnuSystemErrorException() = default;

atr_String VRKLnuSystemErrorException::AsString() const {
  return nex_Translate("System Error: %s", m_Error.GetText());
}

void VRKLnuSystemErrorException::Propagate() const {
  nex_RaiseCopy(*this);
}
