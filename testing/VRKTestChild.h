// Runs the current test again in a child process: the test binary itself, with only this
// test selected and a role named in the environment. A test checks process-wide behaviour
// (the environment, the command line, resource limits, signals, other processes) there
// without disturbing the test program:
//
//   TEST(CommandLineTest, ReadsTheArgumentsFile) {
//     if (VRKChildRole() == "setup") {          // in the child
//       ...; VRKChildExit(ok ? 0 : 1);
//     }
//     VRKChild child("setup");                   // in the parent
//     child.env = {{"TMPDIR", dir.Path()}};
//     child.args = {"-clargsfile", file};
//     VRKChildResult result = child.Run();
//     EXPECT_EQ(result.exitCode, 0) << result.err;
//   }
#ifndef VRKTESTCHILD_H
#define VRKTESTCHILD_H

#include <string>
#include <utility>
#include <vector>

// What a child did: its exit code, or the signal that ended it (then exitCode is -1), and
// all it wrote on its standard output and error.
struct VRKChildResult {
  int exitCode = -1;
  int signal = 0;
  std::string out;
  std::string err;
};

struct VRKChild {
  explicit VRKChild(std::string childRole) : role(std::move(childRole)) {}

  // Starts the child, feeds it `input` on its standard input and waits for it to end.
  VRKChildResult Run() const;
  // Starts the child with its standard streams on /dev/null and returns its process id; the
  // caller waits for it (VRKChildWait) or signals it.
  int Start() const;

  std::string role;
  std::vector<std::pair<std::string, std::string>> env;  // set in the child
  std::vector<std::string> unset;                        // removed from the child's environment
  std::vector<std::string> args;                         // for the child's VRKChildArgs()
  std::string input;
};

// How to run the current test again with `role` from a spawner of the library's own: the
// program, its arguments and the variables to add to the child's environment. The child's
// output, as for VRKChild, is what VRKChildOutput leaves of it.
struct VRKChildCommand {
  std::string program;
  std::vector<std::string> args;
  std::vector<std::pair<std::string, std::string>> env;
};
VRKChildCommand VRKChildCommandFor(const std::string& role,
                                   const std::vector<std::string>& args = {});
// What a child wrote after its role began: the test program's banners before it are cut
// (all is kept when the role never began).
std::string VRKChildOutput(const std::string& written);

// The role this process plays: empty in the test program itself.
std::string VRKChildRole();
// The arguments the parent gave the child.
std::vector<std::string> VRKChildArgs();
// Ends the child at once with `code`, without running the test program's exit handlers.
[[noreturn]] void VRKChildExit(int code);
// Waits for a child started with VRKChild::Start.
VRKChildResult VRKChildWait(int pid);

#endif  // VRKTESTCHILD_H
