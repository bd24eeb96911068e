#include "utl_BinStreamException.h"

#include "cow_SystemErrorCode.h"

namespace {

atr_String SystemText(int errorNumber) {
  return nex_Translate("%s", cow_SystemErrorCode(static_cast<unsigned>(errorNumber)).GetText());
}

}  // namespace

utl_BinStreamException::utl_BinStreamException(const atr_String& text) : nex_TextException(text) {}
utl_BinStreamException::~utl_BinStreamException() = default;
void utl_BinStreamException::Propagate() const {
  nex_RaiseCopy(*this);
}

utl_BinStreamWriteError::utl_BinStreamWriteError(int errorNumber)
    : utl_BinStreamException(SystemText(errorNumber)) {}
utl_BinStreamWriteError::~utl_BinStreamWriteError() = default;
void utl_BinStreamWriteError::Propagate() const {
  nex_RaiseCopy(*this);
}

utl_BinStreamReadError::utl_BinStreamReadError(int errorNumber)
    : utl_BinStreamException(SystemText(errorNumber)) {}
utl_BinStreamReadError::~utl_BinStreamReadError() = default;
void utl_BinStreamReadError::Propagate() const {
  nex_RaiseCopy(*this);
}

utl_BinStreamEOF::utl_BinStreamEOF()
    : utl_BinStreamException(nex_Translate("*** ERROR: End of file on binary stream.")) {}
utl_BinStreamEOF::~utl_BinStreamEOF() = default;
void utl_BinStreamEOF::Propagate() const {
  nex_RaiseCopy(*this);
}
