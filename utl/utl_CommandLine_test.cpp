#include "utl_CommandLine.h"

#include <gtest/gtest.h>

#include <climits>
#include <cstring>
#include <fstream>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

#include "VRKLnuLifecycle.h"
#include "VRKTestChild.h"
#include "VRKTestLibrary.h"
#include "typ_DebugFlags.h"

// The command line is one per process: every case runs in a child of the test program, which
// starts the library and sets the line up from the child's arguments.
namespace {

// In the child: the library up and utl_CommandLineSetup("prog", args...).
void SetUpFromChildArgs() {
  static int tally = 0;
  VRKLnuBasicUtils_initialize(tally);
  VRKSetCommandLine(VRKChildArgs());
}

// Runs the current test in a child with this role and these arguments, which must end well.
VRKChildResult RunChild(const char* role, const std::vector<std::string>& args) {
  VRKChild child(role);
  child.args = args;
  const VRKChildResult result = child.Run();
  EXPECT_EQ(result.exitCode, 0) << result.out << result.err;
  // A race found by ThreadSanitizer doesn't change the child's exit code.
  EXPECT_EQ(result.err.find("ThreadSanitizer"), std::string::npos) << result.err;
  return result;
}

// The child's account of the line: its arguments, the options among a few names, the debug
// levels raised.
std::string Describe() {
  const utl_CommandLine& line = utl_CommandLine::Instance();
  std::ostringstream text;
  for (int i = 0; i < line.Size(); ++i)
    text << "[" << line.ConstGet(i).c_str() << "]";
  for (const char* name : {"a", "b", "c", "n", "5", "x", "z"}) {
    if (line.IsMember(name)) text << " " << name << "=" << line.ConstGetValue(name).c_str();
  }
  for (const char* facility : {"uti", "utl", "obj", "nex", "cls"}) {
    const int level = typ_DebugFlags::GetDebugFlags(facility);
    if (level > 0) text << " " << facility << ":" << level;
  }
  return text.str();
}

// Runs the child on the arguments behind the program name; it must print `out` and complain
// with `err`.
void Check(const std::vector<std::string>& args, const std::string& out,
           const std::string& err = "") {
  const VRKChildResult result = RunChild("describe", args);
  EXPECT_EQ(result.out, out);
  EXPECT_EQ(result.err, err);
}

void RunDescribeRole() {
  if (VRKChildRole() != "describe") return;
  SetUpFromChildArgs();
  fputs(Describe().c_str(), stdout);
  VRKChildExit(0);
}

TEST(UtlCommandLine, SplitsArgumentsIntoOptionsAndRaisesDebugLevels) {
  RunDescribeRole();
  Check({"-a", "1", "b", "-c"}, "[prog][-a][1][b][-c] a=1 c=");
  Check({"x", "-a"}, "[prog][x][-a] a=");
  Check({"-n", "-5"}, "[prog][-n][-5] n= 5=");
  // Levels: no value is 1, the value's leading number otherwise, below 1 nothing.
  Check({"-error", "utl=3,nex,uti=0,cls=-2,obj= 7x,nosuch=4"},
        "[prog][-error][utl=3,nex,uti=0,cls=-2,obj= 7x,nosuch=4] utl:3 obj:7 nex:1");
}

TEST(UtlCommandLine, ArgumentsFileGivesOneArgumentALine) {
  RunDescribeRole();
  VRKScratchDir dir;
  const std::string file = dir.File("args");
  auto write = [&](const std::string& content) {
    std::ofstream(file, std::ios::binary) << content;
    return file;
  };
  const std::string tooLong =
      "ERROR: Command line argument in command line file is too long - maximum = 1023\n";
  // Lines are literal; later arguments on the real command line are ignored. A last line
  // without its newline gets the complaint of a long line.
  Check({"-clargsfile", write(" -a\n1\n\n-b"), "-z"}, "[prog][ -a][1][][-b] b=", tooLong);
  // 1023 characters and the newline don't fit: the newline comes as an empty argument.
  const std::string x1023(1023, 'x'), y1022(1022, 'y');
  Check({"-clargsfile", write(x1023 + "\n" + y1022 + "\n")},
        "[prog][" + x1023 + "][][" + y1022 + "]", tooLong);
  // A NUL byte ends its argument; the rest of the line is lost.
  Check({"-clargsfile", write(std::string("ab\0cd\nef\n", 9))}, "[prog][ab][ef]", tooLong);
  // An unreadable file leaves the line unset.
  Check({"-clargsfile", dir.File("missing")}, "",
        "ERROR: Unable to open command line arguments file " + dir.File("missing") + "\n");

  // 1023 lines follow the program name; each line past them is dropped with a complaint.
  std::string content, args = "[prog]", err;
  for (int i = 1; i <= 1030; ++i) {
    content += std::to_string(i) + "\n";
    if (i < 1024) args += "[" + std::to_string(i) + "]";
  }
  for (int i = 0; i < 7; ++i) {
    err +=
        "ERROR: There are more than 1024 command line arguments. All arguments beyond\n"
        "argument 1024 will be ignored.\n";
  }
  Check({"-clargsfile", write(content)}, args, err);
}

// What a query gives, as text, or the report of what it raises.
std::string Text(long long value) {
  return std::to_string(value);
}
std::string Text(const cow_String& value) {
  return value.c_str();
}
std::string Text(const cow_Map<cow_String, cow_String>& map) {
  std::string pairs;
  cow_ConstMapSortedIt<cow_String, cow_String> it(map);
  for (it.First(); !it.IsDone(); it.Next())
    pairs += std::string(it.CurrentKey().c_str()) + "=" + it.CurrentValue().c_str() + ";";
  return pairs;
}
#define OUTCOME(query)                     \
  [&]() -> std::string {                   \
    try {                                  \
      return Text(query);                  \
    } catch (const nex_Exception& error) { \
      return error.AsString().c_str();     \
    }                                      \
  }()

TEST(UtlCommandLine, QueriesConvertValuesAndRaiseForMissingOrMalformedOnes) {
  if (VRKChildRole() == "queries") {
    SetUpFromChildArgs();
    const utl_CommandLine& line = utl_CommandLine::Instance();
    const std::string notInteger = " must have type integer";
    const std::string cases[][2] = {
        {OUTCOME(line.ConstGetValueAsInt("i")), "42"},
        {OUTCOME(line.ConstGetValueAsInt("e")), "0"},
        {OUTCOME(line.ConstGetValueAsInt("absent", 7)), "7"},
        {OUTCOME(line.ConstGetValueAsInt("big")), "2147483647"},
        {OUTCOME(line.ConstGetValueAsSizeT("big")), "99999999999"},
        {OUTCOME(line.ConstGetValueAsSizeT("absent", 3)), "3"},
        {OUTCOME(line.ConstGetValue("absent", "fallback")), "fallback"},
        // The fallback stands only for an absent option.
        {OUTCOME(line.ConstGetValueAsInt("n", 7)), "Command line argument n" + notInteger},
        {OUTCOME(line.ConstGetValueAsInt("neg")), "Command line argument neg" + notInteger},
        {OUTCOME(line.ConstGetValueAsSizeT("n", 1)), "Command line argument n" + notInteger},
        {OUTCOME(line.ConstGetValue("absent")), "Command line argument absent is required."},
        {OUTCOME(line.ConstGetValueAsDictionary("d")), "=;a=b=c;k=v;k2=v2;x=;"},
        {OUTCOME(line.ConstGetValueAsDictionary("e")), ""},
    };
    for (const auto& c : cases)
      EXPECT_EQ(c[0], c[1]);

    int result = -1;
    UTL_COMMANDLINEISMEMBER("  s  ", &result, 5);
    EXPECT_EQ(result, 0);
    UTL_COMMANDLINEISMEMBER("absent", &result, 6);
    EXPECT_EQ(result, 1);                         // 1 for absent: inverted on purpose
    UTL_COMMANDLINEINTEGER(" ixyz", &result, 2);  // the hidden length cuts the name to " i"
    EXPECT_EQ(result, 42);
    UTL_COMMANDLINEINTEGER("absent", &result, 6);
    EXPECT_EQ(result, 0);

    // The blank-padded buffer: exactly the value, one blank more, one byte short, absent;
    // then the unbounded copy with its terminator.
    char buffer[8];
    auto fill = [&](int copied) {
      std::string text(buffer, 8);
      std::memset(buffer, '#', sizeof buffer);
      return std::to_string(copied) + ":" + text;
    };
    std::memset(buffer, '#', sizeof buffer);
    EXPECT_EQ(fill(utl_CommandLineStringC("s", buffer, 5)), "5:hello###");
    EXPECT_EQ(fill(utl_CommandLineStringC("s", buffer, 6)), "5:hello ##");
    EXPECT_EQ(fill(utl_CommandLineStringC("s", buffer, 4)), "0:########");
    EXPECT_EQ(fill(utl_CommandLineStringC("absent", buffer, 8)), "0:########");
    UTL_COMMANDLINESTRING("s ", buffer, &result, 2, 7);
    EXPECT_EQ(fill(result), "5:hello  #");
    EXPECT_EQ(fill(utl_getArgs("absent", buffer)), "0:########");
    EXPECT_EQ(fill(utl_getArgs("s", buffer)), std::string("5:hello\0##", 10));
    VRKChildExit(::testing::Test::HasFailure() ? 1 : 0);
  }
  RunChild("queries", {"-i", "42", "-e", "", "-big", "99999999999", "-n", "12a", "-neg", "+1", "-d",
                       "k=v,x,a=b=c,k2=v2,", "-s", "hello"});
}

TEST(UtlCommandLine, ReadersOnManyThreadsMeetASecondSetup) {
  if (VRKChildRole() == "threads") {
    SetUpFromChildArgs();
    auto read = [] {
      const utl_CommandLine& line = utl_CommandLine::Instance();
      for (int i = 0; i < 2000; ++i) {
        line.ConstGet(line.Size() - 1);
        if (line.ConstGetValue("v") != "shared") {
          ADD_FAILURE() << "wrong value";
          return;
        }
      }
    };
    std::thread readers[] = {std::thread(read), std::thread(read), std::thread(read)};
    char* more[] = {const_cast<char*>("prog"), const_cast<char*>("-w"), nullptr};
    for (int i = 0; i < 200; ++i)
      utl_CommandLineSetup(2, more);
    for (std::thread& reader : readers)
      reader.join();
    EXPECT_EQ(utl_CommandLine::Instance().Size(), 3 + 200 * 2);
    VRKChildExit(::testing::Test::HasFailure() ? 1 : 0);
  }
  RunChild("threads", {"-v", "shared"});
}

}  // namespace
