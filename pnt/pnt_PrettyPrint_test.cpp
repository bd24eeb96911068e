#include "pnt_PrettyPrint.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <random>
#include <string>

#include "VRKLnuLifecycle.h"
#include "VRKTestLibrary.h"
#include "aio_ofstream.h"
#include "aio_ostrstream.h"

namespace {

class PrettyPrintTest : public ::testing::Test {
 protected:
  std::string Text() const { return m_Out.str().c_str(); }

  aio_ostrstream m_Out;
  pnt_PrettyPrint m_Printer{m_Out, 78, 2};
};

TEST_F(PrettyPrintTest, NumberTextsAndTheirRepairs) {
  pnt_PrettyPrint& pp = m_Printer;
  pp.Print(1.0f, 0, 0) << " ";
  pp.Print(2.5, 0, 9) << "|";  // no width: the precision doesn't count
  pp.Print(3.0, 8, 3) << "|";  // "       3" gains a "." and keeps its width
  pp.Print(1.5e-5, 10, 3) << "|";
  pp << 1e8 << " " << 0.1f << " " << -0.0 << "\n";
  pp.Print(static_cast<unsigned char>(7), 0) << " ";
  pp.Print(static_cast<unsigned char>(7), 4) << "|";
  pp.Print(static_cast<short>(-5), 4) << "|" << static_cast<unsigned short>(65535) << "|";
  pp.Print(-42, 6) << "|" << 4000000000u << "|";
  pp << reinterpret_cast<const void*>(255) << " ";
  pp.Print(reinterpret_cast<const void*>(255), 4) << "|";
  pp << true << false << 'x';
  pnt_prettyPrintGlobal(pp, 2.0) << endl;
  pnt_PrettyPrint wide(m_Out, 1000, 2);  // widths are held to what the buffer takes
  wide.Print(5, 100000).Print(1.0, 100000, 100000).Flush();
  EXPECT_EQ(Text(),
            "1. 2.5|      3.|   1.5e-05|1e+08 0.1 -0.\n"
            "7u    7u|  -5|65535|   -42|4000000000|0xff 0x00ff|TFx2.\n" +
                std::string(119, ' ') + "5" + std::string(118, ' ') + "1.\n");
}

TEST_F(PrettyPrintTest, TextIsHeldUntilFlushAndFlushAlwaysEndsTheLine) {
  m_Printer.Flush();
  EXPECT_EQ(Text(), "\n");
  m_Printer << pnt_indent << "held";
  EXPECT_EQ(Text(), "\n");
  m_Printer << endl << "next" << endl;
  // Flush ends no line of the printer's own: "next" is not indented.
  EXPECT_EQ(Text(), "\n  held\nnext\n");
}

TEST_F(PrettyPrintTest, IndentCountsForTextQueuedAfterIt) {
  m_Printer << "x" << pnt_indent << pnt_forcedBreak << "y" << pnt_undent << "\nz" << endl;
  EXPECT_EQ(Text(), "x\n  y\nz\n");
}

TEST_F(PrettyPrintTest, LongRunBreaksAtTheWidthWithUnindentedContinuations) {
  const std::string run(200, 'a');
  m_Printer << run.c_str() << pnt_forcedBreak << pnt_indent << run.c_str() << endl;
  const std::string a78(78, 'a'), a76(76, 'a');
  EXPECT_EQ(Text(), a78 + "\n" + a78 + "\n" + std::string(44, 'a') + "\n" +  //
                        "  " + a76 + "\n" + a76 + "\n" + std::string(48, 'a') + "\n");
}

TEST_F(PrettyPrintTest, ListWrapsAtSeparatorsOneLevelDeeper) {
  int values[100];
  for (int i = 0; i < 100; ++i)
    values[i] = i;
  m_Printer << pnt_indent << "values: ";
  pnt_printList(m_Printer, ",", values, 100) << endl << pnt_undent;
  const unsigned none[1] = {};
  const float floats[] = {1.0f, 0.5f};
  const double doubles[] = {2.0, 1e100};
  pnt_printList(m_Printer << "lists: ", ",", none, 0) << " ";
  pnt_printList(m_Printer, ";", floats, 2) << " ";
  pnt_printList(m_Printer, ",", doubles, 2) << endl;
  EXPECT_EQ(Text(),
            "  values: [0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17, \n"
            "    18, 19, 20, 21, 22, 23, 24, 25, 26, 27, 28, 29, 30, 31, 32, 33, 34, 35, \n"
            "    36, 37, 38, 39, 40, 41, 42, 43, 44, 45, 46, 47, 48, 49, 50, 51, 52, 53, \n"
            "    54, 55, 56, 57, 58, 59, 60, 61, 62, 63, 64, 65, 66, 67, 68, 69, 70, 71, \n"
            "    72, 73, 74, 75, 76, 77, 78, 79, 80, 81, 82, 83, 84, 85, 86, 87, 88, 89, \n"
            "    90, 91, 92, 93, 94, 95, 96, 97, 98, 99]\n"
            "lists: [] [1.; 0.5] [2., 1e+100]\n");
}

TEST_F(PrettyPrintTest, ConditionalBreaksFireAtTheLineLevelOrWhenTheirLineBreaks) {
  auto call = [this](const std::string& a, const std::string& b, const std::string& c) {
    m_Printer << "call(" << pnt_open << a.c_str() << "," << pnt_conditionalBreak << b.c_str() << ","
              << pnt_conditionalBreak << c.c_str() << pnt_close << ")" << pnt_forcedBreak;
  };
  call("a", "b", "c");
  const std::string a(40, 'A'), b(40, 'B'), c(40, 'C');
  call(a, b, c);
  EXPECT_EQ(Text(), "call(a,b,c)\ncall(" + a + ",\n" + b + ",\n" + c + ")\n");
  // At the level of the line, after a forced break, a conditional break fires at once.
  m_Printer << "x" << pnt_conditionalBreak << "y";
  EXPECT_EQ(Text(), "call(a,b,c)\ncall(" + a + ",\n" + b + ",\n" + c + ")\nx\n");
}

TEST_F(PrettyPrintTest, DebugFrameAndTags) {
  m_Printer.StartDebug("solver.cpp", 42);
  m_Printer << "body" << pnt_forcedBreak << "at ";
  m_Printer.PrintPtr(5).PrintMarker(7);
  m_Printer.EndDebug();
  EXPECT_EQ(Text(), "solver.cpp.42: \n  body\n  at <PointerAt 5> <Marker 7>= \n\n");
}

TEST_F(PrettyPrintTest, OddControlInputIsHarmless) {
  // An ESC and any other byte after it are two ordinary characters, even a newline or an
  // ESC; so is a sequence split over two writes. An undent or close with nothing to undo is
  // ignored.
  m_Printer << "\033x" << '\033' << 't' << pnt_undent << pnt_close << pnt_close << "\033";
  m_Printer << pnt_indent << "\033\n|\033\033t|" << pnt_undent;  // no break: "|" stays unindented
  m_Printer << pnt_indent << pnt_forcedBreak << "y" << endl;
  EXPECT_EQ(Text(), "\033x\033t\033\033\n|\033\033t|\n  y\n");
}

TEST_F(PrettyPrintTest, LongRunsOfBreaksStayBounded) {
  // 1000 conditional breaks the line level doesn't fire yet: the oldest of them go out
  // early, unfired, so that no more than 800 items are ever held; the forced break then
  // fires the 799 still held.
  m_Printer << "a";
  for (int i = 0; i < 1000; ++i)
    m_Printer << pnt_conditionalBreak;
  m_Printer << "b" << pnt_forcedBreak;
  // 1000 nested break chances on a width of 3.
  pnt_PrettyPrint narrow(m_Out, 3, 1);
  for (int i = 0; i < 1000; ++i)
    narrow << pnt_open << pnt_optionalBreak;
  narrow << "abcdef";
  for (int i = 0; i < 1000; ++i)
    narrow << pnt_close;
  narrow << endl;
  EXPECT_EQ(Text(), "a" + std::string(799, '\n') + "b\nabc\ndef\n");
}

// 100,000 random bytes among control sequences and long runs of breaks, on a narrow
// printer: every byte other than blanks and newlines comes out, in order.
TEST(PrettyPrintRandomTest, EveryCharacterComesOutInOrder) {
  std::mt19937 random(20240611);
  auto below = [&random](unsigned n) { return static_cast<unsigned>(random() % n); };
  aio_ostrstream out;
  pnt_PrettyPrint printer(out, 20, 2);
  std::string expected;
  for (int bytes = 0; bytes < 100000;) {
    std::string chunk;
    for (unsigned tokens = 1 + below(32); tokens > 0; --tokens) {
      const unsigned kind = below(1000);
      if (kind < 600) {
        const char c = static_cast<char>(1 + below(255));
        chunk += c == '\033' ? 'e' : c;
        expected += chunk.back();
        ++bytes;
      } else if (kind < 958) {
        // Indent less often than undent, so that lines keep room for text.
        chunk += '\033';
        chunk += "ttuuuu{{}}}nccccoooo"[below(20)];
      } else if (kind < 998) {
        chunk += '\033';
        chunk += static_cast<char>('A' + below(26));
        expected += chunk.substr(chunk.size() - 2);
      } else {
        const std::string sequence = std::string("\033") + "co{"[below(3)];
        for (unsigned n = below(1000); n > 0; --n)
          chunk += sequence;
      }
    }
    printer << chunk.c_str();
  }
  printer.Flush();
  std::string written = out.str().c_str();
  for (std::string* s : {&written, &expected})
    s->erase(std::remove_if(s->begin(), s->end(), [](char c) { return c == ' ' || c == '\n'; }),
             s->end());
  ASSERT_EQ(written.size(), expected.size());
  EXPECT_TRUE(written == expected)
      << "the output differs from byte "
      << std::mismatch(written.begin(), written.end(), expected.begin()).first - written.begin();
}

// The debug printer writes to the standard error stream, width 78 and step 2, and the
// package's stop deletes it.
TEST(DebugPrintTest, LivesOnStandardErrorWhileThePackageIsUp) {
  VRKScratchDir dir;
  const std::string path = dir.File("stderr");
  std::FILE* file = std::fopen(path.c_str(), "w");
  ASSERT_NE(file, nullptr);
  const int saved = dup(STDERR_FILENO);
  dup2(fileno(file), STDERR_FILENO);

  int tally = 0;
  VRKLnuBasicUtils_initialize(tally);  // a first start leaves the threading factory behind
  VRKLnuBasicUtils_finalize(tally);
  const unsigned long footprint = mem_Footprint();
  VRKLnuBasicUtils_initialize(tally);
  pnt_PrettyPrint& pp = pnt_debugPrint();
  EXPECT_EQ(&pnt_debugPrint(), &pp);
  pp << pnt_indent << std::string(100, 'd').c_str() << endl;
  VRKLnuBasicUtils_finalize(tally);
  EXPECT_EQ(mem_Footprint(), footprint);

  dup2(saved, STDERR_FILENO);
  close(saved);
  std::fclose(file);
  EXPECT_EQ(VRKReadFile(path), "  " + std::string(76, 'd') + "\n" + std::string(24, 'd') + "\n");
}

}  // namespace
