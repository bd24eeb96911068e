// The text of one number as the library's printers write it (pnt_PrettyPrint, utl_Stream):
// printf formatting into a buffer of the object's own, and the repair that makes a real read
// alike whatever the C library.
//
//   pnt_NumberText text("%*.*g", pnt_NumberText::Field(width), pnt_NumberText::Field(9), x);
//   text.FixReal(width);   // "2" -> "2.", "1.5e+007" -> "1.5e+07"
#ifndef PNT_NUMBERTEXT_H
#define PNT_NUMBERTEXT_H

#include <algorithm>
#include <cstdio>

#include "VRKBasExport.h"

class VRKLNU_EXPORT pnt_NumberText {
 public:
  // Field widths and precisions are held to this, so that every number fits the buffer.
  static constexpr int kMaxField = 120;

  // printf of `format` with `args`; the empty text if printf fails. Width and precision
  // arguments must have gone through Field.
  template <class... Args>
  explicit pnt_NumberText(const char* format, Args... args) {
    const int length = std::snprintf(m_Text, sizeof m_Text - 1, format, args...);
    m_Length = std::clamp(length, 0, static_cast<int>(sizeof m_Text) - 2);
    m_Text[m_Length] = '\0';
  }

  // A whole number: `withWidth`, whose '*' takes the width, unless `width` is 0, then `plain`.
  template <class T>
  static pnt_NumberText Integer(T value, int width, const char* withWidth, const char* plain) {
    return width != 0 ? pnt_NumberText(withWidth, Field(width), value)
                      : pnt_NumberText(plain, value);
  }

  static int Field(int n) { return std::clamp(n, -kMaxField, kMaxField); }

  const char* c_str() const { return m_Text; }
  int Length() const { return m_Length; }

  // Makes the text of a real read as a real, and its exponent two digits where it can:
  // - with neither "." nor "e", a "." is appended; a leading blank is then dropped, so that
  //   a field keeps its width;
  // - otherwise, with an "e" whose exponent is three digits starting with "0", that 0 is
  //   removed; with a `width` the text then moves right one place behind a blank.
  // `text` must have room for one more character.
  static void FixReal(char* text, int width);
  void FixReal(int width);

 private:
  char m_Text[2 * kMaxField + 32];
  int m_Length;
};

#endif  // PNT_NUMBERTEXT_H
