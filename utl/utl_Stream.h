// Text and numbers on an aio_ostream with optional line breaks: a caller marks the places
// where a line may break, and a piece of text that wouldn't fit on the line moves to the
// next one whole. Numbers come out in one fixed style.
//
//   utl_Stream out(aio_cout, 72, 6, 12);
//   out << "loads:";
//   for (int i = 0; i < count; ++i) {
//     out.OptionalLineBreak();     // " 1.5" and the like never split over two lines
//     out << " " << loads[i];
//   }
//   out << endl;
//
// Between two break points, text is held; if it no longer fits behind the text already on
// the line, a newline goes first and it starts the next line. Text longer than the line goes
// out whole on a line of its own; text shorter than a line is never split. Without a break
// point, text is written at once.
//
// Reals come out as printf's "%g" would write them, repaired to read as reals ("2" becomes
// "2.") with a two-digit exponent where the C library wrote three; utl_StreamSmallReal
// prints reals below a size as zero. Field widths and precisions beyond 120 are held to 120.
//
// Nothing is thrown; errors of the output stream stay with it. Held text that never reaches
// a break, Flush or LineBreak is lost at destruction. Threads: one thread at a time.
#ifndef UTL_STREAM_H
#define UTL_STREAM_H

#include "VRKBasExport.h"
#include "aio_ostream.h"
#include "cow_String.h"
#include "mem_Alloc.h"

class VRKLNU_EXPORT utl_Stream : public mem_AllocationOperators {
 public:
  // Writes on `stream`, which must outlive this object. `floatPrecision` and
  // `doublePrecision` are the precisions of operator<< for the two kinds of real.
  utl_Stream(aio_ostream& stream, int lineWidth, int floatPrecision, int doublePrecision);
  utl_Stream(const utl_Stream&) = delete;
  utl_Stream& operator=(const utl_Stream&) = delete;

  void Print(const char* text);
  void Print(const cow_String& text);
  // printf's "%g" with the width and precision that are not 0, then FixNumericString.
  void Print(double value, int width, int precision);
  void Print(float value, int width, int precision);
  // Right-aligned in `width` characters when it isn't 0.
  void Print(int value, int width);
  void Print(unsigned int value, int width);

  // Writes the held text, then a newline, and flushes. The column count then is the length
  // of the text that was held, not 0: that is intended and kept.
  void LineBreak();
  // Marks a place where the line may break: the first mark starts holding text; each later
  // one writes out what was held since the one before.
  void OptionalLineBreak();
  // Writes the held text and flushes the stream; the column count starts again at 0, and a
  // break point stays set.
  void Flush();

  // Makes the text of a real read as a real: with neither "." nor "e", a "." is appended and
  // a leading blank dropped, so that a field keeps its width; otherwise a three-digit
  // exponent starting with "0" loses that 0 ("1.5e+007" becomes "1.5e+07") and, with a
  // `width`, the text moves right one place behind a blank. `text` must have room for one
  // more character.
  static void FixNumericString(char* text, int width);

  friend utl_Stream& operator<<(utl_Stream& s, const char* text) {
    s.Print(text);
    return s;
  }
  friend utl_Stream& operator<<(utl_Stream& s, const cow_String& text) {
    s.Print(text);
    return s;
  }
  friend utl_Stream& operator<<(utl_Stream& s, double value) {
    s.Print(value, 0, s.m_DoublePrecision);
    return s;
  }
  friend utl_Stream& operator<<(utl_Stream& s, float value) {
    s.Print(value, 0, s.m_FloatPrecision);
    return s;
  }
  friend utl_Stream& operator<<(utl_Stream& s, int value) {
    s.Print(value, 0);
    return s;
  }
  friend utl_Stream& operator<<(utl_Stream& s, unsigned int value) {
    s.Print(value, 0);
    return s;
  }
  friend utl_Stream& operator<<(utl_Stream& s, utl_Stream& (*manipulator)(utl_Stream&)) {
    return manipulator(s);
  }

 private:
  friend class utl_StreamSmallReal;

  // The rules for text, with or without a break point.
  void Write(const char* text, int length);
  void WritePending();
  // Reals below the smallest become 0; `formats` are those of the four cases of width and
  // precision.
  void PrintReal(double value, int width, int precision, const char* const formats[4]);

  aio_ostream& m_Stream;
  int m_LineWidth;
  bool m_BreakOpen = false;
  cow_String m_Pending;
  bool m_HasSmallest = false;
  double m_Smallest = 0;
  int m_FloatPrecision;
  int m_DoublePrecision;
  int m_Column = 0;
};

// Calls LineBreak.
VRKLNU_EXPORT utl_Stream& endl(utl_Stream& s);

// A scoped setting of a utl_Stream: while it lives, reals whose size is below `smallest`
// print as zero ("0."). A `smallest` of 0 or less clears an earlier setting instead.
//
//   { utl_StreamSmallReal tiny(out, 1e-10); out << 1e-12; }   // "0."
class VRKLNU_EXPORT utl_StreamSmallReal : public mem_AllocationOperators {
 public:
  utl_StreamSmallReal(utl_Stream& stream, double smallest);
  ~utl_StreamSmallReal() { UnsetSmallestReal(); }
  utl_StreamSmallReal(const utl_StreamSmallReal&) = delete;
  utl_StreamSmallReal& operator=(const utl_StreamSmallReal&) = delete;

  // Reals print in full again.
  void UnsetSmallestReal();

 private:
  utl_Stream* m_Stream;
};

#endif  // UTL_STREAM_H
