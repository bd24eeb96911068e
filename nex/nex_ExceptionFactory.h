// The factory through which the core layer raises the library's regular-expression errors
// (VRKBasExceptionModel). Package nex installs one at its start and withdraws it at its
// stop; it has no state, so it may raise from any thread.
//
// The two errors it raises are plain text errors to everyone but their own catchers: they
// copy, report their class and persist as nex_TextException (type id 0x1F0002). Their
// stored text has "rgx match", their AsString "rgx_match"; both forms are intended.
#ifndef NEX_EXCEPTIONFACTORY_H
#define NEX_EXCEPTIONFACTORY_H

#include "VRKBasExceptionModel.h"
#include "VRKBasExport.h"
#include "cow_String.h"
#include "nex_TextException.h"

class VRKLNU_EXPORT nex_ExceptionFactory : public VRKBasExceptionFactory {
 public:
  ~nex_ExceptionFactory() override;
  // Raise VRKLnuRgxPatternException and VRKLnuRgxExecException.
  [[noreturn]] void RaisePatternError(int offset, const char* text) override;
  [[noreturn]] void RaiseExecError(int code) override;
};

// A regular expression that does not compile: where, and the compiler's text.
class VRKLNU_EXPORT VRKLnuRgxPatternException : public nex_TextException {
 public:
  VRKLnuRgxPatternException(int offset, const cow_String& text);
  ~VRKLnuRgxPatternException() override;

  // "rgx_match: error in regex at offset <offset>: <text>".
  atr_String AsString() const override;
  [[noreturn]] void Propagate() const override;

  int Offset() const { return m_Offset; }
  const cow_String& PatternError() const { return m_PatternError; }

 private:
  int m_Offset;
  cow_String m_PatternError;
};

// A regular expression that failed while matching, with the matcher's code.
class VRKLNU_EXPORT VRKLnuRgxExecException : public nex_TextException {
 public:
  explicit VRKLnuRgxExecException(int code);
  ~VRKLnuRgxExecException() override;

  // "rgx_match: exec error: <code>".
  atr_String AsString() const override;
  [[noreturn]] void Propagate() const override;

  int Code() const { return m_Code; }

 private:
  int m_Code;
};

#endif  // NEX_EXCEPTIONFACTORY_H
