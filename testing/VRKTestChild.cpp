#include "VRKTestChild.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <signal.h>
#include <stdlib.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>

namespace {

constexpr const char* kRoleVariable = "VRK_TEST_CHILD_ROLE";
constexpr const char* kArgsVariable = "VRK_TEST_CHILD_ARGS";
constexpr char kArgSeparator = '\x1f';
// Written on both outputs where the child's role begins: the test program's banners before
// it are not the child's.
constexpr char kStartMark = '\x1e';

std::string CurrentTestFilter() {
  const ::testing::TestInfo* test = ::testing::UnitTest::GetInstance()->current_test_info();
  return std::string("--gtest_filter=") + test->test_suite_name() + "." + test->name();
}

std::string JoinedArgs(const std::vector<std::string>& args) {
  std::string joined;
  for (const std::string& arg : args)
    joined += arg + kArgSeparator;
  return joined;
}

// In the forked child: the environment, the standard streams, then the test binary again.
[[noreturn]] void ExecChild(const VRKChild& child, const std::string& filter, const int in[2],
                            const int out[2], const int err[2]) {
  for (const std::string& name : child.unset)
    unsetenv(name.c_str());
  for (const auto& [name, value] : child.env)
    setenv(name.c_str(), value.c_str(), 1);
  setenv(kRoleVariable, child.role.c_str(), 1);
  setenv(kArgsVariable, JoinedArgs(child.args).c_str(), 1);
  dup2(in[0], 0);
  dup2(out[1], 1);
  dup2(err[1], 2);
  for (int fd : {in[0], in[1], out[0], out[1], err[0], err[1]})
    if (fd > 2) close(fd);
  execl("/proc/self/exe", "test-child", filter.c_str(), "--gtest_death_test_style=threadsafe",
        static_cast<char*>(nullptr));
  _exit(127);
}

// Writes `input` and reads both outputs until the child closes them.
void Exchange(int in, int out, int err, const std::string& input, VRKChildResult& result) {
  size_t written = 0;
  if (input.empty()) {
    close(in);
    in = -1;
  }
  while (out >= 0 || err >= 0) {
    pollfd fds[3] = {{out, POLLIN, 0}, {err, POLLIN, 0}, {in, POLLOUT, 0}};
    if (poll(fds, 3, -1) < 0 && errno != EINTR) break;
    std::string* sinks[2] = {&result.out, &result.err};
    int* ends[2] = {&out, &err};
    for (int i = 0; i < 2; ++i) {
      if (fds[i].revents == 0) continue;
      char buffer[4096];
      const ssize_t n = read(fds[i].fd, buffer, sizeof buffer);
      if (n > 0) {
        sinks[i]->append(buffer, static_cast<size_t>(n));
      } else if (n == 0 || errno != EINTR) {
        close(*ends[i]);
        *ends[i] = -1;
      }
    }
    if (in >= 0 && fds[2].revents != 0) {
      const ssize_t n = write(in, input.data() + written, input.size() - written);
      if (n > 0) written += static_cast<size_t>(n);
      if ((n < 0 && errno != EINTR) || written == input.size()) {
        close(in);
        in = -1;
      }
    }
  }
  if (in >= 0) close(in);
}

int Fork(const VRKChild& child, int in[2], int out[2], int err[2]) {
  fflush(nullptr);
  const std::string filter = CurrentTestFilter();
  const pid_t pid = fork();
  if (pid == 0) ExecChild(child, filter, in, out, err);
  close(in[0]);
  close(out[1]);
  close(err[1]);
  return pid;
}

}  // namespace

VRKChildResult VRKChild::Run() const {
  int in[2], out[2], err[2];
  if (pipe2(in, O_CLOEXEC) != 0 || pipe2(out, O_CLOEXEC) != 0 || pipe2(err, O_CLOEXEC) != 0) {
    ADD_FAILURE() << "cannot make the child's pipes";
    return {};
  }
  // A child that stops reading must not kill the parent with SIGPIPE.
  signal(SIGPIPE, SIG_IGN);
  const int pid = Fork(*this, in, out, err);
  VRKChildResult result;
  Exchange(in[1], out[0], err[0], input, result);
  result.out = VRKChildOutput(result.out);
  result.err = VRKChildOutput(result.err);
  const VRKChildResult status = VRKChildWait(pid);
  result.exitCode = status.exitCode;
  result.signal = status.signal;
  return result;
}

int VRKChild::Start() const {
  int null[2] = {open("/dev/null", O_RDWR | O_CLOEXEC), -1};
  null[1] = null[0];
  int in[2] = {null[0], -1}, out[2] = {-1, null[1]}, err[2] = {-1, null[1]};
  const std::string filter = CurrentTestFilter();
  fflush(nullptr);
  const pid_t pid = fork();
  if (pid == 0) ExecChild(*this, filter, in, out, err);
  close(null[0]);
  return pid;
}

VRKChildResult VRKChildWait(int pid) {
  VRKChildResult result;
  int status = 0;
  while (waitpid(pid, &status, 0) < 0 && errno == EINTR) {
  }
  if (WIFEXITED(status)) result.exitCode = WEXITSTATUS(status);
  if (WIFSIGNALED(status)) result.signal = WTERMSIG(status);
  return result;
}

VRKChildCommand VRKChildCommandFor(const std::string& role, const std::vector<std::string>& args) {
  char program[4096];
  const ssize_t length = readlink("/proc/self/exe", program, sizeof program - 1);
  VRKChildCommand command;
  command.program.assign(program, length > 0 ? static_cast<size_t>(length) : 0);
  command.args = {CurrentTestFilter(), "--gtest_death_test_style=threadsafe"};
  command.env = {{kRoleVariable, role}, {kArgsVariable, JoinedArgs(args)}};
  return command;
}

std::string VRKChildOutput(const std::string& written) {
  // Without the mark, the role never began: everything is kept for the report.
  const size_t mark = written.find(kStartMark);
  return mark == std::string::npos ? written : written.substr(mark + 1);
}

std::string VRKChildRole() {
  static bool marked = false;
  const char* role = getenv(kRoleVariable);
  if (role == nullptr) return "";
  if (!marked) {
    marked = true;
    fflush(nullptr);
    (void)!write(1, &kStartMark, 1);
    (void)!write(2, &kStartMark, 1);
  }
  return role;
}

std::vector<std::string> VRKChildArgs() {
  std::vector<std::string> args;
  const char* joined = getenv(kArgsVariable);
  std::string arg;
  for (const char* c = joined ? joined : ""; *c != '\0'; ++c) {
    if (*c != kArgSeparator) {
      arg += *c;
      continue;
    }
    args.push_back(arg);
    arg.clear();
  }
  return args;
}

void VRKChildExit(int code) {
  fflush(nullptr);
  _exit(code);
}
