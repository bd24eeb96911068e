#include "utl_ResourceMonitor.h"

#include <unistd.h>

#include <regex>
#include <sstream>
#include <string>
#include <vector>

#include "VRKTestChild.h"
#include "VRKTestLibrary.h"

namespace {

using UtlResourceMonitorTest = VRKLibraryTest;

const char kLongText[] = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNO";  // 41 characters

// A line's expected form as a pattern: each numeric conversion of the format ("%7.1f",
// "%10d", "%.4f", "%d") stands for a right-aligned number of at least that width; the rest
// must match as it stands.
std::regex FormatPattern(const std::string& format) {
  static const std::regex conversion("%([0-9]*)(\\.[0-9]+)?([df])");
  std::string pattern;
  size_t done = 0;
  for (std::sregex_iterator it(format.begin(), format.end(), conversion), end; it != end; ++it) {
    for (char c : format.substr(done, it->position() - done))
      pattern += std::isalnum(static_cast<unsigned char>(c)) || c == ' ' ? std::string(1, c)
                                                                         : std::string("\\") + c;
    const std::string number = (*it)[3] == "d" ? "-?[0-9]+" : "-?[0-9]+\\.[0-9]+";
    const std::string width = (*it)[1].str();
    pattern += width.empty() ? number : "(?=[-. 0-9]{" + width + "}) *" + number;
    done = it->position() + it->length();
  }
  for (char c : format.substr(done))
    pattern += std::isalnum(static_cast<unsigned char>(c)) || c == ' ' ? std::string(1, c)
                                                                       : std::string("\\") + c;
  return std::regex(pattern);
}

// The way a scripted run is set up, and what it must write.
struct MonitorRun {
  const char* mode;  // LUN_RESOURCE_MONITOR
  int rank;
  const char* fileBase;
  bool numbered;
  bool inKilobytes;
  const char* log;
  bool fullMark, unixTime, markMethods;
};

const MonitorRun kRuns[] = {
    {"1", 3, "job", false, false, "job.use.3", false, false, false},
    {"full", 0, "job", false, true, "job.use", false, false, false},
    {"FULL", 0, "", true, false, "solve.use", true, false, false},
    {"DEBUG", 0, nullptr, true, false, "solve.use", false, true, false},
    {"METHOD", 1, nullptr, false, false, "solve.use.1", false, false, true},
    {"FULLMETHOD", 0, nullptr, false, false, "solve.use", true, false, true},
};

// The marks of the script below, in order, as the log shows their texts.
std::vector<std::string> MarkTexts(const MonitorRun& run) {
  std::vector<std::string> texts = {
      "solve-Start", "assembled",
      run.fullMark ? kLongText : "abcdefghijklmnopqrs_vwxyzABCDEFGHIJKLMNO"};
  if (run.markMethods) texts.push_back("method");
  texts.push_back("solve-End");
  return texts;
}

std::vector<std::string> ExpectedVRKLines(const MonitorRun& run) {
  std::vector<std::string> lines = {"!Snapshot = 42", "!Version = ?", "!Host = ? ?"};
  int count = 0;
  for (const std::string& text : MarkTexts(run)) {
    char phase[32], mark[64];
    std::snprintf(phase, sizeof phase, run.numbered ? "solve.%-2d" : "solve", ++count);
    std::snprintf(mark, sizeof mark, run.fullMark ? " %s" : " %40.40s", text.c_str());
    lines.push_back(std::string(phase) + (run.unixTime ? " %7.1f" : "") + " %7.1f" + mark +
                    " %7.1f %6.1f %10d %10d %.1f 0 0 0 0 %d %d 0 0 0 %d ");
  }
  lines.push_back(std::string(run.unixTime ? "!Phase,UnixTime,Wall,Mark,UserCPU,SysCPU,WSP,WS,"
                                           : "!Phase,Wall,Mark,UserCPU,SysCPU,WSP,WS,") +
                  "CPU,QPPP,QPP,QNPPP,QNPP,PageFaults,PeakPageFileUsage,0,0,0,ProcessID");
  lines.push_back("!Timer Summary                     # calls     CPU/call      CPU       Elapsed");
  lines.push_back("!Timer 3 :                 factor   1      %.4f      %.4f      %.1f ");
  lines.push_back("!Timer 20 :                   Self   1000      %.4f      %.4f      %.1f ");
  return lines;
}

// The script every run follows.
void Script(const MonitorRun& run) {
  utl_ResourceMonitor& monitor = utl_ResourceMonitor::Instance();
  monitor.Initialize("solve", run.rank, run.fileBase, run.numbered, run.inKilobytes);
  monitor.Mark("assembled");
  monitor.Mark(kLongText);
  monitor.MarkMethod("method");
  monitor.StartTimer(3, "factor");
  monitor.StartTimer(3, "not the name");
  monitor.StopTimer(3);
  monitor.StartTimer(4, "never stopped");
  for (int index : {-1, 21}) {
    monitor.StartTimer(index, "out of range");
    monitor.StopTimer(index);
  }
  utl_ResourceMonitor::Finalize();
}

// The peak and present working set of a mark line, counted from its end.
std::pair<long long, long long> WorkingSets(const std::string& line) {
  std::vector<std::string> tokens;
  std::istringstream in(line);
  for (std::string token; in >> token;)
    tokens.push_back(token);
  return {std::stoll(tokens[tokens.size() - 13]), std::stoll(tokens[tokens.size() - 12])};
}

// In a child: runs the script of the run given in the arguments in the directory given, and
// exits 1 if the monitor is still on after Finalize made a fresh one.
void RunChildScript() {
  if (VRKChildRole().empty()) return;
  const std::vector<std::string> args = VRKChildArgs();
  if (chdir(args[1].c_str()) != 0) VRKChildExit(2);
  Script(kRuns[std::stoi(args[0])]);
  VRKChildExit(utl_ResourceMonitor::Instance().IsActive() ? 1 : 0);
}

TEST_F(UtlResourceMonitorTest, AScriptedRunWritesItsLogLineByLine) {
  RunChildScript();
  for (size_t i = 0; i < std::size(kRuns); ++i) {
    const MonitorRun& run = kRuns[i];
    SCOPED_TRACE(run.mode);
    VRKScratchDir dir;
    VRKChild child("run");
    child.env = {{"LUN_RESOURCE_MONITOR", run.mode}, {"LUNARA_SEQ", "42"}};
    child.unset = {"LUNARA_VERSION", "COMPUTERNAME", "PROCESSOR_IDENTIFIER"};
    child.args = {std::to_string(i), dir.Path()};
    ASSERT_EQ(child.Run().exitCode, 0);

    const std::vector<std::string> lines = VRKLines(VRKReadFile(dir.File(run.log)));
    const std::vector<std::string> expected = ExpectedVRKLines(run);
    ASSERT_EQ(lines.size(), expected.size()) << VRKReadFile(dir.File(run.log));
    for (size_t n = 0; n < lines.size(); ++n)
      EXPECT_TRUE(std::regex_match(lines[n], FormatPattern(expected[n])))
          << lines[n] << "\nexpected\n"
          << expected[n];
    // Memory in bytes, or in KiB: a test process holds between 4 MiB and 4 GiB.
    const auto [peak, present] = WorkingSets(lines[3]);
    EXPECT_GE(peak, present);
    EXPECT_GT(present, run.inKilobytes ? 4 << 10 : 4 << 20);
    EXPECT_LT(present, run.inKilobytes ? 4 << 20 : 4ll << 30);
  }
}

TEST_F(UtlResourceMonitorTest, OffWithoutTheVariableAndTheHostFromTheEnvironment) {
  RunChildScript();
  VRKScratchDir dir;
  VRKChild off("run");
  off.unset = {"LUN_RESOURCE_MONITOR"};
  off.args = {"0", dir.Path()};
  EXPECT_EQ(off.Run().exitCode, 0);
  EXPECT_EQ(access(dir.File("job.use.3").c_str(), F_OK), -1);

  VRKChild on("run");
  on.env = {{"LUN_RESOURCE_MONITOR", "1"},
            {"COMPUTERNAME", "node7"},
            {"PROCESSOR_IDENTIFIER", "x86_64 Family 6"},
            {"LUNARA_VERSION", "2024.1"}};
  on.args = {"0", dir.Path()};
  ASSERT_EQ(on.Run().exitCode, 0);
  const std::vector<std::string> lines = VRKLines(VRKReadFile(dir.File("job.use.3")));
  ASSERT_GE(lines.size(), 3u);
  EXPECT_EQ(lines[1], "!Version = 2024.1");
  EXPECT_EQ(lines[2], "!Host = node7 x86_64 Family 6");
}

}  // namespace
