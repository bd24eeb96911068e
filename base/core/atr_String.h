// Text meant for the user: what the translation operations produce and what exceptions
// carry. An atr_String is made only by atr_translate (atr_translate.h), also from plain text
// (format "%s"), so that every user message passes the translation catalogue. It shares its
// representation on copy like cow_String; see atr_StringBase for the rules.
#ifndef ATR_STRING_H
#define ATR_STRING_H

#include "VRKBasExport.h"
#include "atr_StringBase.h"

class aio_ostream;

class VRKLNU_EXPORT atr_String : public atr_StringBase {
 public:
  atr_String() = default;
  atr_String(const atr_String&) = default;
  atr_String& operator=(const atr_String&) = default;

  using atr_StringBase::operator[];
  atr_String& operator+=(const char* text);
  atr_String& operator+=(const atr_String& text);

 private:
  friend class atr_translate;
  explicit atr_String(const atr_StringBase& text) : atr_StringBase(text) {}
  void Append(const char* text, int length) { append(text, length, 0, 0x7fffffff); }
};

VRKLNU_EXPORT aio_ostream& operator<<(aio_ostream& os, const atr_String& text);

#endif  // ATR_STRING_H
