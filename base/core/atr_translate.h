// How user text is built. A message starts from a format literal, gets one substitution per
// placeholder by index (counted from 1), and ends as an atr_String:
//
//   atr_translate tr("Bad Cast: From `%s' To '%s'.");
//   atr_SubstituteFormat(tr, 1, toName);
//   atr_SubstituteFormat(tr, 2, fromName);
//   atr_String message = tr.Result();
//
// Placeholders are printf conversions with optional flags, width and precision. Unnumbered
// ones ("%s", "%d", "%u") take indices 1, 2, ... in order; numbered ones ("%2$s") name their
// index, so that a translation may reorder them. A value is formatted by its placeholder's
// conversion where that fits its kind (a number under "%d", "%u", "%x", "%c"; text under
// "%s"), giving exactly what printf gives for any flags, width and precision; otherwise it
// is its plain text. A placeholder with no value, or one that printf refuses (a width or
// precision past the int range), stays as written; "%%" gives "%". Indices run from 1 to
// atr_translate::kMaxArguments; others are ignored.
//
// The format is looked up in the translation catalogue first. The catalogue is a hook,
// the identity unless a program installs one.
#ifndef ATR_TRANSLATE_H
#define ATR_TRANSLATE_H

#include "VRKBasExport.h"
#include "atr_String.h"

// Gives the text to use for a format. The text must stay valid while it is in use.
typedef const char* (*atr_TranslationCatalogue)(const char* format);

// Installs the catalogue (null restores the identity); returns the one replaced.
VRKLNU_EXPORT atr_TranslationCatalogue atr_SetTranslationCatalogue(atr_TranslationCatalogue);

class VRKLNU_EXPORT atr_translate {
 public:
  static const int kMaxArguments = 16;

  explicit atr_translate(const char* format);
  atr_translate(const atr_translate&) = delete;
  atr_translate& operator=(const atr_translate&) = delete;

  atr_String Result() const;

 private:
  enum Kind { None, Text, Signed, Unsigned };
  struct Argument {
    Kind m_Kind = None;
    long long m_Number = 0;
    atr_String m_Text;
  };
  struct Placeholder;

  friend VRKLNU_EXPORT void atr_SubstituteFormat(atr_translate&, int, const atr_StringBase&);
  friend VRKLNU_EXPORT void atr_SubstituteFormat(atr_translate&, int, const char*);
  friend VRKLNU_EXPORT void atr_SubstituteFormat(atr_translate&, int, int);
  friend VRKLNU_EXPORT void atr_SubstituteFormat(atr_translate&, int, unsigned int);

  void SetText(int index, const atr_StringBase& text);
  void SetText(int index, const char* text);
  void SetNumber(int index, Kind kind, long long number);
  const Argument* At(int index) const;
  // False, with nothing appended, when printf refuses the placeholder.
  bool AppendValue(atr_String& out, const Placeholder& placeholder, const Argument& value) const;

  const char* m_Format;
  Argument m_Arguments[kMaxArguments];
};

VRKLNU_EXPORT void atr_SubstituteFormat(atr_translate& tr, int index, const atr_StringBase& value);
VRKLNU_EXPORT void atr_SubstituteFormat(atr_translate& tr, int index, const char* value);
VRKLNU_EXPORT void atr_SubstituteFormat(atr_translate& tr, int index, int value);
VRKLNU_EXPORT void atr_SubstituteFormat(atr_translate& tr, int index, unsigned int value);

#endif  // ATR_TRANSLATE_H
