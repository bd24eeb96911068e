// Reports written column by column, in one of three renderings from the same calling code:
// aligned text, HTML, or comma-separated lines. A document frames the report on a stream; a
// table on it takes column widths, headings and cells, and does the aligning, centring,
// cutting of headings, wrapping of rows that are too wide, and the tracking of column minima
// and maxima:
//
//   uti_ReportDocument doc("Results", uti_ReportEnum::uti_ReportText, aio_cout);
//   uti_ReportTable table(doc, "Loads", "  ");
//   table.Column("Node", -6).Column("Force", 10) << endl;      // left- and right-aligned
//   table.HeadLine(false, '-') << endl;
//   table.Out("n1").Out(12.5) << endl;
//   table.Finish("");
//
// A width is signed: positive aligns right, negative aligns left, 0 gives a cell its natural
// width; a column beyond the widths given takes the last width given. Headings (Head) are
// centred in their columns and cut to fit; data cells (Out) are never cut and push the rest
// of the line along instead. A row wraps before a cell when it has `MaxColumn` cells or
// `MaxWidth` characters, and the continuation line is indented by whole blank cells that
// don't count as columns of the row. HTML mode writes the opening tags only (cells, rows and
// the table body are left for the browser to close), as its readers expect.
//
// Ownership: the document writes to a stream that the caller owns and keeps alive; a table
// refers to its document, which must outlive it. A document has one table at a time.
// Failures: a table opened on a document that has one, or used after Finish, throws
// nex_AssertException ("!hasTable", "isActive"); an extrema index outside the list ends the
// process. Errors of the stream are not looked at. Threads: a document and its table belong
// to one thread.
#ifndef UTI_REPORTTABLE_H
#define UTI_REPORTTABLE_H

#include "VRKBasExport.h"
#include "VRKBasSharedContainers.h"
#include "aio_ostream.h"
#include "cow_String.h"
#include "mem_Alloc.h"

class VRKLNU_EXPORT uti_ReportEnum {
 public:
  enum uti_ReportMode {
    uti_ReportText = 0,   // aligned text, cells joined by the divider
    uti_ReportHtml = 1,   // HTML
    uti_ReportComma = 2,  // text with ", " between cells, and no drawn lines
  };
};

class VRKLNU_EXPORT uti_ReportDocument : public uti_ReportEnum, public mem_AllocationOperators {
 public:
  // Writes the head of the document: in HTML the page head with the title, otherwise the
  // title on a line of its own (nothing for an empty title).
  uti_ReportDocument(const cow_String& title, uti_ReportMode mode, aio_ostream& stream);
  // Ends the page in HTML mode.
  ~uti_ReportDocument();
  uti_ReportDocument(const uti_ReportDocument&) = delete;
  uti_ReportDocument& operator=(const uti_ReportDocument&) = delete;

  uti_ReportDocument& operator<<(const cow_String& text);
  uti_ReportDocument& operator<<(uti_ReportDocument& (*manipulator)(uti_ReportDocument&)) {
    return manipulator(*this);
  }
  // A line break: "<br>" and a newline in HTML, a newline otherwise.
  uti_ReportDocument& Endl();
  // A rule of `percent` of the page: in HTML an <hr> of that width; otherwise `text` followed
  // by dashes up to percent * 79 / 100 characters, on a line of its own.
  uti_ReportDocument& HorLine(int percent, const cow_String& text);

  aio_ostream& Stream() const { return stream; }
  uti_ReportMode Mode() const { return mode; }

 private:
  friend class uti_ReportTable;

  aio_ostream& stream;
  uti_ReportMode mode;
  bool hasTable = false;
};

VRKLNU_EXPORT uti_ReportDocument& endl(uti_ReportDocument& document);

// The largest and smallest value of a column, with the labels of the rows they stood in.
struct VRKLNU_EXPORT uti_ReportExtrema {
  uti_ReportExtrema();

  float maximum;  // starts at the lowest finite float
  float minimum;  // starts at the greatest finite float
  cow_List<cow_String> maximumLabels;
  cow_List<cow_String> minimumLabels;
};

class VRKLNU_EXPORT uti_ReportTable : public uti_ReportEnum, public mem_AllocationOperators {
 public:
  // Opens the table on the document, with `title` as its caption, `margin` in front of every
  // line and one blank between cells.
  uti_ReportTable(uti_ReportDocument& document, const cow_String& title, const cow_String& margin);
  // Finishes the table and leaves the document free for the next one.
  ~uti_ReportTable();
  uti_ReportTable(const uti_ReportTable&) = delete;
  uti_ReportTable& operator=(const uti_ReportTable&) = delete;

  uti_ReportTable& Margin(const cow_String& text);
  uti_ReportTable& Divider(const cow_String& text);
  // Adds the width of the next column.
  uti_ReportTable& Format(int width);
  // Rows wrap before a cell once the line has `columns` cells; continuation lines start with
  // `indent` blank cells. 0 switches the limit off.
  uti_ReportTable& MaxColumn(int columns, int indent);
  // The same by characters on the line: a cell that starts before the limit is written whole.
  uti_ReportTable& MaxWidth(int width, int indent);
  // Values strictly between -value and value print as zero; 0 or less switches this off.
  uti_ReportTable& Zero(float value);
  // Significant digits of numbers: 0 (or a negative value, kept as 0) and values from the
  // type's limit on give 15 for a double and 6 for a float.
  uti_ReportTable& Precision(int digits);
  // While set, nothing reaches the stream; the table goes on counting.
  uti_ReportTable& Blind(bool blind);

  // A heading over `span` columns, centred and cut to their width.
  uti_ReportTable& Head(const cow_String& text, int span);
  uti_ReportTable& Head(const cow_List<cow_String>& texts);
  // Adds a column of `width` (the text's length when 0) and its heading.
  uti_ReportTable& Column(const cow_String& text, int width);
  // Draws a line under each heading of the current line, or one under all of them.
  uti_ReportTable& HeadLine(bool merged, char fill);
  // Draws `fill` across the width of `span` columns (0: the next column's own width), or
  // across -span characters when span is negative. Nothing in HTML and comma modes.
  uti_ReportTable& Line(int span, char fill);

  // A data cell; `span` above 0 centres it over that many columns and cuts it to them.
  uti_ReportTable& Out(const cow_String& text, int span = 0);
  // Numbers by the precision: "0.0" for zero, and always with a point or an exponent.
  uti_ReportTable& Out(double value);
  uti_ReportTable& Out(float value);
  uti_ReportTable& Out(int value);
  uti_ReportTable& Out(const cow_List<cow_String>& values);
  uti_ReportTable& Out(const cow_List<double>& values);
  uti_ReportTable& Out(const cow_List<float>& values);
  uti_ReportTable& Out(const cow_List<int>& values);
  // Blank cells: `count` of them, or (negative) up to column -count, or (0) up to the wrap
  // indent.
  uti_ReportTable& Skip(int count);

  // Tracks the largest and smallest numbers of `count` columns from column `start`; the
  // `start` columns before them label the rows.
  uti_ReportTable& CalcExtrema(int start, int count);
  // The labels of the row with the extreme value of extrema column `index`, then the value
  // in its own column.
  uti_ReportTable& OutMax(int index);
  uti_ReportTable& OutMin(int index);

  // Ends the row.
  uti_ReportTable& Endl();
  uti_ReportTable& operator<<(uti_ReportTable& (*manipulator)(uti_ReportTable&)) {
    return manipulator(*this);
  }
  uti_ReportTable& Flush();
  // Ends the open row and the table, then writes `text` (when not empty) after the margin on
  // a line of its own. Nothing happens to a finished table.
  void Finish(const cow_String& text);
  // Finish, then a new table with `title` from nothing: margin, divider, widths and limits
  // are cleared, the divider included (a table made by the constructor has a blank).
  uti_ReportTable& Reset(const cow_String& title);
  // Finish, then a new table with `title` that keeps margin, divider, widths and limits.
  uti_ReportTable& Reuse(const cow_String& title);

  // The text between two "'".
  static cow_String Squote(const cow_String& text);

 private:
  void Begin(const cow_String& title);
  void ResetAll();
  void ResetCommon();
  void ResetPersonal();
  void NewLine();
  void CheckActive() const;
  void Write(const cow_String& text);
  int FormatOf(int column) const;
  void OpenCell();
  // The width of a cell over `span` columns; moves `column` past all but the last of them.
  int CellWidth(int span);
  void WriteCell(const cow_String& text, int span);
  void WrapIfFull();
  void OutNumber(double value, int limit);
  void OutExtreme(const cow_List<cow_String>& labels, int index, float value);

  uti_ReportDocument& document;
  aio_ostream& stream;
  uti_ReportMode mode;
  // Reserved: no behaviour.
  cow_String reserved[6];

  // The common settings, which Reset clears.
  int marginWidth;
  int dividerWidth;
  int maxColumn;
  int maxWidth;
  int wrapIndent;
  int precision;
  int formatCount;
  int lastFormat;
  float zero;
  cow_String margin;
  cow_String divider;
  cow_List<int> formats;

  cow_List<int> heads;

  // The state of one table, which Reuse also clears.
  int line;
  int column;
  int logicalColumn;
  int position;
  int extremaStart;
  int extremaCount;
  bool bodyStarted;
  bool isActive;
  bool blind;
  cow_String title;
  cow_List<uti_ReportExtrema> extrema;
  cow_List<cow_String> labels;
};

VRKLNU_EXPORT uti_ReportTable& endl(uti_ReportTable& table);

#endif  // UTI_REPORTTABLE_H
