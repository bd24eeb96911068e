#include "uti_Spawn.h"

#include <errno.h>
#include <poll.h>
#include <signal.h>
#include <spawn.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <climits>
#include <cstring>
#include <ctime>
#include <mutex>

#include "internal/uti_ShellWords.h"
#include "pnt_PrettyPrint.h"
#include "typ_DebugFlags.h"
#include "uti_IOErrorException.h"
#include "utl_PathFinder.h"

extern char** environ;

namespace {

// The debug facility of the package.
constexpr unsigned kFacility = 2;
// waitid's selector for a process descriptor, which glibc 2.36 doesn't name.
const idtype_t kByDescriptor = static_cast<idtype_t>(3);

int DebugLevel() {
  return typ_DebugFlags::GetDebugFlags(kFacility);
}

// The argument vector or environment of a child: the strings and a null-terminated array of
// pointers to them, in a block from the memory layer.
class CStrings {
 public:
  explicit CStrings(const cow_List<cow_String>& strings)
      : m_Strings(strings),
        m_Array(static_cast<char**>(mem_OperatorNewThrow(sizeof(char*) * (strings.Count() + 1u)))) {
    for (int i = 0; i < strings.Count(); ++i)
      m_Array[i] = const_cast<char*>(m_Strings[i].c_str());
    m_Array[strings.Count()] = nullptr;
  }
  ~CStrings() { mem_Free(m_Array); }
  CStrings(const CStrings&) = delete;
  CStrings& operator=(const CStrings&) = delete;

  char** Array() const { return m_Array; }

 private:
  cow_List<cow_String> m_Strings;
  char** m_Array;
};

cow_List<cow_String> EnvironmentLines(const uti_Environment& environment) {
  cow_List<cow_String> lines;
  cow_ConstMapSortedIt<cow_String, cow_String> it(environment);
  for (it.First(); !it.IsDone(); it.Next())
    lines.Append(it.CurrentKey() + "=" + it.CurrentValue());
  return lines;
}

// The command line as a reader sees it: pieces with a blank or a tab between double quotes.
cow_String QuotedLine(const cow_String& command, const cow_List<cow_String>& arguments) {
  cow_String line;
  for (int i = -1; i < arguments.Count(); ++i) {
    const cow_String& piece = i < 0 ? command : arguments[i];
    if (i >= 0) line += " ";
    const bool quote = piece.Find(" ") < piece.Length() || piece.Find("\t") < piece.Length();
    line += quote ? cow_String("\"") + piece + "\"" : piece;
  }
  return line;
}

void DebugSpawn(const cow_String& command, const cow_List<cow_String>& arguments,
                const uti_Redirection& redirection, const uti_Environment& environment) {
  const int level = DebugLevel();
  if (level < 1) return;
  pnt_PrettyPrint& pp = pnt_debugPrint();
  if (level >= 2) {
    for (int stream = 0; stream < 3; ++stream) {
      const int fd = redirection.getRedirector(stream).handle.descriptor;
      pp << "uti_Spawn: redirecting standard handle " << stream << " on handle " << fd
         << " to handle " << (fd >= 1 ? fd : stream);
      pp.Flush();
    }
  }
  pp << "uti_Spawn - spawning: " << QuotedLine(command, arguments).c_str();
  pp.Flush();
  if (level >= 2) {
    for (int i = 0; i < arguments.Count(); ++i) {
      pp << "              argument " << i << ": " << arguments[i].c_str();
      pp.Flush();
    }
  }
  if (level >= 3) {
    const cow_List<cow_String> lines = EnvironmentLines(environment);
    for (int i = 0; i < lines.Count(); ++i) {
      pp << "              env: " << lines[i].c_str();
      pp.Flush();
    }
    for (char** line = environment.Count() == 0 ? environ : nullptr; line && *line; ++line) {
      pp << "              env: " << *line;
      pp.Flush();
    }
  }
}

// Children forgotten while they ran, reaped when they have ended. A fixed table, so that
// forgetting needs no memory; a child that finds it full stays unreaped until the program
// ends.
std::mutex forgottenLock;
int forgotten[256];
int forgottenCount = 0;

void RememberForgotten(int pid) {
  std::lock_guard<std::mutex> lock(forgottenLock);
  if (forgottenCount < static_cast<int>(sizeof forgotten / sizeof forgotten[0])) {
    forgotten[forgottenCount++] = pid;
  }
}

void ReapForgotten() {
  std::lock_guard<std::mutex> lock(forgottenLock);
  for (int i = 0; i < forgottenCount;) {
    if (::waitpid(forgotten[i], nullptr, WNOHANG) == 0) {
      ++i;
    } else {
      forgotten[i] = forgotten[--forgottenCount];
    }
  }
}

// The child's streams: each slot's descriptor, where it has one that isn't the stream's own,
// becomes the stream; descriptor 1 or 2 names the child's stream of that number as it stands
// then, so that stderr follows a redirected stdout. Every other descriptor is closed.
int AddStreams(posix_spawn_file_actions_t* actions, const uti_Redirection& redirection) {
  for (int stream = 0; stream < 3; ++stream) {
    const int fd = redirection.getRedirector(stream).handle.descriptor;
    if (fd < 1 || fd == stream) continue;
    if (const int error = posix_spawn_file_actions_adddup2(actions, fd, stream)) return error;
  }
  return posix_spawn_file_actions_addclosefrom_np(actions, 3);
}

int SetAttributes(posix_spawnattr_t* attributes, int mode) {
  sigset_t none, all;
  sigemptyset(&none);
  sigfillset(&all);
  short flags = POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF;
  // A child with no console: a session of its own, without a controlling terminal.
  if (mode < 0) flags |= POSIX_SPAWN_SETSID;
  int error = posix_spawnattr_setflags(attributes, flags);
  if (error == 0) error = posix_spawnattr_setsigmask(attributes, &none);
  if (error == 0) error = posix_spawnattr_setsigdefault(attributes, &all);
  return error;
}

// Starts the program: 0 and the child's id, or the system's error.
int Start(const cow_String& path, const VRKBasUtlFilePath& directory, char** argv, char** envp,
          const uti_Redirection& redirection, int mode, pid_t& pid) {
  posix_spawn_file_actions_t actions;
  posix_spawnattr_t attributes;
  posix_spawn_file_actions_init(&actions);
  posix_spawnattr_init(&attributes);
  int error = AddStreams(&actions, redirection);
  const cow_String where = directory.PathName();
  if (error == 0 && !where.IsEmpty() && where != ".") {
    error = posix_spawn_file_actions_addchdir_np(&actions, where.c_str());
  }
  if (error == 0) error = SetAttributes(&attributes, mode);
  if (error == 0) error = posix_spawn(&pid, path.c_str(), &actions, &attributes, argv, envp);
  posix_spawnattr_destroy(&attributes);
  posix_spawn_file_actions_destroy(&actions);
  return error;
}

// A descriptor of the child, or -1 with errno. The call is made directly: glibc 2.36's
// declaration of pidfd_open can't be included from C++.
int OpenProcess(pid_t pid) {
  return static_cast<int>(::syscall(SYS_pidfd_open, pid, 0));
}

// Waits until one of the descriptors is readable or the milliseconds (-1: no limit) are
// over; returns how many are.
int WaitReadable(pollfd* fds, int count, int milliseconds) {
  for (;;) {
    const int ready = ::poll(fds, static_cast<nfds_t>(count), milliseconds);
    if (ready >= 0 || errno != EINTR) return ready;
  }
}

void CloseDescriptor(int& fd) {
  if (fd >= 0) ::close(fd);
  fd = -1;
}

void ThrowStatusLost(int error) {
  NEX_THROW(uti_IOErrorException("GetExitCodeProcess", error));
}

}  // namespace

uti_NotOnPathException::~uti_NotOnPathException() = default;

uti_NotExecutableException::~uti_NotExecutableException() = default;

uti_Spawn::Parser::Parser(const cow_String& commandLine) : m_Directory(cow_String(".")) {
  const cow_List<uti_ShellToken> tokens = uti_ShellWords(commandLine);
  bool haveCommand = false;
  for (int i = 0; i < tokens.Count();) {
    const uti_ShellToken& token = tokens[i];
    if (token.isSymbol) {
      i = uti_RedirectToken(m_Redirection, tokens, i);
      continue;
    }
    if (haveCommand) {
      m_Arguments.Append(token.text);
    } else if (token.nameLength > 0) {
      m_Assignments.Insert(token.text.Substr(0, token.nameLength),
                           token.text.Substr(token.nameLength + 1, -1));
    } else {
      m_Command = token.text;
      haveCommand = true;
    }
    ++i;
  }
  if (!haveCommand) uti_ShellError("no command", commandLine.Length() + 1);
  m_Environment = EnvironmentOver(uti_Environment());
}

uti_Environment uti_Spawn::Parser::EnvironmentOver(const uti_Environment& base) const {
  if (m_Assignments.Count() == 0) return base;
  uti_Environment environment = base.Count() > 0 ? base : getEnvironment();
  cow_ConstMapIterator<cow_String, cow_String> it(m_Assignments);
  for (it.First(); !it.IsDone(); it.Next()) {
    if (environment.IsMember(it.CurrentKey())) environment.Remove(it.CurrentKey());
    environment.Insert(it.CurrentKey(), it.CurrentValue());
  }
  return environment;
}

uti_Spawn::uti_Spawn() = default;

uti_Spawn::uti_Spawn(const cow_String& command, const VRKBasUtlFilePath& directory,
                     const cow_List<cow_String>& arguments, uti_Redirection& redirection,
                     const uti_Environment& environment) {
  spawn(command, directory, arguments, redirection, environment, 1);
}

uti_Spawn::uti_Spawn(const cow_String& commandLine) {
  Parser parser(commandLine);
  spawn(parser.Command(), parser.Directory(), parser.Arguments(), parser.Redirection(),
        parser.Environment(), 1);
}

uti_Spawn::~uti_Spawn() {
  if (m_Running) Forget();
}

bool uti_Spawn::IsRunning() {
  uti_Spawn::Reap(-1);
  return m_Running;
}

int uti_Spawn::Reap(int seconds) {
  if (!m_Running) return m_Status;
  if (seconds < 0) {
    Look(false);
    return m_Status;
  }
  pollfd fd = {m_Process, POLLIN, 0};
  // Waits beyond the reach of poll's milliseconds have no limit either.
  const int milliseconds = seconds == 0 || seconds > INT_MAX / 1000 ? -1 : seconds * 1000;
  for (;;) {
    const int ready = WaitReadable(&fd, 1, milliseconds);
    if (Look(false) || ready == 0) break;
  }
  return m_Status;
}

void uti_Spawn::Detach() {
  if (!m_Running) return;
  // A child whose end waitForAny has seen is reaped now.
  if (m_Status >= 0) uti_Spawn::Reap(0);
  if (m_Running) Forget();
  m_Status = kDetached;
}

int uti_Spawn::Kill() {
  return Signal(SIGKILL);
}

int uti_Spawn::Interrupt() {
  return Signal(SIGINT);
}

int uti_Spawn::TerminatingSignal(int status) {
  return status > kSignalled && status < kSignalled + 128 ? status - kSignalled : 0;
}

int uti_Spawn::AndWait(const cow_String& command, const VRKBasUtlFilePath& directory,
                       const cow_List<cow_String>& arguments, uti_Redirection& redirection,
                       const uti_Environment& environment) {
  uti_Spawn child;
  child.spawn(command, directory, arguments, redirection, environment, 1);
  return child.Reap(0);
}

void uti_Spawn::AndExit(const cow_String& command, const VRKBasUtlFilePath& directory,
                        const cow_List<cow_String>& arguments, uti_Redirection& redirection,
                        const uti_Environment& environment) {
  uti_Spawn child;
  child.spawn(command, directory, arguments, redirection, environment, 0);
}

void uti_Spawn::Daemon(const cow_String& command, const VRKBasUtlFilePath& directory,
                       const cow_List<cow_String>& arguments, uti_Redirection& redirection,
                       const uti_Environment& environment) {
  redirection.Nullify();
  uti_Spawn child;
  child.spawn(command, directory, arguments, redirection, environment, -1);
  child.Detach();
}

int uti_Spawn::AndWait(const cow_String& commandLine, const uti_Environment& environment) {
  Parser parser(commandLine);
  return AndWait(parser.Command(), parser.Directory(), parser.Arguments(), parser.Redirection(),
                 parser.EnvironmentOver(environment));
}

void uti_Spawn::AndExit(const cow_String& commandLine, const uti_Environment& environment) {
  Parser parser(commandLine);
  AndExit(parser.Command(), parser.Directory(), parser.Arguments(), parser.Redirection(),
          parser.EnvironmentOver(environment));
}

void uti_Spawn::Daemon(const cow_String& commandLine, const uti_Environment& environment) {
  Parser parser(commandLine);
  Daemon(parser.Command(), parser.Directory(), parser.Arguments(), parser.Redirection(),
         parser.EnvironmentOver(environment));
}

uti_Spawn* uti_Spawn::waitForAny(uti_Spawn** children, int count) {
  if (count < 1) return nullptr;
  for (int i = 0; i < count; ++i) {
    if (!children[i]->IsRunning()) return children[i];
  }
  pollfd* fds = static_cast<pollfd*>(mem_OperatorNewThrow(sizeof(pollfd) * count));
  for (int i = 0; i < count; ++i)
    fds[i] = pollfd{children[i]->m_Process, POLLIN, 0};
  const int ready = WaitReadable(fds, count, -1);
  const int error = errno;
  int first = 0;
  while (first < count && fds[first].revents == 0)
    ++first;
  mem_Free(fds);
  if (ready < 0) ThrowStatusLost(error);
  // Seen, not reaped: the child counts as running until its Reap.
  children[first]->Look(true);
  return children[first];
}

int uti_Spawn::waitForAll(uti_Spawn** children, int count, int seconds) {
  const time_t start = std::time(nullptr);
  if (count < 1) return count;
  int running = count;
  for (int i = 0; i < count; ++i) {
    const int left = seconds - static_cast<int>(std::time(nullptr) - start);
    const int status = children[i]->Reap(left < 1 ? -1 : left);
    if (DebugLevel() >= 1) {
      pnt_PrettyPrint& pp = pnt_debugPrint();
      pp << "uti_Spawn::waitForAll reaped process #" << i << " with exit code " << status;
      pp.Flush();
    }
  }
  for (int i = 0; i < count; ++i)
    running -= !children[i]->IsRunning();
  return running;
}

uti_Environment uti_Spawn::getEnvironment() {
  uti_Environment environment;
  for (char** entry = environ; entry != nullptr && *entry != nullptr; ++entry) {
    const cow_String line(*entry);
    const int equals = line.Find("=");
    const cow_String name = line.Substr(0, equals);
    if (!environment.IsMember(name)) environment.Insert(name, line.Substr(equals + 1, -1));
  }
  return environment;
}

void uti_Spawn::spawn(const cow_String& command, const VRKBasUtlFilePath& directory,
                      const cow_List<cow_String>& arguments, uti_Redirection& redirection,
                      const uti_Environment& environment, int mode) {
  ReapForgotten();
  pid_t pid = 0;
  cow_String path;
  int error = 0;
  // The descriptors that the redirection holds go once the child has its copies, or when
  // anything fails.
  try {
    redirection.OpenFiles();
    path = FindCommand(command);
    cow_List<cow_String> argv = arguments;
    argv.Prepend(command);
    const CStrings args(argv);
    const CStrings lines(EnvironmentLines(environment));
    DebugSpawn(command, arguments, redirection, environment);
    error = Start(path, directory, args.Array(), environment.Count() > 0 ? lines.Array() : environ,
                  redirection, mode, pid);
  } catch (...) {
    redirection.ReleaseDescriptors();
    throw;
  }
  redirection.ReleaseDescriptors();
  if (error != 0) NEX_THROW(uti_IOErrorException("CreateProcess", error, path));
  m_Process = OpenProcess(pid);
  if (m_Process < 0) {
    // A child that can't be followed is not left running.
    const int lost = errno;
    ::kill(pid, SIGKILL);
    ::waitpid(pid, nullptr, 0);
    NEX_THROW(uti_IOErrorException("CreateProcess", lost, path));
  }
  m_Pid = pid;
  m_Status = -1;
  m_Running = true;
}

cow_String uti_Spawn::FindCommand(const cow_String& command) {
  // A path is taken as it is; only a bare name is looked up, with no suffix added.
  if (command.Find("/") < command.Length()) return VRKBasUtlFilePath(command).AbsolutePathName();
  const cow_String found = utl_PathFinder::getPath("PATH", command, false, false, false);
  if (found.IsEmpty()) {
    NEX_THROW(uti_NotOnPathException(nex_Translate("%s not found in PATH.", command)));
  }
  const VRKBasUtlFilePath hit(found);
  if (hit.IsDir() || !hit.IsExecutable()) {
    NEX_THROW(uti_NotExecutableException(nex_Translate("%s is not executable.", found)));
  }
  return found;
}

bool uti_Spawn::Look(bool keep) {
  siginfo_t info;
  info.si_pid = 0;
  const int options = WEXITED | WNOHANG | (keep ? WNOWAIT : 0);
  if (::waitid(kByDescriptor, static_cast<id_t>(m_Process), &info, options) != 0) {
    ThrowStatusLost(errno);
  }
  if (info.si_pid == 0) return false;
  // An exit code keeps its 8 bits; a signal is told apart from every exit code.
  m_Status = info.si_code == CLD_EXITED ? (info.si_status & 0xff) : kSignalled + info.si_status;
  if (!keep) Ended();
  return true;
}

void uti_Spawn::Ended() {
  m_Running = false;
  ::close(m_Process);
  m_Process = -1;
}

void uti_Spawn::Forget() {
  RememberForgotten(m_Pid);
  Ended();
}

void uti_Spawn::Abandon(int& end, uti_Redirection& redirection) {
  CloseDescriptor(end);
  redirection.ReleaseDescriptors();
}

int uti_Spawn::Signal(int signal) {
  if (!m_Running) return -1;
  return ::syscall(SYS_pidfd_send_signal, m_Process, signal, nullptr, 0) == 0 ? 0 : -1;
}

int uti_SpawnReadEnd::GetLine(char* buffer, int size) {
  if (size < 1) return 0;
  buffer[0] = '\0';
  if (stream == nullptr && descriptor >= 0) {
    stream = ::fdopen(descriptor, "r");
    if (stream == nullptr) NEX_THROW(uti_IOErrorException("fdopen", errno));
    descriptor = -1;
  }
  if (stream == nullptr || std::fgets(buffer, size, stream) == nullptr) {
    buffer[0] = '\0';
    return 0;
  }
  return static_cast<int>(std::strlen(buffer));
}

void uti_SpawnReadEnd::Close() {
  if (stream != nullptr) {
    std::fclose(stream);
  } else if (descriptor >= 0) {
    ::close(descriptor);
  }
  stream = nullptr;
  descriptor = -1;
}

uti_SpawnSource::uti_SpawnSource() = default;

uti_SpawnSource::uti_SpawnSource(const cow_String& command, const VRKBasUtlFilePath& directory,
                                 const cow_List<cow_String>& arguments,
                                 uti_Redirection& redirection, const uti_Environment& environment) {
  spawnSource(command, directory, arguments, redirection, environment);
}

uti_SpawnSource::uti_SpawnSource(const cow_String& commandLine) {
  Parser parser(commandLine);
  spawnSource(parser.Command(), parser.Directory(), parser.Arguments(), parser.Redirection(),
              parser.Environment());
}

uti_SpawnSource::~uti_SpawnSource() = default;

int uti_SpawnSource::Reap(int seconds) {
  const int status = uti_Spawn::Reap(seconds);
  if (status != -1) m_Read.Close();
  return status;
}

void uti_SpawnSource::Detach() {
  m_Read.Close();
  uti_Spawn::Detach();
}

void uti_SpawnSource::spawnSource(const cow_String& command, const VRKBasUtlFilePath& directory,
                                  const cow_List<cow_String>& arguments,
                                  uti_Redirection& redirection,
                                  const uti_Environment& environment) {
  Connect(m_Read.descriptor, redirection, &uti_Redirection::ConnectStdoutPipe,
          [&] { spawn(command, directory, arguments, redirection, environment, 1); });
}

uti_SpawnSourceWithSink::uti_SpawnSourceWithSink(const cow_String& command,
                                                 const VRKBasUtlFilePath& directory,
                                                 const cow_List<cow_String>& arguments,
                                                 uti_Redirection& redirection,
                                                 const uti_Environment& environment) {
  spawnSourceWithSink(command, directory, arguments, redirection, environment);
}

uti_SpawnSourceWithSink::uti_SpawnSourceWithSink(const cow_String& commandLine) {
  Parser parser(commandLine);
  spawnSourceWithSink(parser.Command(), parser.Directory(), parser.Arguments(),
                      parser.Redirection(), parser.Environment());
}

uti_SpawnSourceWithSink::~uti_SpawnSourceWithSink() {
  CloseDescriptor(m_Write);
}

int uti_SpawnSourceWithSink::Reap(int) {
  if (IsRunning()) CloseDescriptor(m_Write);
  // Intended: the child ends only once its input has, so the wait has no limit.
  return uti_SpawnSource::Reap(0);
}

void uti_SpawnSourceWithSink::Detach() {
  CloseDescriptor(m_Write);
  uti_SpawnSource::Detach();
}

void uti_SpawnSourceWithSink::spawnSourceWithSink(const cow_String& command,
                                                  const VRKBasUtlFilePath& directory,
                                                  const cow_List<cow_String>& arguments,
                                                  uti_Redirection& redirection,
                                                  const uti_Environment& environment) {
  Connect(m_Write, redirection, &uti_Redirection::ConnectStdinPipe,
          [&] { spawnSource(command, directory, arguments, redirection, environment); });
}

uti_SpawnSink::uti_SpawnSink() = default;

uti_SpawnSink::uti_SpawnSink(const cow_String& command, const VRKBasUtlFilePath& directory,
                             const cow_List<cow_String>& arguments, uti_Redirection& redirection,
                             const uti_Environment& environment) {
  spawnSink(command, directory, arguments, redirection, environment);
}

uti_SpawnSink::uti_SpawnSink(const cow_String& commandLine) {
  Parser parser(commandLine);
  spawnSink(parser.Command(), parser.Directory(), parser.Arguments(), parser.Redirection(),
            parser.Environment());
}

uti_SpawnSink::~uti_SpawnSink() {
  CloseDescriptor(m_Write);
}

int uti_SpawnSink::Reap(int seconds) {
  if (IsRunning()) CloseDescriptor(m_Write);
  return uti_Spawn::Reap(seconds);
}

void uti_SpawnSink::Detach() {
  CloseDescriptor(m_Write);
  uti_Spawn::Detach();
}

void uti_SpawnSink::spawnSink(const cow_String& command, const VRKBasUtlFilePath& directory,
                              const cow_List<cow_String>& arguments, uti_Redirection& redirection,
                              const uti_Environment& environment) {
  Connect(m_Write, redirection, &uti_Redirection::ConnectStdinPipe,
          [&] { spawn(command, directory, arguments, redirection, environment, 1); });
}

uti_SpawnSinkWithSource::uti_SpawnSinkWithSource(const cow_String& command,
                                                 const VRKBasUtlFilePath& directory,
                                                 const cow_List<cow_String>& arguments,
                                                 uti_Redirection& redirection,
                                                 const uti_Environment& environment) {
  spawnSinkWithSource(command, directory, arguments, redirection, environment);
}

uti_SpawnSinkWithSource::uti_SpawnSinkWithSource(const cow_String& commandLine) {
  Parser parser(commandLine);
  spawnSinkWithSource(parser.Command(), parser.Directory(), parser.Arguments(),
                      parser.Redirection(), parser.Environment());
}

uti_SpawnSinkWithSource::~uti_SpawnSinkWithSource() = default;

int uti_SpawnSinkWithSource::Reap(int seconds) {
  const int status = uti_Spawn::Reap(seconds);
  if (status != -1) m_Read.Close();
  return status;
}

void uti_SpawnSinkWithSource::Detach() {
  m_Read.Close();
  uti_Spawn::Detach();
}

void uti_SpawnSinkWithSource::spawnSinkWithSource(const cow_String& command,
                                                  const VRKBasUtlFilePath& directory,
                                                  const cow_List<cow_String>& arguments,
                                                  uti_Redirection& redirection,
                                                  const uti_Environment& environment) {
  Connect(m_Read.descriptor, redirection, &uti_Redirection::ConnectStdoutPipe,
          [&] { spawnSink(command, directory, arguments, redirection, environment); });
}
