// The failures of utl_File, one class per kind of operation. Each is a text error: the
// message is built once, in the constructor, from a fixed template with the failing step,
// the system's text for the error number (strerror) and the file name. A handler catches the
// concrete class, and Propagate raises that class again; Copy gives the plain
// nex_TextException with the same text.
//
//   try {
//     file.Read(buffer, size);
//   } catch (const utl_FileExceptionRead& error) {
//     aio_cerr << error.UserReport() << aio_endl;   // "*** Error: Read failed (utl_File: ..."
//   }
//
// The templates are the system's own and stay as they are: the close failure reads
// "***ERROR:" with no blank, and the full-disk template names its file as "%2$s" while the
// file name is its only argument, so that placeholder stays in the text as written.
#ifndef UTL_FILEEXCEPTION_H
#define UTL_FILEEXCEPTION_H

#include "VRKBasExport.h"
#include "atr_String.h"
#include "cow_String.h"
#include "nex_TextException.h"

// CloseHandle failed in the destructor of a utl_File.
class VRKLNU_EXPORT utl_FileExceptionClose : public nex_TextException {
 public:
  utl_FileExceptionClose(int errorNumber, const cow_String& file, const atr_String& step);
  ~utl_FileExceptionClose() override;
  [[noreturn]] void Propagate() const override;
};

// A step of utl_File::Extend failed.
class VRKLNU_EXPORT utl_FileExceptionExtend : public nex_TextException {
 public:
  utl_FileExceptionExtend(int errorNumber, const cow_String& file, const atr_String& step);
  ~utl_FileExceptionExtend() override;
  [[noreturn]] void Propagate() const override;
};

class VRKLNU_EXPORT utl_FileExceptionSeek : public nex_TextException {
 public:
  utl_FileExceptionSeek(int errorNumber, const cow_String& file, const atr_String& step);
  ~utl_FileExceptionSeek() override;
  [[noreturn]] void Propagate() const override;
};

class VRKLNU_EXPORT utl_FileExceptionLocation : public nex_TextException {
 public:
  utl_FileExceptionLocation(int errorNumber, const cow_String& file, const atr_String& step);
  ~utl_FileExceptionLocation() override;
  [[noreturn]] void Propagate() const override;
};

// With an error number when the system refused; without one for a read-only file.
class VRKLNU_EXPORT utl_FileExceptionFlush : public nex_TextException {
 public:
  utl_FileExceptionFlush(int errorNumber, const cow_String& file, const atr_String& step);
  utl_FileExceptionFlush(const cow_String& file, const atr_String& step);
  ~utl_FileExceptionFlush() override;
  [[noreturn]] void Propagate() const override;
};

class VRKLNU_EXPORT utl_FileExceptionRead : public nex_TextException {
 public:
  utl_FileExceptionRead(int errorNumber, const cow_String& file, const atr_String& step);
  ~utl_FileExceptionRead() override;
  [[noreturn]] void Propagate() const override;
};

// With an error number when the system refused; without one for a read-only file.
class VRKLNU_EXPORT utl_FileExceptionWrite : public nex_TextException {
 public:
  utl_FileExceptionWrite(int errorNumber, const cow_String& file, const atr_String& step);
  utl_FileExceptionWrite(const cow_String& file, const atr_String& step);
  ~utl_FileExceptionWrite() override;
  [[noreturn]] void Propagate() const override;
};

class VRKLNU_EXPORT utl_FileExceptionSize : public nex_TextException {
 public:
  utl_FileExceptionSize(int errorNumber, const cow_String& file, const atr_String& step);
  ~utl_FileExceptionSize() override;
  [[noreturn]] void Propagate() const override;
};

// Any failure to open but a missing file, a refusal by another opening's sharing included.
class VRKLNU_EXPORT utl_FileExceptionOpen : public nex_TextException {
 public:
  utl_FileExceptionOpen(int errorNumber, const cow_String& file, const atr_String& step);
  ~utl_FileExceptionOpen() override;
  [[noreturn]] void Propagate() const override;
};

// An existing file was asked for and there is none in its directory.
class VRKLNU_EXPORT utl_FileExceptionNoFile : public nex_TextException {
 public:
  utl_FileExceptionNoFile(const cow_String& file, const atr_String& step);
  ~utl_FileExceptionNoFile() override;
  [[noreturn]] void Propagate() const override;
};

// A write stored fewer bytes than it was given: the disk is taken to be full.
class VRKLNU_EXPORT utl_FileExceptionFull : public nex_TextException {
 public:
  explicit utl_FileExceptionFull(const cow_String& file);
  ~utl_FileExceptionFull() override;
  [[noreturn]] void Propagate() const override;
};

#endif  // UTL_FILEEXCEPTION_H
