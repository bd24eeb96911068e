#include "utl_Stream.h"

#include <cmath>
#include <cstring>

#include "pnt_NumberText.h"

namespace {

// Text written through without a break point flushes the stream at this pace.
const int kFlushColumn = 500;

// printf formats of a real, by which of width and precision are set: both, width only,
// precision only, neither.
const char* const kDoubleFormats[4] = {"%*.*lg", "%*.lg", "%.*lg", "%lg"};
const char* const kFloatFormats[4] = {"%*.*g", "%*.g", "%.*g", "%g"};

pnt_NumberText RealText(double value, int width, int precision, const char* const formats[4]) {
  width = pnt_NumberText::Field(width);
  precision = pnt_NumberText::Field(precision);
  if (width != 0 && precision != 0) return pnt_NumberText(formats[0], width, precision, value);
  if (width != 0) return pnt_NumberText(formats[1], width, value);
  if (precision != 0) return pnt_NumberText(formats[2], precision, value);
  return pnt_NumberText(formats[3], value);
}

}  // namespace

utl_Stream::utl_Stream(aio_ostream& stream, int lineWidth, int floatPrecision, int doublePrecision)
    : m_Stream(stream),
      m_LineWidth(lineWidth),
      m_FloatPrecision(floatPrecision),
      m_DoublePrecision(doublePrecision) {}

void utl_Stream::Write(const char* text, int length) {
  if (!m_BreakOpen) {
    m_Column += length;
    m_Stream.write(text, length);
    if (m_Column > kFlushColumn) {
      m_Column = 0;
      m_Stream.flush();
    }
  } else if (m_Column + m_Pending.Length() + length > m_LineWidth) {
    m_Stream.put('\n').flush();
    m_Column = m_Pending.Length();
    WritePending();
    m_BreakOpen = false;
    m_Column += length;
    m_Stream.write(text, length);
  } else {
    m_Pending.append(text, length, 0, length);
  }
}

void utl_Stream::WritePending() {
  m_Stream.write(m_Pending.c_str(), m_Pending.Length());
  m_Pending.Erase(0, -1);
}

void utl_Stream::Print(const char* text) {
  Write(text, text ? static_cast<int>(std::strlen(text)) : 0);
}

void utl_Stream::Print(const cow_String& text) {
  Write(text.c_str(), text.Length());
}

void utl_Stream::PrintReal(double value, int width, int precision, const char* const formats[4]) {
  if (m_HasSmallest && m_Smallest > std::fabs(value)) value = 0;
  pnt_NumberText text = RealText(value, width, precision, formats);
  if (text.Length() == 0) return;
  text.FixReal(width);
  Write(text.c_str(), text.Length());
}

void utl_Stream::Print(double value, int width, int precision) {
  PrintReal(value, width, precision, kDoubleFormats);
}

void utl_Stream::Print(float value, int width, int precision) {
  PrintReal(value, width, precision, kFloatFormats);
}

void utl_Stream::Print(int value, int width) {
  const pnt_NumberText text = pnt_NumberText::Integer(value, width, "%*i", "%i");
  Write(text.c_str(), text.Length());
}

void utl_Stream::Print(unsigned int value, int width) {
  const pnt_NumberText text = pnt_NumberText::Integer(value, width, "%*u", "%u");
  Write(text.c_str(), text.Length());
}

void utl_Stream::LineBreak() {
  m_BreakOpen = false;
  m_Column = m_Pending.Length();
  WritePending();
  m_Stream.put('\n').flush();
}

void utl_Stream::OptionalLineBreak() {
  if (!m_BreakOpen) {
    m_BreakOpen = true;
    return;
  }
  m_Column += m_Pending.Length();
  WritePending();
}

void utl_Stream::Flush() {
  WritePending();
  m_Stream.flush();
  m_Column = 0;
}

void utl_Stream::FixNumericString(char* text, int width) {
  pnt_NumberText::FixReal(text, width);
}

utl_Stream& endl(utl_Stream& s) {
  s.LineBreak();
  return s;
}

utl_StreamSmallReal::utl_StreamSmallReal(utl_Stream& stream, double smallest) : m_Stream(&stream) {
  m_Stream->m_HasSmallest = smallest > 0;
  m_Stream->m_Smallest = smallest > 0 ? smallest : 0;
}

void utl_StreamSmallReal::UnsetSmallestReal() {
  m_Stream->m_HasSmallest = false;
  m_Stream->m_Smallest = 0;
}
