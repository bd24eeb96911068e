#include "utl_TempFileException.h"

utl_TempFileException::utl_TempFileException(const atr_String& text) : nex_TextException(text) {}
utl_TempFileException::~utl_TempFileException() = default;
void utl_TempFileException::Propagate() const {
  nex_RaiseCopy(*this);
}

utl_TempFileCantExc::utl_TempFileCantExc()
    : utl_TempFileException(nex_Translate("*** ERROR: Can't create unique temporary file name.")) {}
utl_TempFileCantExc::~utl_TempFileCantExc() = default;
void utl_TempFileCantExc::Propagate() const {
  nex_RaiseCopy(*this);
}

utl_TempFileNoDirExc::utl_TempFileNoDirExc()
    : utl_TempFileException(
          nex_Translate("*** ERROR: Can't find directory in which to place temporary file.")) {}
utl_TempFileNoDirExc::~utl_TempFileNoDirExc() = default;
void utl_TempFileNoDirExc::Propagate() const {
  nex_RaiseCopy(*this);
}

utl_TempFileOpenExc::utl_TempFileOpenExc(const cow_String& file, const cow_String& systemError)
    : utl_TempFileException(nex_Translate(
          "*** ERROR: Can't create temporary file: %1$s, system error: %2$s", file, systemError)) {}
utl_TempFileOpenExc::~utl_TempFileOpenExc() = default;
void utl_TempFileOpenExc::Propagate() const {
  nex_RaiseCopy(*this);
}

utl_TempFileDirExc::utl_TempFileDirExc(const cow_String& path)
    : utl_TempFileException(nex_Translate("*** ERROR: Not a directory: %s", path)) {}
utl_TempFileDirExc::~utl_TempFileDirExc() = default;
void utl_TempFileDirExc::Propagate() const {
  nex_RaiseCopy(*this);
}
