// The failures of utl_TempFile. A handler of utl_TempFileException catches them all;
// Propagate raises the concrete class again.
//
// utl_TempFileNoDirExc and utl_TempFileDirExc belong to the family for clients that raise
// them; the library doesn't. A temporary file with no usable directory fails with
// utl_TempFileCantExc, as intended.
#ifndef UTL_TEMPFILEEXCEPTION_H
#define UTL_TEMPFILEEXCEPTION_H

#include "VRKBasExport.h"
#include "atr_String.h"
#include "cow_String.h"
#include "nex_TextException.h"

class VRKLNU_EXPORT utl_TempFileException : public nex_TextException {
 public:
  explicit utl_TempFileException(const atr_String& text);
  ~utl_TempFileException() override;
  [[noreturn]] void Propagate() const override;
};

// "*** ERROR: Can't create unique temporary file name."
class VRKLNU_EXPORT utl_TempFileCantExc : public utl_TempFileException {
 public:
  utl_TempFileCantExc();
  ~utl_TempFileCantExc() override;
  [[noreturn]] void Propagate() const override;
};

// "*** ERROR: Can't find directory in which to place temporary file."
class VRKLNU_EXPORT utl_TempFileNoDirExc : public utl_TempFileException {
 public:
  utl_TempFileNoDirExc();
  ~utl_TempFileNoDirExc() override;
  [[noreturn]] void Propagate() const override;
};

// "*** ERROR: Can't create temporary file: <file>, system error: <text>"
class VRKLNU_EXPORT utl_TempFileOpenExc : public utl_TempFileException {
 public:
  utl_TempFileOpenExc(const cow_String& file, const cow_String& systemError);
  ~utl_TempFileOpenExc() override;
  [[noreturn]] void Propagate() const override;
};

// "*** ERROR: Not a directory: <path>"
class VRKLNU_EXPORT utl_TempFileDirExc : public utl_TempFileException {
 public:
  explicit utl_TempFileDirExc(const cow_String& path);
  ~utl_TempFileDirExc() override;
  [[noreturn]] void Propagate() const override;
};

#endif  // UTL_TEMPFILEEXCEPTION_H
