#include "uti_Spawn.h"

#include <errno.h>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <string>
#include <thread>
#include <vector>

#include "VRKTestChild.h"
#include "VRKTestLibrary.h"
#include "typ_DebugFlags.h"
#include "uti_IOErrorException.h"

namespace {

// The roles that this program plays as a child of the tests below.
void PlayRole(const std::string& role) {
  const std::vector<std::string> args = VRKChildArgs();
  const int code = args.empty() ? 0 : std::atoi(args[0].c_str());
  std::string out;
  char buffer[4096];
  ssize_t n;
  if (role == "exit") {
    // ends with the code given
  } else if (role == "print-fds") {
    out = VRKOpenDescriptors() + "\n";
  } else if (role == "both-streams") {
    (void)!::write(1, "out\n", 4);
    (void)!::write(2, "err\n", 4);
  } else if (role == "show") {
    const char* shown = std::getenv("SHOWN");
    out = std::string(shown ? shown : "(unset)") + "\n" + getcwd(buffer, sizeof buffer) + "\n" +
          (getsid(0) == getpid() ? "leader\n" : "member\n");
  } else if (role == "upper") {  // echoes its input in capitals, line by line, until "quit"
    std::string line;
    while ((n = ::read(0, buffer, 1)) == 1) {
      line += static_cast<char>(std::toupper(buffer[0]));
      if (buffer[0] != '\n') continue;
      if (line == "QUIT\n") break;
      (void)!::write(1, line.data(), line.size());
      line.clear();
    }
  } else if (role == "count-input") {  // ends with the number of bytes read as its code
    int total = 0;
    while ((n = ::read(0, buffer, sizeof buffer)) > 0)
      total += static_cast<int>(n);
    VRKChildExit(total);
  } else if (role == "flood") {
    for (;;)
      (void)!::write(1, "0123456789\n", 11);
  } else {
    return;  // a role that a test plays itself
  }
  (void)!::write(1, out.data(), out.size());
  VRKChildExit(code);
}

class SpawnTest : public VRKLibraryTest {
 protected:
  void SetUp() override {
    VRKLibraryTest::SetUp();
    if (!VRKChildRole().empty()) PlayRole(VRKChildRole());
  }

  // This test program again, in `role`.
  struct Self {
    cow_String program;
    cow_List<cow_String> args;
    uti_Environment env;
  };
  static Self In(const std::string& role, const std::vector<std::string>& args = {}) {
    if (!VRKChildRole().empty()) VRKChildExit(99);  // a child never spawns the program again
    const VRKChildCommand command = VRKChildCommandFor(role, args);
    Self self{command.program.c_str(), {}, uti_Spawn::getEnvironment()};
    for (const std::string& arg : command.args)
      self.args.Append(arg.c_str());
    for (const auto& [name, value] : command.env) {
      if (self.env.IsMember(name.c_str())) self.env.Remove(name.c_str());
      self.env.Insert(name.c_str(), value.c_str());
    }
    return self;
  }
  static int RunIn(const std::string& role, uti_Redirection& redirection,
                   const std::vector<std::string>& args = {}) {
    const Self self = In(role, args);
    return uti_Spawn::AndWait(self.program, VRKBasUtlFilePath(), self.args, redirection, self.env);
  }

  // Reads what a child's role writes, past the banners of the test program before it.
  template <class Child>
  static std::string Line(Child& child) {
    char buffer[256];
    while (child.GetLine(buffer, sizeof buffer) > 0) {
      const std::string line = buffer;
      const size_t mark = line.find('\x1e');
      if (mark != std::string::npos && mark + 1 < line.size()) return line.substr(mark + 1);
    }
    return "";
  }
  template <class Child>
  static std::string Rest(Child& child) {
    std::string all = Line(child);
    char buffer[256];
    while (child.GetLine(buffer, sizeof buffer) > 0)
      all += buffer;
    return all;
  }
};

TEST_F(SpawnTest, ExitCodesKeepTheirEightBitsAndSignalsAreToldApart) {
  for (int code : {0, 3, 255}) {
    uti_Redirection none;
    EXPECT_EQ(RunIn("exit", none, {std::to_string(code)}), code);
  }
  const Self self = In("count-input");
  for (int signal : {SIGKILL, SIGINT}) {
    uti_Redirection none;
    uti_SpawnSink child(self.program, VRKBasUtlFilePath(), self.args, none, self.env);
    EXPECT_EQ(child.uti_Spawn::Reap(-1), -1);
    EXPECT_TRUE(child.IsRunning());
    EXPECT_EQ(signal == SIGKILL ? child.Kill() : child.Interrupt(), 0);
    EXPECT_EQ(child.Reap(0), uti_Spawn::kSignalled + signal);
    EXPECT_EQ(uti_Spawn::TerminatingSignal(child.Status()), signal);
    EXPECT_EQ(child.Reap(5), uti_Spawn::kSignalled + signal);  // stored, nothing asked
    EXPECT_EQ(child.Kill(), -1);
  }
  uti_Spawn none;
  EXPECT_EQ(none.Reap(0), -1);
  none.Detach();
  EXPECT_EQ(none.Status(), -1);
  EXPECT_FALSE(none.IsRunning());
  EXPECT_EQ(uti_Spawn::TerminatingSignal(255), 0);
}

TEST_F(SpawnTest, TwoHundredSpawnsLeaveTheDescriptorsAsTheyWereAndChildrenSeeOnlyThree) {
  const int stray = ::open("/dev/null", O_RDONLY);  // not close-on-exec
  const std::string before = VRKOpenDescriptors();
  const Self self = In("print-fds");
  for (int i = 0; i < 200 && !HasFailure(); ++i) {
    uti_Redirection none;
    uti_SpawnSource child(self.program, VRKBasUtlFilePath(), self.args, none, self.env);
    EXPECT_EQ(Rest(child), "0 1 2\n") << "spawn " << i;
    EXPECT_EQ(child.Reap(0), 0);
  }
  EXPECT_EQ(VRKOpenDescriptors(), before);
  ::close(stray);
}

TEST_F(SpawnTest, StreamsGoToTheirFilesAndPipes) {
  VRKScratchDir dir;
  const std::string out = dir.File("out"), err = dir.File("err"), all = dir.File("all");
  uti_Redirection apart(">", out.c_str(), "2>", err.c_str());
  EXPECT_EQ(RunIn("both-streams", apart), 0);
  EXPECT_EQ(VRKChildOutput(VRKReadFile(out)), "out\n");
  EXPECT_EQ(VRKChildOutput(VRKReadFile(err)), "err\n");
  uti_Redirection merged(">&", all.c_str());
  RunIn("both-streams", merged);
  uti_Redirection appended(">>&", all.c_str());
  RunIn("both-streams", appended);
  const std::string twice = VRKReadFile(all);
  EXPECT_EQ(twice.find("out\nerr\n", twice.find("out\nerr\n") + 1) + 8, twice.size()) << twice;

  const std::string in = dir.File("in");
  const int fd = ::open(in.c_str(), O_CREAT | O_WRONLY, 0644);
  ASSERT_EQ(::write(fd, "in put\n", 7), 7);
  ::close(fd);
  const Self self = In("upper");
  uti_Redirection input("<", in.c_str());
  uti_SpawnSource reader(self.program, VRKBasUtlFilePath(), self.args, input, self.env);
  EXPECT_EQ(Rest(reader), "IN PUT\n");
  EXPECT_EQ(reader.Reap(0), 0);
  EXPECT_EQ(reader.GetReadDescriptor(), -1);

  uti_Redirection none;
  uti_SpawnSourceWithSink both(self.program, VRKBasUtlFilePath(), self.args, none, self.env);
  ASSERT_EQ(::write(both.GetWriteDescriptor(), "ab\n", 3), 3);
  EXPECT_EQ(Line(both), "AB\n");
  EXPECT_EQ(both.Reap(1), 0);  // its input ends, and so does it
  uti_SpawnSinkWithSource sink(self.program, VRKBasUtlFilePath(), self.args, none, self.env);
  ASSERT_EQ(::write(sink.GetWriteDescriptor(), "cd\nquit\n", 8), 8);
  EXPECT_EQ(Line(sink), "CD\n");
  EXPECT_EQ(sink.Reap(0), 0);
  EXPECT_GE(sink.GetWriteDescriptor(), 0);  // left open by its Reap

  const Self counter = In("count-input");
  uti_SpawnSink fed(counter.program, VRKBasUtlFilePath(), counter.args, none, counter.env);
  ASSERT_EQ(::write(fed.GetWriteDescriptor(), "hello", 5), 5);
  EXPECT_EQ(fed.Reap(0), 5);
}

TEST_F(SpawnTest, BadProgramsAndTargetsFailWithNothingLeftOpen) {
  VRKScratchDir dir;
  const std::string plain = dir.File("plain"), log = dir.File("log");
  ::close(::open(plain.c_str(), O_CREAT | O_WRONLY, 0644));
  const std::string before = VRKOpenDescriptors();
  const Self self = In("exit");
  const struct {
    std::string program;
    const char* symbol;
    std::string target;
    const char* error;
  } cases[] = {
      {"/no/such/program", "2>", log,
       "IOError: CreateProcess failed for /no/such/program: No "
       "such file or directory"},
      {dir.Path(), "2>", log, "Permission denied"},
      {plain, "2>", log, "Permission denied"},
      {self.program.c_str(), "2>", dir.Path(), "Is a directory"},
      {self.program.c_str(), ">", log, "Stream stdout has already redirected."},
  };
  for (const auto& c : cases) {
    uti_Redirection redirection(c.symbol, c.target.c_str());
    try {
      uti_SpawnSourceWithSink child(c.program.c_str(), VRKBasUtlFilePath(), self.args, redirection,
                                    self.env);
      ADD_FAILURE() << c.program << " started";
    } catch (const nex_Exception& error) {
      EXPECT_NE(std::string(cow_String(error.AsString()).c_str()).find(c.error), std::string::npos)
          << cow_String(error.AsString()).c_str();
    }
    EXPECT_EQ(VRKOpenDescriptors(), before) << c.program;
  }
  EXPECT_EQ(::fcntl(0, F_GETFD) | ::fcntl(1, F_GETFD) | ::fcntl(2, F_GETFD), 0);
}

TEST_F(SpawnTest, BareNamesAreLookedUpAlongThePath) {
  if (VRKChildRole() == "path-search") {
    const std::vector<std::string> dirs = VRKChildArgs();
    uti_Redirection none;
    const auto run = [&](const char* name) -> std::string {
      try {
        return std::to_string(uti_Spawn::AndWait(name, VRKBasUtlFilePath(), {}, none, {}));
      } catch (const uti_NotOnPathException& error) {
        return cow_String(error.AsString()).c_str();
      } catch (const uti_NotExecutableException& error) {
        return cow_String(error.AsString()).c_str();
      }
    };
    EXPECT_EQ(run("good"), "0");
    EXPECT_EQ(run("tool"), dirs[0] + "/tool is not executable.");
    EXPECT_EQ(run("sub"), dirs[0] + "/sub is not executable.");
    EXPECT_EQ(run("absent"), "absent not found in PATH.");
    VRKChildExit(HasFailure() ? 1 : 0);
  }
  VRKScratchDir first, second;
  ::close(::open(first.File("tool").c_str(), O_CREAT | O_WRONLY, 0644));
  ::mkdir(first.File("sub").c_str(), 0755);
  ASSERT_EQ(::symlink("/bin/true", second.File("tool").c_str()), 0);
  ASSERT_EQ(::symlink("/bin/true", second.File("good").c_str()), 0);
  VRKChild child("path-search");
  child.env = {{"PATH", first.Path() + "::" + second.Path()}};
  child.args = {first.Path()};
  const VRKChildResult result = child.Run();
  EXPECT_EQ(result.exitCode, 0) << result.out << result.err;
}

TEST_F(SpawnTest, WaitForAnyReportsEachChildOnceInTheOrderTheyEnd) {
  constexpr int kChildren = 16;
  uti_Spawn* children[kChildren];
  int inputs[kChildren];
  for (int i = 0; i < kChildren; ++i) {
    int ends[2];
    ASSERT_EQ(::pipe2(ends, O_CLOEXEC), 0);
    inputs[i] = ends[1];
    const Self self = In("count-input");
    uti_Redirection redirection("<", ends[0]);
    children[i] =
        new uti_Spawn(self.program, VRKBasUtlFilePath(), self.args, redirection, self.env);
    ASSERT_EQ(::write(inputs[i], std::string(i, 'x').data(), i), i);
  }
  EXPECT_EQ(uti_Spawn::waitForAll(children, kChildren, 0), kChildren);  // all still at work
  std::vector<uti_Spawn*> left(children, children + kChildren);
  for (int k = 0; k < kChildren; ++k) {
    const int next = k * 7 % kChildren;  // 0, 7, 14, 5, ...
    ::close(inputs[next]);
    uti_Spawn* ended = uti_Spawn::waitForAny(left.data(), static_cast<int>(left.size()));
    ASSERT_EQ(ended, children[next]) << "end " << k;
    EXPECT_EQ(ended->Status(), next);
    EXPECT_EQ(ended->Reap(0), next);
    left.erase(std::find(left.begin(), left.end(), ended));
  }
  EXPECT_EQ(uti_Spawn::waitForAny(nullptr, 0), nullptr);
  EXPECT_EQ(uti_Spawn::waitForAll(children, kChildren, 10), 0);
  for (uti_Spawn* child : children)
    delete child;
}

TEST_F(SpawnTest, AFloodingChildHoldsUpNoOtherAndLongLinesComeInPieces) {
  const Self flood = In("flood"), quick = In("exit", {"7"});
  uti_Redirection none;
  uti_SpawnSource flooding(flood.program, VRKBasUtlFilePath(), flood.args, none, flood.env);
  EXPECT_EQ(Line(flooding), "0123456789\n");
  char piece[5];
  std::string pieces;
  for (int i = 0; i < 3; ++i)
    pieces += std::to_string(flooding.GetLine(piece, sizeof piece)) + piece + "|";
  EXPECT_EQ(pieces, "40123|44567|389\n|");
  std::this_thread::sleep_for(std::chrono::milliseconds(50));  // its pipe fills
  EXPECT_EQ(uti_Spawn::AndWait(quick.program, VRKBasUtlFilePath(), quick.args, none, quick.env), 7);
  EXPECT_TRUE(flooding.IsRunning());
  flooding.Kill();
  EXPECT_EQ(flooding.Reap(0), uti_Spawn::kSignalled + SIGKILL);
}

TEST_F(SpawnTest, EnvironmentDirectorySessionAndForgottenChildren) {
  VRKScratchDir dir;
  const Self self = In("show");
  uti_Environment only;  // the whole environment of the child
  const VRKChildCommand command = VRKChildCommandFor("show");
  for (const auto& [name, value] : command.env)
    only.Insert(name.c_str(), value.c_str());
  only.Insert("SHOWN", "x");
  uti_Redirection none;
  uti_SpawnSource alone(self.program, VRKBasUtlFilePath(dir.Path().c_str()), self.args, none, only);
  EXPECT_EQ(Rest(alone), "x\n" + dir.Path() + "\nmember\n");
  EXPECT_EQ(alone.Reap(0), 0);

  // One command line: assignments laid over the inherited environment, a redirection.
  std::string line = "VRK_TEST_CHILD_ROLE=show SHOWN='a b' " + command.program;
  for (const std::string& arg : command.args)
    line += " '" + arg + "'";
  const std::string out = dir.File("out");
  EXPECT_EQ(uti_Spawn::AndWait((line + " > " + out).c_str(), uti_Environment()), 0);
  char cwd[4096];
  EXPECT_EQ(VRKChildOutput(VRKReadFile(out)),
            "a b\n" + std::string(getcwd(cwd, sizeof cwd)) + "\nmember\n");

  // A daemon leads a session of its own.
  const std::string daemonOut = dir.File("daemon");
  uti_Spawn::Daemon((line + " >" + daemonOut).c_str(), uti_Environment());
  for (int i = 0; i < 500 && VRKReadFile(daemonOut).find("leader\n") == std::string::npos; ++i)
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
  EXPECT_EQ(VRKChildOutput(VRKReadFile(daemonOut)), "a b\n" + std::string(cwd) + "\nleader\n");

  // Detached children, this one and the daemon, are reaped by a later spawn once they have
  // ended: none is left, not even as a zombie.
  const Self counter = In("count-input");
  uti_SpawnSink forgotten(counter.program, VRKBasUtlFilePath(), counter.args, none, counter.env);
  forgotten.Detach();  // closes its input too
  EXPECT_EQ(forgotten.Status(), uti_Spawn::kDetached);
  const auto childrenLeft = [] {
    siginfo_t info;
    return ::waitid(P_ALL, 0, &info, WEXITED | WNOHANG | WNOWAIT) == 0 || errno != ECHILD;
  };
  for (int i = 0; i < 500 && childrenLeft(); ++i) {
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
    uti_Spawn::AndWait("/bin/true", VRKBasUtlFilePath(), {}, none, {});
  }
  EXPECT_FALSE(childrenLeft());
}

TEST_F(SpawnTest, DebugLevelsTellWhatIsSpawned) {
  if (VRKChildRole() == "debug") {
    typ_DebugFlags::SetDebugFlags("uti", 3);
    uti_Redirection none;
    uti_Environment environment;
    environment.Insert("X", "1");
    cow_List<cow_String> args;
    args.Append("a b");
    uti_Spawn child("/bin/true", VRKBasUtlFilePath(), args, none, environment);
    uti_Spawn* list[] = {&child};
    VRKChildExit(uti_Spawn::waitForAll(list, 1, 5));
  }
  const VRKChildResult result = VRKChild("debug").Run();
  EXPECT_EQ(result.exitCode, 0);
  for (const char* line :
       {"uti_Spawn: redirecting standard handle 2 on handle -1 to handle 2\n",
        "uti_Spawn - spawning: /bin/true \"a b\"\n", "              argument 0: a b\n",
        "              env: X=1\n", "uti_Spawn::waitForAll reaped process #0 with exit code 0\n"}) {
    EXPECT_NE(result.err.find(line), std::string::npos) << line << result.err;
  }
}

class SpawnParserTest : public VRKLibraryTest {};

TEST_F(SpawnParserTest, ReadsCommandLinesAsAShellWouldWithoutExpanding) {
  char cwd[4096];
  const std::string here = std::string(getcwd(cwd, sizeof cwd)) + "/";
  const struct {
    const char* line;
    const char* command;
    std::string arguments;  // joined by "|"
    const char* assignments;
    std::string slots;  // each stream's path, "-" for none
  } good[] = {
      {"prog a b", "prog", "a|b", "", "- - -"},
      {"  prog\t'a b'  \"c d\" e\\ f ", "prog", "a b|c d|e f", "", "- - -"},
      {"A=1 B='x y' _c= prog A=2", "prog", "A=2", "A=1 B=x y _c=", "- - -"},
      {"prog >out 2>>/err <in", "prog", "", "", here + "in " + here + "out /err+"},
      {"2>/e prog a2>x", "prog", "a2", "", "- " + here + "x /e"},
      {"prog 2>/e", "prog", "", "", "- - /e"},
      {"prog >& /all", "prog", "", "", "- /all 1"},
      {"prog '' \"\"", "prog", "|", "", "- - -"},
      {"prog \"a\\\"b\\\\c\\$d\\`e\\x'\"", "prog", "a\"b\\c$d`e\\x'", "", "- - -"},
      {"prog a\\\nb 'c\\'", "prog", "ab|c\\", "", "- - -"},
      {"prog *.txt ~ #x [a] a=b", "prog", "*.txt|~|#x|[a]|a=b", "", "- - -"},
      {"'my prog' 1A=2", "my prog", "1A=2", "", "- - -"},
      {"1A=2 A\\=1 x", "1A=2", "A=1|x", "", "- - -"},
  };
  for (const auto& c : good) {
    SCOPED_TRACE(c.line);
    uti_Spawn::Parser parser(c.line);
    EXPECT_EQ(parser.Command(), c.command);
    EXPECT_EQ(parser.Directory().PathName(), ".");
    std::string arguments;
    for (int i = 0; i < parser.Arguments().Count(); ++i)
      arguments += (i > 0 ? "|" : "") + std::string(parser.Arguments()[i].c_str());
    EXPECT_EQ(arguments, c.arguments);
    uti_Environment base;
    base.Insert("A", "0");
    const uti_Environment over = parser.EnvironmentOver(base);
    std::string assignments;
    cow_ConstMapSortedIt<cow_String, cow_String> it(over);
    for (it.First(); !it.IsDone(); it.Next()) {
      if (it.CurrentKey() == "A" && it.CurrentValue() == "0") continue;
      assignments += (assignments.empty() ? "" : " ") + std::string(it.CurrentKey().c_str()) + "=" +
                     it.CurrentValue().c_str();
    }
    EXPECT_EQ(assignments, c.assignments);
    EXPECT_EQ(parser.Environment().Count() > 0, *c.assignments != '\0');
    std::string slots;
    for (int stream = 0; stream < 3; ++stream) {
      const uti_Redirection::Redirector& slot = parser.Redirection().getRedirector(stream);
      slots += stream > 0 ? " " : "";
      slots += slot.isUndefined() ? "-"
               : slot.handle.descriptor > 0
                   ? std::to_string(slot.handle.descriptor)
                   : std::string(slot.handle.path.c_str()) + (slot.append ? "+" : "");
    }
    EXPECT_EQ(slots, c.slots);
  }
  const struct {
    cow_String line;
    const char* error;
  } bad[] = {
      {"", "no command at position 1"},
      {"A=1 ", "no command at position 5"},
      {"prog 'a", "unterminated single quote at position 6"},
      {"prog \"a'", "unterminated double quote at position 6"},
      {"prog a\\", "backslash at the end at position 7"},
      {"prog a|b", "character that needs quoting at position 7"},
      {"prog $HOME", "character that needs quoting at position 6"},
      {"prog \"$HOME\"", "character that needs quoting at position 7"},
      {"prog a&", "character that needs quoting at position 7"},
      {"prog;", "character that needs quoting at position 5"},
      {"prog (x)", "character that needs quoting at position 6"},
      {"prog `x`", "character that needs quoting at position 6"},
      {cow_String("prog a\0b", 8), "zero byte at position 7"},
      {"prog >", "redirection without a target at position 6"},
      {"prog > >x", "redirection without a target at position 6"},
      {"prog <<x", "unsupported redirection at position 6"},
      {"prog >|x", "unsupported redirection at position 6"},
      {"prog 2>&1", "unsupported redirection at position 6"},
      {"prog > a >> b", "Stream stdout has already redirected."},
  };
  for (const auto& c : bad) {
    try {
      uti_Spawn::Parser parser(c.line);
      ADD_FAILURE() << c.line.c_str() << " was read";
    } catch (const nex_TextException& error) {
      std::string expected = c.error;
      if (expected.find("position") != std::string::npos) expected += " of the command line";
      EXPECT_EQ(error.AsString(), expected.c_str());
    }
  }
}

}  // namespace
