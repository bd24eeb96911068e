#include "nex_ExceptionFactory.h"

namespace {
// Raise sites as reports have always named them.
constexpr const char* kSource = "nex_ExceptionFactory";
constexpr int kPatternLine = 14;
constexpr int kExecLine = 21;
}  // namespace

nex_ExceptionFactory::~nex_ExceptionFactory() = default;

void nex_ExceptionFactory::RaisePatternError(int offset, const char* text) {
  VRKLnuRgxPatternException(offset, cow_String(text)).Throw(kSource, kPatternLine);
}

void nex_ExceptionFactory::RaiseExecError(int code) {
  VRKLnuRgxExecException(code).Throw(kSource, kExecLine);
}

VRKLnuRgxPatternException::VRKLnuRgxPatternException(int offset, const cow_String& text)
    : nex_TextException(nex_Translate("rgx match: error in regex at offset %d: %s", offset, text)),
      m_Offset(offset),
      m_PatternError(text) {}

VRKLnuRgxPatternException::~VRKLnuRgxPatternException() = default;

atr_String VRKLnuRgxPatternException::AsString() const {
  return nex_Translate("rgx_match: error in regex at offset %d: %s", m_Offset, m_PatternError);
}

void VRKLnuRgxPatternException::Propagate() const {
  nex_RaiseCopy(*this);
}

VRKLnuRgxExecException::VRKLnuRgxExecException(int code)
    : nex_TextException(nex_Translate("rgx match: exec error: %d", code)), m_Code(code) {}

VRKLnuRgxExecException::~VRKLnuRgxExecException() = default;

atr_String VRKLnuRgxExecException::AsString() const {
  return nex_Translate("rgx_match: exec error: %d", m_Code);
}

void VRKLnuRgxExecException::Propagate() const {
  nex_RaiseCopy(*this);
}
