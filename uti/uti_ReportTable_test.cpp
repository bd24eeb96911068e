#include "uti_ReportTable.h"

#include <gtest/gtest.h>

#include <string>

#include "VRKTestLibrary.h"
#include "aio_ostrstream.h"
#include "nex_AssertException.h"
#include "uti_FormatMap.h"

namespace {

using Mode = uti_ReportEnum::uti_ReportMode;

class ReportTableTest : public VRKLibraryTest {
 protected:
  std::string Text() const { return os.str().c_str(); }

  aio_ostrstream os;
};

// Two rows of loads with their extrema, the way a solver reports them; rows wrap after two
// cells, the rest indented by one column.
std::string LoadReport(Mode mode) {
  aio_ostrstream os;
  {
    uti_ReportDocument doc("Report", mode, os);
    uti_ReportTable table(doc, "Loads", "  ");
    table.Column("Node", -6).Column("Fx", 8).Column("Fy", 8) << endl;
    table.HeadLine(false, '-') << endl;
    table.Zero(0.001f).CalcExtrema(1, 2).MaxColumn(2, 1);
    table.Out("n1").Out(1.5).Out(-2.0) << endl;
    table.Out("n2").Out(3.0).Out(0.0005) << endl;
    table.OutMax(0) << endl;
    table.OutMin(1) << endl;
    table.Finish("end");
  }
  return os.str().c_str();
}

TEST_F(ReportTableTest, ALoadReportInEachMode) {
  EXPECT_EQ(LoadReport(uti_ReportEnum::uti_ReportText),
            "Report\n"
            "Loads\n"
            "   Node     Fx       Fy   \n"
            "  ------ -------- --------\n"
            "  n1          1.5\n"
            "             -2.0\n"
            "  n2          3.0\n"
            "              0.0\n"
            "  n2          3.0\n"
            "  n1             \n"
            "             -2.0\n"
            "  end\n");
  EXPECT_EQ(LoadReport(uti_ReportEnum::uti_ReportComma),
            "Report\n"
            "Loads\n"
            "   Node ,    Fx   ,    Fy   \n"
            "\n"
            "  n1    ,      1.5\n"
            "        ,     -2.0\n"
            "  n2    ,      3.0\n"
            "        ,      0.0\n"
            "  n2    ,      3.0\n"
            "  n1    ,         \n"
            "        ,     -2.0\n"
            "  end\n");
  EXPECT_EQ(LoadReport(uti_ReportEnum::uti_ReportHtml),
            "<html><head><title>\nReport\n</title></head><body>\n"
            "<table border>\n<caption><strong>Loads</strong>\n"
            "<tr><th align=center> Node <th align=center>   Fx   <th align=center>   Fy   </tr>\n"
            "</tr>\n"
            "<tbody align=right>\n"
            "<tr><td align=left>n1    <td>     1.5</tr>\n"
            "<tr><td align=left>      <td>    -2.0</tr>\n"
            "<tr><td align=left>n2    <td>     3.0</tr>\n"
            "<tr><td align=left>      <td>     0.0</tr>\n"
            "<tr><td align=left>n2    <td>     3.0</tr>\n"
            "<tr><td align=left>n1    <td>        </tr>\n"
            "<tr><td align=left>      <td>    -2.0</tr>\n"
            "</table>\n"
            "  end\n"
            "</body></html>\n");
}

TEST_F(ReportTableTest, HeadingsAreCentredAndCutDataCellsOverflow) {
  uti_ReportDocument doc("", uti_ReportEnum::uti_ReportText, os);
  uti_ReportTable table(doc, "", "");
  table.Format(7).Format(5).Format(4).Format(6);
  table.Head("ab", 1).Head("abcdefgh", 1).Head("x", 2) << endl;
  table.Out("abcdefgh").Out(1) << endl;
  table.Reuse("");  // keeps the widths: 7 and 5
  table.Divider("|").Out("r").Out("l") << endl;
  table.Reset("");
  table.Divider(" ").Format(8).Format(-8).Out("r").Out("l") << endl;
  EXPECT_EQ(Text(),
            "   ab   abcde      x     \n"
            "abcdefgh     1\n"
            "      r|    l\n"
            "       r l       \n");

  // Over widths 4 and 6 with a divider of one, a heading of span 2 is 11 wide.
  aio_ostrstream html;
  uti_ReportDocument page("", uti_ReportEnum::uti_ReportHtml, html);
  uti_ReportTable spans(page, "", "");
  spans.Format(4).Format(6).Head("x", 2);
  EXPECT_NE(std::string(html.str().c_str()).find("<th align=center colspan=2>     x     "),
            std::string::npos);
}

TEST_F(ReportTableTest, RowsWrapByCellsOrWidthAndExtremaKeepTheirColumns) {
  uti_ReportDocument doc("", uti_ReportEnum::uti_ReportText, os);
  uti_ReportTable table(doc, "", "");
  table.MaxColumn(3, 1).CalcExtrema(1, 6);
  cow_List<double> values;
  for (int i = 1; i <= 6; ++i)
    values.Append(i);
  table.Out("r1").Out(values) << endl;
  table.Out("r2").Out(values) << endl;
  table.MaxColumn(0, 0).OutMax(5) << endl;
  table.MaxWidth(6, 0);
  table.Out("aaa").Out("bbb").Out("c").Out("d") << endl;
  EXPECT_EQ(Text(),
            "r1 1.0 2.0\n 3.0 4.0\n 5.0 6.0\n"
            "r2 1.0 2.0\n 3.0 4.0\n 5.0 6.0\n"
            "r1      6.0\n"  // the first of equal maxima keeps its row
            "aaa bbb\nc d\n");
}

TEST_F(ReportTableTest, NumbersAlwaysShowAPointAndTakeThePrecision) {
  uti_ReportDocument doc("", uti_ReportEnum::uti_ReportComma, os);
  uti_ReportTable table(doc, "", "");
  table.Out(0.0).Out(3.0).Out(1e100).Out(0.1).Out(2.5e-7f).Out(-7) << endl;
  table.Zero(0.001f).Out(0.0005).Out(0.001).Out(-0.0009) << endl;
  table.Precision(3).Out(3.14159).Out(123456.0).Out(3.14159f) << endl;
  table.Precision(40).Out(1.0 / 3).Out(1.0f / 3) << endl;
  table.Precision(-1).Out(2.0 / 3) << endl;
  EXPECT_EQ(Text(),
            "0.0, 3.0, 1e+100, 0.1, 2.5e-07, -7\n"
            "0.0, 0.001, 0.0\n"
            "3.14, 1.23e+05, 3.14\n"
            "0.333333333333333, 0.333333\n"
            "0.666666666666667\n");
}

TEST_F(ReportTableTest, DocumentRulesAndLineBreaks) {
  {
    uti_ReportDocument doc("T", uti_ReportEnum::uti_ReportText, os);
    doc.HorLine(100, "");
    doc.HorLine(50, "Title ");
    doc.HorLine(5, "too long") << cow_String("x") << endl;
  }
  EXPECT_EQ(Text(), "T\n\n" + std::string(79, '-') + "\n\nTitle " + std::string(33, '-') +
                        "\n\ntoo long\nx\n");
  aio_ostrstream html;
  {
    uti_ReportDocument page("", uti_ReportEnum::uti_ReportHtml, html);
    page.HorLine(50, "ignored") << cow_String("x") << endl;
  }
  EXPECT_STREQ(
      html.str().c_str(),
      "<html><head><title>\n</title></head><body>\n\n<hr width=50%>\nx<br>\n</body></html>\n");
}

TEST_F(ReportTableTest, ResetClearsTheSettingsReuseKeepsThemAndBlindWritesNothing) {
  uti_ReportDocument doc("", uti_ReportEnum::uti_ReportText, os);
  uti_ReportTable table(doc, "", "> ");
  table.Format(3).Blind(true).Out("a").Out("b") << endl;
  table.Finish("");
  EXPECT_EQ(Text(), "");
  EXPECT_THROW(table.Out("late"), nex_AssertException);
  table.Reuse("again");
  table.Out("a").Out("b") << endl;  // margin, divider and widths kept; sight back
  table.Reset("anew");
  table.Out("a").Out("b") << endl;  // nothing kept, not even the divider
  table.Finish("done");
  EXPECT_EQ(Text(), "again\n>   a   b\nanew\nab\ndone\n");
  try {
    uti_ReportTable second(doc, "", "");
    FAIL() << "a second table opened";
  } catch (const nex_AssertException& error) {
    EXPECT_EQ(error.AsString(), "!hasTable");
  }
  EXPECT_EQ(uti_ReportTable::Squote("x"), "'x'");
}

TEST_F(ReportTableTest, EachThreadStartsWithTheFourNamedFormats) {
  cow_Map<cow_String, VRKBasUtlNumFormat>& formats = uti_FormatMap::Instance().Map();
  ASSERT_EQ(formats.Count(), 4);
  const VRKBasUtlNumFormat built(VRKBasUtlFixedFormat);
  const VRKBasUtlNumFormat& step = formats.ConstGet("floatStepFormat");
  const VRKBasUtlNumFormat& geometry = formats.ConstGet("geometryFormat");
  EXPECT_EQ(formats.ConstGet("defaultFormat").m_Width, built.m_Width);
  EXPECT_EQ(step.m_Notation, 2);
  EXPECT_EQ(step.m_Width, 1);
  EXPECT_EQ(step.m_ShowPoint, built.m_ShowPoint);
  EXPECT_EQ(geometry.m_Notation, built.m_Notation);
  EXPECT_EQ(geometry.Format(0.25), "    0.250000");
  EXPECT_EQ(formats.ConstGet("fieldReportFormat").m_Precision, 0);
  formats.Get("geometryFormat").m_Width = 3;
  EXPECT_EQ(uti_FormatMap::Instance().Map().ConstGet("geometryFormat").m_Width, 3);
}

}  // namespace
