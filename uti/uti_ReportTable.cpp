#include "uti_ReportTable.h"

#include <cfloat>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "nex_AssertException.h"

namespace {

// Characters of a full-width rule.
constexpr int kPageWidth = 79;
// Significant digits of a number when the precision gives none that fits the type.
constexpr int kDoubleDigits = 15;
constexpr int kFloatDigits = 6;

void Assert(bool condition, const char* text, int line) {
  if (!condition) nex_AssertException(text).Throw("uti_ReportTable", line);
}

// The text of a number with `digits` significant digits, always with a point or an exponent,
// and with an exponent of three digits that begin with a zero cut to two.
cow_String NumberText(double value, int digits) {
  if (value == 0) return "0.0";
  char text[64];
  std::snprintf(text, sizeof text, "%.*g", digits, value);
  if (!std::isfinite(value)) return text;
  char* e = std::strchr(text, 'e');
  if (e == nullptr) {
    if (std::strchr(text, '.') == nullptr) std::strcat(text, ".0");
  } else {
    char* digitsAt = e + 2;  // past the sign
    if (std::strlen(digitsAt) == 3 && digitsAt[0] == '0') std::memmove(digitsAt, digitsAt + 1, 3);
  }
  return text;
}

}  // namespace

uti_ReportDocument::uti_ReportDocument(const cow_String& title, uti_ReportMode mode,
                                       aio_ostream& stream)
    : stream(stream), mode(mode) {
  if (mode == uti_ReportHtml) stream << "<html><head><title>\n";
  if (!title.IsEmpty()) stream << title << "\n" << aio_flush;
  if (mode == uti_ReportHtml) stream << "</title></head><body>\n";
}

uti_ReportDocument::~uti_ReportDocument() {
  if (mode == uti_ReportHtml) stream << "</body></html>\n";
}

uti_ReportDocument& uti_ReportDocument::operator<<(const cow_String& text) {
  stream << text;
  return *this;
}

uti_ReportDocument& uti_ReportDocument::Endl() {
  if (mode == uti_ReportHtml) stream << "<br>";
  stream << "\n";
  return *this;
}

uti_ReportDocument& uti_ReportDocument::HorLine(int percent, const cow_String& text) {
  stream << "\n";
  if (mode == uti_ReportHtml) {
    stream << "<hr width=" << percent << "%>";
  } else {
    stream << text;
    for (int n = text.Length(); n < percent * kPageWidth / 100; ++n)
      stream << '-';
  }
  stream << "\n";
  return *this;
}

uti_ReportDocument& endl(uti_ReportDocument& document) {
  return document.Endl();
}

uti_ReportExtrema::uti_ReportExtrema() : maximum(-FLT_MAX), minimum(FLT_MAX) {}

uti_ReportTable::uti_ReportTable(uti_ReportDocument& document, const cow_String& title,
                                 const cow_String& margin)
    : document(document), stream(document.stream), mode(document.mode) {
  Assert(!document.hasTable, "!hasTable", __LINE__);
  document.hasTable = true;
  ResetAll();
  Begin(title);
  Margin(margin);
  Divider(" ");
}

uti_ReportTable::~uti_ReportTable() {
  Finish(cow_String());
  document.hasTable = false;
}

uti_ReportTable& uti_ReportTable::Margin(const cow_String& text) {
  margin = text;
  marginWidth = text.Length();
  return *this;
}

uti_ReportTable& uti_ReportTable::Divider(const cow_String& text) {
  divider = text;
  dividerWidth = text.Length();
  return *this;
}

uti_ReportTable& uti_ReportTable::Format(int width) {
  formats.Append(width);
  formatCount = formats.Count();
  lastFormat = width;
  return *this;
}

uti_ReportTable& uti_ReportTable::MaxColumn(int columns, int indent) {
  maxColumn = columns;
  wrapIndent = indent;
  return *this;
}

uti_ReportTable& uti_ReportTable::MaxWidth(int width, int indent) {
  maxWidth = width;
  wrapIndent = indent;
  return *this;
}

uti_ReportTable& uti_ReportTable::Zero(float value) {
  zero = value;
  return *this;
}

uti_ReportTable& uti_ReportTable::Precision(int digits) {
  precision = digits < 0 ? 0 : digits;
  return *this;
}

uti_ReportTable& uti_ReportTable::Blind(bool value) {
  blind = value;
  return *this;
}

uti_ReportTable& uti_ReportTable::Head(const cow_String& text, int span) {
  CheckActive();
  OpenCell();
  if (column == 0) heads = cow_List<int>();
  if (mode == uti_ReportHtml) Write("<th");
  heads.Append(span);
  WriteCell(text, span);
  return *this;
}

uti_ReportTable& uti_ReportTable::Head(const cow_List<cow_String>& texts) {
  for (int i = 0; i < texts.Count(); ++i)
    Head(texts[i], 1);
  return *this;
}

uti_ReportTable& uti_ReportTable::Column(const cow_String& text, int width) {
  Format(width == 0 ? text.Length() : width);
  return Head(text, 1);
}

uti_ReportTable& uti_ReportTable::HeadLine(bool merged, char fill) {
  if (!merged) {
    for (int i = 0; i < heads.Count(); ++i)
      Line(heads[i], fill);
    return *this;
  }
  int span = 0;
  for (int i = 0; i < heads.Count(); ++i)
    span += heads[i];
  if (span >= 1) Line(span, fill);
  return *this;
}

uti_ReportTable& uti_ReportTable::Line(int span, char fill) {
  CheckActive();
  if (mode != uti_ReportText) return *this;
  OpenCell();
  const int width = std::abs(span >= 0 ? CellWidth(span) : span);
  cow_String rule(width, cow_String::PreSize);
  for (int i = 0; i < width; ++i)
    rule += fill;
  Write(rule);
  ++column;
  position += width;
  return *this;
}

uti_ReportTable& uti_ReportTable::Out(const cow_String& text, int span) {
  CheckActive();
  if (!bodyStarted) {
    bodyStarted = true;
    if (mode == uti_ReportHtml) Write("<tbody align=right>\n");
  }
  if (extremaStart > 0) {
    if (logicalColumn == 0) labels = cow_List<cow_String>();
    if (logicalColumn < extremaStart) labels.Append(text);
  }
  WrapIfFull();
  OpenCell();
  if (mode == uti_ReportHtml) Write("<td");
  WriteCell(text, span);
  return *this;
}

uti_ReportTable& uti_ReportTable::Out(double value) {
  OutNumber(value, kDoubleDigits);
  return *this;
}

uti_ReportTable& uti_ReportTable::Out(float value) {
  OutNumber(value, kFloatDigits);
  return *this;
}

uti_ReportTable& uti_ReportTable::Out(int value) {
  return Out(cow_String(value), 0);
}

uti_ReportTable& uti_ReportTable::Out(const cow_List<cow_String>& values) {
  for (int i = 0; i < values.Count(); ++i)
    Out(values[i], 0);
  return *this;
}

uti_ReportTable& uti_ReportTable::Out(const cow_List<double>& values) {
  for (int i = 0; i < values.Count(); ++i)
    Out(values[i]);
  return *this;
}

uti_ReportTable& uti_ReportTable::Out(const cow_List<float>& values) {
  for (int i = 0; i < values.Count(); ++i)
    Out(values[i]);
  return *this;
}

uti_ReportTable& uti_ReportTable::Out(const cow_List<int>& values) {
  for (int i = 0; i < values.Count(); ++i)
    Out(values[i]);
  return *this;
}

uti_ReportTable& uti_ReportTable::Skip(int count) {
  if (count > 0) {
    for (int i = 0; i < count; ++i)
      Out(cow_String(), 0);
    return *this;
  }
  // Up to a column: at most as many cells as the column number, so that a wrap on the way
  // can't make it endless.
  const int target = count < 0 ? -count : wrapIndent;
  for (int i = column; i < target && column < target; ++i)
    Out(cow_String(), 0);
  return *this;
}

uti_ReportTable& uti_ReportTable::CalcExtrema(int start, int count) {
  extremaStart = start;
  extremaCount = count;
  for (int i = 0; i < count; ++i)
    extrema.Append(uti_ReportExtrema());
  return *this;
}

uti_ReportTable& uti_ReportTable::OutMax(int index) {
  const uti_ReportExtrema entry = extrema[index];
  OutExtreme(entry.maximumLabels, index, entry.maximum);
  return *this;
}

uti_ReportTable& uti_ReportTable::OutMin(int index) {
  const uti_ReportExtrema entry = extrema[index];
  OutExtreme(entry.minimumLabels, index, entry.minimum);
  return *this;
}

uti_ReportTable& uti_ReportTable::Endl() {
  NewLine();
  logicalColumn = 0;
  return *this;
}

uti_ReportTable& uti_ReportTable::Flush() {
  stream.flush();
  return *this;
}

void uti_ReportTable::Finish(const cow_String& text) {
  if (!isActive) return;
  if (column > 0) Endl();
  if (mode == uti_ReportHtml) Write("</table>\n");
  isActive = false;
  if (!text.IsEmpty()) Write(margin + text + "\n");
}

uti_ReportTable& uti_ReportTable::Reset(const cow_String& newTitle) {
  Finish(cow_String());
  ResetAll();
  Begin(newTitle);
  return *this;
}

uti_ReportTable& uti_ReportTable::Reuse(const cow_String& newTitle) {
  Finish(cow_String());
  ResetPersonal();
  Begin(newTitle);
  return *this;
}

cow_String uti_ReportTable::Squote(const cow_String& text) {
  return cow_String("'") + text + "'";
}

void uti_ReportTable::Begin(const cow_String& newTitle) {
  if (mode == uti_ReportHtml) Write("<table border>\n");
  isActive = true;
  title = newTitle;
  if (newTitle.IsEmpty()) return;
  if (mode == uti_ReportHtml) {
    // The caption is left open, as the reports have always written it.
    Write(cow_String("<caption><strong>") + newTitle + "</strong>\n");
  } else {
    Write(newTitle + "\n");
  }
}

void uti_ReportTable::ResetAll() {
  ResetCommon();
  ResetPersonal();
  heads = cow_List<int>();
}

void uti_ReportTable::ResetCommon() {
  marginWidth = dividerWidth = maxColumn = maxWidth = wrapIndent = precision = formatCount =
      lastFormat = 0;
  zero = 0;
  margin = divider = cow_String();
  formats = cow_List<int>();
}

void uti_ReportTable::ResetPersonal() {
  line = column = logicalColumn = position = extremaStart = extremaCount = 0;
  bodyStarted = isActive = blind = false;
  title = cow_String();
  extrema = cow_List<uti_ReportExtrema>();
  labels = cow_List<cow_String>();
}

void uti_ReportTable::NewLine() {
  CheckActive();
  if (mode == uti_ReportHtml) Write("</tr>");
  Write("\n");
  ++line;
  column = position = 0;
}

void uti_ReportTable::CheckActive() const {
  Assert(isActive, "isActive", __LINE__);
}

void uti_ReportTable::Write(const cow_String& text) {
  if (!blind) stream.write(text.c_str(), text.Length());
}

int uti_ReportTable::FormatOf(int at) const {
  return at < formats.Count() ? formats[at] : lastFormat;
}

void uti_ReportTable::OpenCell() {
  if (column == 0) {
    if (mode == uti_ReportHtml) {
      Write("<tr>");
    } else {
      Write(margin);
    }
    position = marginWidth;
    return;
  }
  if (mode == uti_ReportText) Write(divider);
  if (mode == uti_ReportComma) Write(", ");
  position += dividerWidth;
}

int uti_ReportTable::CellWidth(int span) {
  int width = FormatOf(column);
  if (span < 1) return width;
  width = std::abs(width);
  for (int i = 1; i < span; ++i) {
    ++column;
    width += std::abs(FormatOf(column)) + dividerWidth;
  }
  return width;
}

void uti_ReportTable::WriteCell(const cow_String& text, int span) {
  const int length = text.Length();
  int width = CellWidth(span);
  int padding = 0;
  if (span > 0) {
    if (length < width) padding = (width - length) / 2;
    if (mode == uti_ReportHtml) {
      Write(" align=center");
      if (span >= 2) Write(cow_String(" colspan=") + cow_String(span));
    }
  }
  const bool left = width < 0;
  if (left) {
    width = -width;
    if (mode == uti_ReportHtml) Write(" align=left");
  }
  if (mode == uti_ReportHtml) Write(">");
  if (!blind) {
    if (left) stream.setf(aio_ios::left);
    if (width >= 1) stream.width(width);
    // A heading padded behind by half the room is right-aligned by the field width: centred,
    // the odd blank in front. A data cell is never cut; a heading is.
    if (padding >= 1) {
      cow_String padded = text;
      for (int i = 0; i < padding; ++i)
        padded += ' ';
      stream.print_text(padded.c_str(), padded.Length());
    } else {
      stream.print_text(text.c_str(), span < 1 || length <= width ? length : width);
    }
    if (left) stream.unsetf(aio_ios::left);
  }
  ++column;
  ++logicalColumn;
  position += width > length ? width : length;
}

void uti_ReportTable::WrapIfFull() {
  const bool full =
      (maxColumn >= 1 && column >= maxColumn) || (maxWidth >= 1 && position >= maxWidth);
  if (!full) return;
  NewLine();
  // The indent cells don't count as columns of the row, so the extrema columns stay right.
  const int logical = logicalColumn;
  for (int i = 0; i < wrapIndent; ++i) {
    OpenCell();
    if (mode == uti_ReportHtml) Write("<td");
    WriteCell(cow_String(), 0);
  }
  logicalColumn = logical;
}

void uti_ReportTable::OutNumber(double value, int limit) {
  // The limit is a float: the value is held against it at that precision, so that the limit
  // itself, written as a double, doesn't print as zero.
  float asFloat = static_cast<float>(value);
  if (zero > 0 && asFloat > -zero && asFloat < zero) value = asFloat = 0;
  const int index = logicalColumn - extremaStart;
  if (extremaCount > 0 && index >= 0 && index < extremaCount) {
    uti_ReportExtrema& entry = extrema.Get(index);
    // Strictly beyond: the first of equal extremes keeps its labels.
    if (asFloat > entry.maximum) {
      entry.maximum = asFloat;
      entry.maximumLabels = labels;
    }
    if (asFloat < entry.minimum) {
      entry.minimum = asFloat;
      entry.minimumLabels = labels;
    }
  }
  const int digits = precision < 1 || precision >= limit ? limit : precision;
  Out(NumberText(value, digits), 0);
}

void uti_ReportTable::OutExtreme(const cow_List<cow_String>& rowLabels, int index, float value) {
  Out(rowLabels);
  for (int i = 0; i < index; ++i)
    Out(cow_String(), 0);
  Out(value);
}

uti_ReportTable& endl(uti_ReportTable& table) {
  return table.Endl();
}
