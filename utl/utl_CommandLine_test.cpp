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

std::string Std(const cow_String& s) {
  return std::string(s.c_str(), s.Length());
}

// In the child: the library up and utl_CommandLineSetup("prog", args...).
void SetUpFromChildArgs() {
  static int tally = 0;
  static std::vector<std::string> args = VRKChildArgs();
  static std::vector<char*> argv = {const_cast<char*>("prog")};
  VRKLnuBasicUtils_initialize(tally);
  for (std::string& arg : args)
    argv.push_back(&arg[0]);
  argv.push_back(nullptr);
  utl_CommandLineSetup(static_cast<int>(argv.size()) - 1, argv.data());
}

// The child's account of the line: its arguments; each of the blank-separated `names` as
// "name=value", or "!name" when absent; the debug levels raised.
std::string Describe(const std::string& names) {
  const utl_CommandLine& line = utl_CommandLine::Instance();
  std::ostringstream text;
  text << "args";
  for (int i = 0; i < line.Size(); ++i)
    text << " [" << Std(line.ConstGet(i)) << "]";
  text << "\noptions";
  std::istringstream list(names);
  for (std::string name; list >> name;) {
    if (line.IsMember(name.c_str())) {
      text << " " << name << "=" << Std(line.ConstGetValue(name.c_str()));
    } else {
      text << " !" << name;
    }
  }
  text << "\nlevels";
  for (unsigned facility = 0; facility < 1024; ++facility) {
    if (typ_DebugFlags::GetDebugFlags(facility) > 0) {
      text << " " << typ_DebugFlags::GetDebugFacilityName(facility) << "="
           << typ_DebugFlags::GetDebugFlags(facility);
    }
  }
  text << "\n";
  return text.str();
}

// A case: the arguments behind the program name, the options to report, and what the child
// must print on its two outputs.
struct LineCase {
  std::vector<std::string> args;
  std::string names;
  std::string out;
  std::string err = "";
};

void Check(const LineCase& c) {
  VRKChild child("describe");
  child.args = c.args;
  child.env = {{"VRK_NAMES", c.names}};
  const VRKChildResult result = child.Run();
  EXPECT_EQ(result.exitCode, 0) << result.err;
  EXPECT_EQ(result.out, c.out);
  EXPECT_EQ(result.err, c.err);
}

void RunDescribeRole() {
  if (VRKChildRole() != "describe") return;
  SetUpFromChildArgs();
  fputs(Describe(getenv("VRK_NAMES")).c_str(), stdout);
  VRKChildExit(0);
}

TEST(UtlCommandLine, SplitsArgumentsIntoOptionsAndRaisesDebugLevels) {
  RunDescribeRole();
  const LineCase cases[] = {
      {{"-a", "1", "b", "-c"},
       "a c b",
       "args [prog] [-a] [1] [b] [-c]\noptions a=1 c= !b\nlevels\n"},
      {{"x", "-a"}, "a x", "args [prog] [x] [-a]\noptions a= !x\nlevels\n"},
      {{"-n", "-5"}, "n 5", "args [prog] [-n] [-5]\noptions n= 5=\nlevels\n"},
      {{"-a", "1", "-a", "2"}, "a", "args [prog] [-a] [1] [-a] [2]\noptions a=2\nlevels\n"},
      {{}, "", "args [prog]\noptions\nlevels\n"},
      // Levels: no value is 1, the value's leading number otherwise, below 1 nothing.
      {{"-error", "utl=3,nex,uti=0,cls=-2,obj= 7x,nosuch=4"},
       "",
       "args [prog] [-error] [utl=3,nex,uti=0,cls=-2,obj= 7x,nosuch=4]\noptions\n"
       "levels utl=3 obj=7 nex=1\n"},
  };
  for (const LineCase& c : cases)
    Check(c);
}

const char kTooLong[] =
    "ERROR: Command line argument in command line file is too long - maximum = 1023\n";

TEST(UtlCommandLine, ArgumentsFileGivesOneArgumentALine) {
  RunDescribeRole();
  VRKScratchDir dir;
  const std::string file = dir.File("args");
  auto write = [&](const std::string& content) {
    std::ofstream(file, std::ios::binary) << content;
    return file;
  };
  // Lines are literal; later arguments on the real command line are ignored. A last line
  // without its newline gets the complaint of a long line.
  Check({{"-clargsfile", write(" -a\n1\n\n-b"), "-z"},
         "a b z",
         "args [prog] [ -a] [1] [] [-b]\noptions !a b= !z\nlevels\n",
         kTooLong});
  // 1023 characters and the newline don't fit: the newline comes as an empty argument.
  const std::string x1023(1023, 'x'), y1022(1022, 'y');
  Check({{"-clargsfile", write(x1023 + "\n" + y1022 + "\n")},
         "",
         "args [prog] [" + x1023 + "] [] [" + y1022 + "]\noptions\nlevels\n",
         kTooLong});
  // A NUL byte ends its argument; the rest of the line is lost.
  Check({{"-clargsfile", write(std::string("ab\0cd\nef\n", 9))},
         "",
         "args [prog] [ab] [ef]\noptions\nlevels\n",
         kTooLong});
  // An unreadable file leaves the line unset.
  Check({{"-clargsfile", dir.File("missing")},
         "",
         "args\noptions\nlevels\n",
         "ERROR: Unable to open command line arguments file " + dir.File("missing") + "\n"});
}

TEST(UtlCommandLine, ArgumentsFileKeeps1024Arguments) {
  RunDescribeRole();
  VRKScratchDir dir;
  std::string content, args = "args [prog]", err;
  for (int i = 1; i <= 1030; ++i) {
    content += std::to_string(i) + "\n";
    if (i < 1024) args += " [" + std::to_string(i) + "]";
  }
  for (int i = 0; i < 7; ++i) {
    err +=
        "ERROR: There are more than 1024 command line arguments. All arguments beyond\n"
        "argument 1024 will be ignored.\n";
  }
  std::ofstream(dir.File("args")) << content;
  Check({{"-clargsfile", dir.File("args")}, "", args + "\noptions\nlevels\n", err});
}

TEST(UtlCommandLine, QueriesConvertValuesAndRaiseForMissingOrMalformedOnes) {
  if (VRKChildRole() == "queries") {
    SetUpFromChildArgs();
    const utl_CommandLine& line = utl_CommandLine::Instance();
    EXPECT_EQ(line.ConstGetValueAsInt("i"), 42);
    EXPECT_EQ(line.ConstGetValueAsInt("e"), 0);
    EXPECT_EQ(line.ConstGetValueAsInt("absent", 7), 7);
    EXPECT_EQ(line.ConstGetValueAsInt("big"), INT_MAX);
    EXPECT_EQ(line.ConstGetValueAsSizeT("big"), 99999999999u);
    EXPECT_EQ(line.ConstGetValueAsSizeT("absent", 3), 3u);
    EXPECT_EQ(line.ConstGetValue("absent", "fallback"), "fallback");
    for (const char* malformed : {"n", "neg"}) {
      try {
        line.ConstGetValueAsInt(malformed, 7);  // the fallback is only for an absent option
        ADD_FAILURE() << malformed << " was read as a number";
      } catch (const utl_CmdLineArgFormatException& error) {
        EXPECT_EQ(error.AsString(), nex_Translate("Command line argument %s must have type integer",
                                                  cow_String(malformed)));
      }
    }
    EXPECT_THROW(line.ConstGetValueAsSizeT("n", 1), utl_CmdLineArgFormatException);
    try {
      line.ConstGetValueAsDictionary("absent");
      ADD_FAILURE() << "absent option read";
    } catch (const utl_MissingCmdLineArgException& error) {
      EXPECT_EQ(error.AsString(), "Command line argument absent is required.");
      EXPECT_EQ(error.GetValue(), "absent");
    }
    const cow_Map<cow_String, cow_String> d = line.ConstGetValueAsDictionary("d");
    EXPECT_EQ(d.Count(), 5);
    EXPECT_EQ(d.ConstGet("k"), "v");
    EXPECT_EQ(d.ConstGet("x"), "");
    EXPECT_EQ(d.ConstGet(""), "");  // the empty last element
    EXPECT_EQ(d.ConstGet("a"), "b=c");
    EXPECT_EQ(d.ConstGet("k2"), "v2");
    EXPECT_EQ(line.ConstGetValueAsDictionary("e").Count(), 0);

    int result = -1;
    UTL_COMMANDLINEISMEMBER("  s  ", &result, 5);
    EXPECT_EQ(result, 0);
    UTL_COMMANDLINEISMEMBER("absent", &result, 6);
    EXPECT_EQ(result, 1);                         // 1 for absent: inverted on purpose
    UTL_COMMANDLINEINTEGER(" ixyz", &result, 2);  // the hidden length cuts the name to " i"
    EXPECT_EQ(result, 42);
    UTL_COMMANDLINEINTEGER("absent", &result, 6);
    EXPECT_EQ(result, 0);

    // The blank-padded buffer: exactly the value, one blank more, one byte short.
    char buffer[8];
    const std::pair<int, std::string> sizes[] = {{5, "hello###"}, {6, "hello ##"}, {4, "########"}};
    for (const auto& [size, filled] : sizes) {
      std::memset(buffer, '#', sizeof buffer);
      EXPECT_EQ(utl_CommandLineStringC("s", buffer, size), filled[0] == '#' ? 0 : 5);
      EXPECT_EQ(std::string(buffer, 8), filled) << size;
    }
    std::memset(buffer, '#', sizeof buffer);
    EXPECT_EQ(utl_CommandLineStringC("absent", buffer, 8), 0);
    EXPECT_EQ(std::string(buffer, 8), "########");
    UTL_COMMANDLINESTRING("s ", buffer, &result, 2, 7);
    EXPECT_EQ(result, 5);
    EXPECT_EQ(std::string(buffer, 8), "hello  #");

    std::memset(buffer, '#', sizeof buffer);
    EXPECT_EQ(utl_getArgs("absent", buffer), 0);
    EXPECT_EQ(std::string(buffer, 8), "########");
    EXPECT_EQ(utl_getArgs("s", buffer), 5);
    EXPECT_EQ(std::string(buffer, 8), std::string("hello\0##", 8));
    VRKChildExit(::testing::Test::HasFailure() ? 1 : 0);
  }
  VRKChild child("queries");
  child.args = {"-i", "42",   "-e",   "",   "-big", "99999999999",
                "-n", "12a",  "-neg", "+1", "-d",   "k=v,x,a=b=c,k2=v2,",
                "-s", "hello"};
  const VRKChildResult result = child.Run();
  EXPECT_EQ(result.exitCode, 0) << result.out << result.err;
}

TEST(UtlCommandLine, ReadersOnManyThreadsMeetASecondSetup) {
  if (VRKChildRole() == "threads") {
    SetUpFromChildArgs();
    std::vector<std::thread> readers;
    for (int t = 0; t < 4; ++t) {
      readers.emplace_back([] {
        const utl_CommandLine& line = utl_CommandLine::Instance();
        for (int i = 0; i < 2000; ++i) {
          if (line.ConstGetValue("v") != "shared" || line.ConstGetValueAsInt("n") != 3) {
            ADD_FAILURE() << "wrong value";
            return;
          }
          line.ConstGet(line.Size() - 1);
        }
      });
    }
    char* more[] = {const_cast<char*>("prog"), const_cast<char*>("-w"), const_cast<char*>("1"),
                    nullptr};
    for (int i = 0; i < 200; ++i)
      utl_CommandLineSetup(3, more);
    for (std::thread& reader : readers)
      reader.join();
    EXPECT_EQ(utl_CommandLine::Instance().Size(), 5 + 200 * 3);
    VRKChildExit(::testing::Test::HasFailure() ? 1 : 0);
  }
  VRKChild child("threads");
  child.args = {"-v", "shared", "-n", "3"};
  const VRKChildResult result = child.Run();
  EXPECT_EQ(result.exitCode, 0) << result.out << result.err;
  // A race found by ThreadSanitizer doesn't change the child's exit code.
  EXPECT_EQ(result.err.find("ThreadSanitizer"), std::string::npos) << result.err;
}

}  // namespace
