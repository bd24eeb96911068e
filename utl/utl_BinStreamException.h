// The failures of the binary streams (utl_BinStream.h). A handler of utl_BinStreamException
// catches all four kinds; Propagate raises the concrete class again.
//
//   try {
//     int count = in.ReadInt();
//   } catch (const utl_BinStreamEOF&) {
//     ...                                  // the peer closed, perhaps in the middle of a value
//   } catch (const utl_BinStreamException& error) {
//     aio_cerr << error.UserReport() << aio_endl;
//   }
#ifndef UTL_BINSTREAMEXCEPTION_H
#define UTL_BINSTREAMEXCEPTION_H

#include "VRKBasExport.h"
#include "atr_String.h"
#include "nex_TextException.h"

// The descriptor can't be used as a stream ("*** ERROR: Can't set stream to binary mode: "
// and the system's text), and the base of the other three.
class VRKLNU_EXPORT utl_BinStreamException : public nex_TextException {
 public:
  explicit utl_BinStreamException(const atr_String& text);
  ~utl_BinStreamException() override;
  [[noreturn]] void Propagate() const override;
};

// A write failed; the text is the system's (strerror of `errorNumber`).
class VRKLNU_EXPORT utl_BinStreamWriteError : public utl_BinStreamException {
 public:
  explicit utl_BinStreamWriteError(int errorNumber);
  ~utl_BinStreamWriteError() override;
  [[noreturn]] void Propagate() const override;
};

// A read failed, or a string's length read from the stream is negative; the text is the
// system's (strerror of `errorNumber`).
class VRKLNU_EXPORT utl_BinStreamReadError : public utl_BinStreamException {
 public:
  explicit utl_BinStreamReadError(int errorNumber);
  ~utl_BinStreamReadError() override;
  [[noreturn]] void Propagate() const override;
};

// The peer closed before a value was complete: "*** ERROR: End of file on binary stream.".
class VRKLNU_EXPORT utl_BinStreamEOF : public utl_BinStreamException {
 public:
  utl_BinStreamEOF();
  ~utl_BinStreamEOF() override;
  [[noreturn]] void Propagate() const override;
};

#endif  // UTL_BINSTREAMEXCEPTION_H
