#include "utl_FileException.h"

#include "cow_SystemErrorCode.h"

namespace {

// Templates with an error line take the step, the system's text and the file name.
atr_String WithError(const char* format, int errorNumber, const cow_String& file,
                     const atr_String& step) {
  const cow_String text = cow_SystemErrorCode(static_cast<unsigned>(errorNumber)).GetText();
  return nex_Translate(format, step, text, file);
}

// Templates without one take the step and the file name.
atr_String WithoutError(const char* format, const cow_String& file, const atr_String& step) {
  return nex_Translate(format, step, file);
}

}  // namespace

utl_FileExceptionClose::utl_FileExceptionClose(int errorNumber, const cow_String& file,
                                               const atr_String& step)
    : nex_TextException(WithError("***ERROR: File close failed (utl_File: %1$s)\nerror: %2$s\n"
                                  "file: %3$s",
                                  errorNumber, file, step)) {}
utl_FileExceptionClose::~utl_FileExceptionClose() = default;
void utl_FileExceptionClose::Propagate() const {
  nex_RaiseCopy(*this);
}

utl_FileExceptionExtend::utl_FileExceptionExtend(int errorNumber, const cow_String& file,
                                                 const atr_String& step)
    : nex_TextException(WithError("*** Error: Extend failed (utl_File: %1$s)\nerror: %2$s\n"
                                  "file: %3$s",
                                  errorNumber, file, step)) {}
utl_FileExceptionExtend::~utl_FileExceptionExtend() = default;
void utl_FileExceptionExtend::Propagate() const {
  nex_RaiseCopy(*this);
}

utl_FileExceptionSeek::utl_FileExceptionSeek(int errorNumber, const cow_String& file,
                                             const atr_String& step)
    : nex_TextException(WithError("*** Error: Seek failed (utl_File: %1$s)\nerror: %2$s\n"
                                  "file: %3$s",
                                  errorNumber, file, step)) {}
utl_FileExceptionSeek::~utl_FileExceptionSeek() = default;
void utl_FileExceptionSeek::Propagate() const {
  nex_RaiseCopy(*this);
}

utl_FileExceptionLocation::utl_FileExceptionLocation(int errorNumber, const cow_String& file,
                                                     const atr_String& step)
    : nex_TextException(WithError("*** Error: Get file location failed (utl_File: %1$s)\n"
                                  "error: %2$s\nfile: %3$s",
                                  errorNumber, file, step)) {}
utl_FileExceptionLocation::~utl_FileExceptionLocation() = default;
void utl_FileExceptionLocation::Propagate() const {
  nex_RaiseCopy(*this);
}

utl_FileExceptionFlush::utl_FileExceptionFlush(int errorNumber, const cow_String& file,
                                               const atr_String& step)
    : nex_TextException(WithError("*** Error: Flush failed (utl_File: %1$s)\nerror: %2$s\n"
                                  "file: %3$s",
                                  errorNumber, file, step)) {}
utl_FileExceptionFlush::utl_FileExceptionFlush(const cow_String& file, const atr_String& step)
    : nex_TextException(
          WithoutError("*** Error: Flush failed (utl_File: %1$s)\nfile name: %2$s", file, step)) {}
utl_FileExceptionFlush::~utl_FileExceptionFlush() = default;
void utl_FileExceptionFlush::Propagate() const {
  nex_RaiseCopy(*this);
}

utl_FileExceptionRead::utl_FileExceptionRead(int errorNumber, const cow_String& file,
                                             const atr_String& step)
    : nex_TextException(WithError("*** Error: Read failed (utl_File: %1$s)\nerror: %2$s\n"
                                  "file: %3$s",
                                  errorNumber, file, step)) {}
utl_FileExceptionRead::~utl_FileExceptionRead() = default;
void utl_FileExceptionRead::Propagate() const {
  nex_RaiseCopy(*this);
}

utl_FileExceptionWrite::utl_FileExceptionWrite(int errorNumber, const cow_String& file,
                                               const atr_String& step)
    : nex_TextException(WithError("*** Error: Write failed (utl_File: %1$s)\nerror: %2$s\n"
                                  "file: %3$s",
                                  errorNumber, file, step)) {}
utl_FileExceptionWrite::utl_FileExceptionWrite(const cow_String& file, const atr_String& step)
    : nex_TextException(
          WithoutError("*** Error: Write failed (utl_File: %1$s)\nfile name: %2$s", file, step)) {}
utl_FileExceptionWrite::~utl_FileExceptionWrite() = default;
void utl_FileExceptionWrite::Propagate() const {
  nex_RaiseCopy(*this);
}

utl_FileExceptionSize::utl_FileExceptionSize(int errorNumber, const cow_String& file,
                                             const atr_String& step)
    : nex_TextException(WithError("*** Error: Get file size failed (utl_File: %1$s)\n"
                                  "error: %2$s\nfile: %3$s",
                                  errorNumber, file, step)) {}
utl_FileExceptionSize::~utl_FileExceptionSize() = default;
void utl_FileExceptionSize::Propagate() const {
  nex_RaiseCopy(*this);
}

utl_FileExceptionOpen::utl_FileExceptionOpen(int errorNumber, const cow_String& file,
                                             const atr_String& step)
    : nex_TextException(WithError("*** Error: File open failed (utl_File: %1$s)\nerror: %2$s\n"
                                  "file: %3$s",
                                  errorNumber, file, step)) {}
utl_FileExceptionOpen::~utl_FileExceptionOpen() = default;
void utl_FileExceptionOpen::Propagate() const {
  nex_RaiseCopy(*this);
}

utl_FileExceptionNoFile::utl_FileExceptionNoFile(const cow_String& file, const atr_String& step)
    : nex_TextException(
          WithoutError("*** Error: No such file (utl_File: %1$s)\nfile name: %2$s", file, step)) {}
utl_FileExceptionNoFile::~utl_FileExceptionNoFile() = default;
void utl_FileExceptionNoFile::Propagate() const {
  nex_RaiseCopy(*this);
}

// The file name is bound at position 1 while the template names position 2: intended.
utl_FileExceptionFull::utl_FileExceptionFull(const cow_String& file)
    : nex_TextException(
          nex_Translate("*** Error: Free disk space depleted\nfile name: %2$s", file)) {}
utl_FileExceptionFull::~utl_FileExceptionFull() = default;
void utl_FileExceptionFull::Propagate() const {
  nex_RaiseCopy(*this);
}
