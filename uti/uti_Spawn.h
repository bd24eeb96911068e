// Child processes: start a program with its arguments, environment and redirected streams,
// wait for it, and read from or write to it through pipes.
//
//   uti_Redirection redirection(">", "sort.log");
//   int status = uti_Spawn::AndWait("sort", VRKBasUtlFilePath(), arguments, redirection, {});
//
//   uti_SpawnSource lister("ls -l /tmp");              // one command line, read as below
//   char line[256];
//   while (lister.GetLine(line, sizeof line) > 0) ...  // the child's output, line by line
//   lister.Reap(0);                                    // its status
//
// The program: a name with a "/" in it is a path, taken as it is (made absolute against the
// working directory); a bare name is looked up along PATH, and the first directory that
// holds it decides (uti_NotOnPathException when none does, uti_NotExecutableException when
// the one found can't be run). No shell is ever run.
//
// The child gets the three standard streams that the redirection names (the parent's own
// where it names none) and no other descriptor of the parent's. It starts in `directory`
// when that names one, else in the parent's working directory. A non-empty environment map
// is the child's whole environment (getEnvironment gives the parent's, to start from); an
// empty one lets the child inherit the parent's. The child's signal mask is empty and its
// signal handlers are the defaults.
//
// Status: -1 until the child has ended; then its exit code (0 to 255); or, for a child that
// a signal ended, kSignalled plus the signal's number (TerminatingSignal tells which); 86
// once the child is detached. A child that is detached, or still running when its object
// goes, is forgotten: the library reaps it when it ends (at a later spawn), so that it
// leaves no zombie, and nobody learns its status.
//
// Failures throw: uti_IOErrorException ("CreateProcess" with the system's error and the
// program, when the program can't be started: missing, a directory, not executable;
// "GetExitCodeProcess" when the status is lost, as when the program ignores SIGCHLD), the
// path errors above, and what uti_Redirection throws. Whatever fails, the descriptors that
// the redirection held are closed and the parent's standard streams are as they were.
//
// Threads: an object belongs to one thread; spawns in different threads may run at once.
// Blocking: Reap, waitForAny and waitForAll wait for children; GetLine waits for a line.
// Writing to a child that has ended raises SIGPIPE unless the program ignores it.
#ifndef UTI_SPAWN_H
#define UTI_SPAWN_H

#include <cstdio>

#include "VRKBasExport.h"
#include "VRKBasSharedContainers.h"
#include "VRKBasUtlFilePath.h"
#include "cow_String.h"
#include "mem_Alloc.h"
#include "nex_TextException.h"
#include "uti_Redirection.h"

typedef cow_Map<cow_String, cow_String> uti_Environment;

// A program name that no directory of PATH holds. Raised, copied and typed as its own class,
// stored as a nex_TextException.
class VRKLNU_EXPORT uti_NotOnPathException
    : public nex_ConcreteException<uti_NotOnPathException, 0x20014, nex_TextException> {
 public:
  using nex_ConcreteException::nex_ConcreteException;
  ~uti_NotOnPathException() override;
};

// A program found on PATH that can't be run. Stored as a nex_TextException.
class VRKLNU_EXPORT uti_NotExecutableException
    : public nex_ConcreteException<uti_NotExecutableException, 0x20015, nex_TextException> {
 public:
  using nex_ConcreteException::nex_ConcreteException;
  ~uti_NotExecutableException() override;
};

class VRKLNU_EXPORT uti_Spawn : public mem_AllocationOperators {
 public:
  // Reads a command line into what a spawn needs, as a shell would read it but with no
  // expansion of any kind:
  //
  //   command-line := { assignment } word { word | redirection }  (redirections anywhere)
  //   assignment   := NAME=value    NAME unquoted, [A-Za-z_][A-Za-z0-9_]*, before the command
  //   redirection  := symbol word   symbol: <  >  >>  2>  2>>  >&  >>&  (target may touch it)
  //   word         := characters up to a blank, "<" or ">"; in it
  //                   '...'   everything literally, up to the next '
  //                   "..."   everything literally, except \" \\ \$ \` (the character) and
  //                           backslash-newline (nothing)
  //                   \c      the character c; backslash-newline joins lines
  //
  // Blanks are space, tab, carriage return and newline. "2>" is a symbol only where a word
  // would begin ("a2>x" is the word a2 and ">x"). The characters | & ; ( ) ` $ outside
  // quotes, $ and ` in double quotes, a zero byte, an unterminated quote, a backslash at the
  // end, a symbol without a target and operators such as "<<" or ">|" are refused with
  // nex_TextException naming the position, counted from 1. A * ? [ ~ or # is an ordinary
  // character: nothing is expanded. A stream redirected twice fails as in uti_Redirection.
  //
  // The assignments are laid over the parent's environment; without any, the environment is
  // empty and the child inherits. The directory is ".".
  class VRKLNU_EXPORT Parser {
   public:
    explicit Parser(const cow_String& commandLine);
    Parser(const Parser&) = delete;
    Parser& operator=(const Parser&) = delete;

    const cow_String& Command() const { return m_Command; }
    const VRKBasUtlFilePath& Directory() const { return m_Directory; }
    const cow_List<cow_String>& Arguments() const { return m_Arguments; }
    const uti_Environment& Environment() const { return m_Environment; }
    uti_Redirection& Redirection() { return m_Redirection; }
    // The assignments laid over `base` (the parent's environment when it is empty); empty
    // when both are.
    uti_Environment EnvironmentOver(const uti_Environment& base) const;

   private:
    cow_String m_Command;
    VRKBasUtlFilePath m_Directory;
    cow_List<cow_String> m_Arguments;
    uti_Environment m_Environment;
    uti_Redirection m_Redirection;
    uti_Environment m_Assignments;
  };

  // Added to a signal's number in the status of a child that the signal ended.
  static constexpr int kSignalled = 256;
  // The status of a child after Detach.
  static constexpr int kDetached = 86;

  // No child.
  uti_Spawn();
  // Starts the child.
  uti_Spawn(const cow_String& command, const VRKBasUtlFilePath& directory,
            const cow_List<cow_String>& arguments, uti_Redirection& redirection,
            const uti_Environment& environment);
  explicit uti_Spawn(const cow_String& commandLine);
  // Forgets a child that still runs; neither waits nor kills.
  virtual ~uti_Spawn();
  uti_Spawn(const uti_Spawn&) = delete;
  uti_Spawn& operator=(const uti_Spawn&) = delete;

  // Whether the child still runs, without waiting.
  virtual bool IsRunning();
  // Waits for the child: without limit for 0 seconds, up to `seconds` for more; only looks
  // for fewer. Returns the status, -1 while the child runs.
  virtual int Reap(int seconds);
  // Forgets the child (see above); the status becomes 86.
  virtual void Detach();
  // Ends the child at once (SIGKILL): 0, or -1 when there is no child to signal.
  int Kill();
  // Asks the child to stop (SIGINT), which it may catch: 0 or -1.
  int Interrupt();

  int Status() const { return m_Status; }
  // The child's process id; 0 before a spawn.
  int ProcessId() const { return m_Pid; }
  // The signal that ended a child with this status, or 0.
  static int TerminatingSignal(int status);

  // Runs a child and waits for it; returns its status.
  static int AndWait(const cow_String& command, const VRKBasUtlFilePath& directory,
                     const cow_List<cow_String>& arguments, uti_Redirection& redirection,
                     const uti_Environment& environment);
  // Starts a child and forgets it.
  static void AndExit(const cow_String& command, const VRKBasUtlFilePath& directory,
                      const cow_List<cow_String>& arguments, uti_Redirection& redirection,
                      const uti_Environment& environment);
  // Starts a child in a session of its own, with its undefined streams on the null device,
  // and forgets it.
  static void Daemon(const cow_String& command, const VRKBasUtlFilePath& directory,
                     const cow_List<cow_String>& arguments, uti_Redirection& redirection,
                     const uti_Environment& environment);
  // The same from one command line; a non-empty `environment` takes the place of the parent's
  // under the line's assignments.
  static int AndWait(const cow_String& commandLine, const uti_Environment& environment);
  static void AndExit(const cow_String& commandLine, const uti_Environment& environment);
  static void Daemon(const cow_String& commandLine, const uti_Environment& environment);

  // The first child of the list that has ended, with its status set but still counted as
  // running until its Reap; waits for one when none has. Null for an empty list.
  static uti_Spawn* waitForAny(uti_Spawn** children, int count);
  // Reaps each child in turn within `seconds` from the call (0: just looks at each); returns
  // how many still run.
  static int waitForAll(uti_Spawn** children, int count, int seconds);
  // The parent's environment, each entry split at its first "=".
  static uti_Environment getEnvironment();

 protected:
  // Starts the child: `mode` 1 a child to wait for, 0 one to leave behind, negative one in a
  // session of its own, with no controlling terminal.
  void spawn(const cow_String& command, const VRKBasUtlFilePath& directory,
             const cow_List<cow_String>& arguments, uti_Redirection& redirection,
             const uti_Environment& environment, int mode);
  // The path of the program to run for a command (see above).
  static cow_String FindCommand(const cow_String& command);
  // Makes one pipe of the redirection (`connect`), keeps the parent's end in `end`, then
  // goes on with `next`; when anything fails, the end and what the redirection holds are
  // closed before the error goes on.
  template <class Next>
  static void Connect(int& end, uti_Redirection& redirection, int (uti_Redirection::*connect)(),
                      Next next) {
    try {
      end = (redirection.*connect)();
      next();
    } catch (...) {
      Abandon(end, redirection);
      throw;
    }
  }

 private:
  // Looks at the child without waiting; with `keep` the child is not reaped. True when it has
  // ended; its status is then set.
  bool Look(bool keep);
  void Ended();
  void Forget();
  int Signal(int signal);
  static void Abandon(int& end, uti_Redirection& redirection);

  int m_Process = -1;  // a descriptor of the child while it runs
  int m_Status = -1;
  bool m_Running = false;
  int m_Pid = 0;
};

// The parent's end of a pipe from a child's stdout, read line by line.
class VRKLNU_EXPORT uti_SpawnReadEnd {
 public:
  uti_SpawnReadEnd() = default;
  ~uti_SpawnReadEnd() { Close(); }
  uti_SpawnReadEnd(const uti_SpawnReadEnd&) = delete;
  uti_SpawnReadEnd& operator=(const uti_SpawnReadEnd&) = delete;

  // One line into `buffer`, its newline included, cut to size - 1 bytes (the rest comes
  // next); 0 and an empty buffer at the end of the output.
  int GetLine(char* buffer, int size);
  void Close();

  int descriptor = -1;  // until the first GetLine
  std::FILE* stream = nullptr;
};

// A child whose stdout the parent reads.
class VRKLNU_EXPORT uti_SpawnSource : public uti_Spawn {
 public:
  uti_SpawnSource(const cow_String& command, const VRKBasUtlFilePath& directory,
                  const cow_List<cow_String>& arguments, uti_Redirection& redirection,
                  const uti_Environment& environment);
  explicit uti_SpawnSource(const cow_String& commandLine);
  ~uti_SpawnSource() override;

  // Waits as uti_Spawn does, and closes the read end once the child has ended.
  int Reap(int seconds) override;
  // Closes the read end and forgets the child.
  void Detach() override;
  int GetLine(char* buffer, int size) { return m_Read.GetLine(buffer, size); }
  int GetReadDescriptor() const { return m_Read.descriptor; }

 protected:
  uti_SpawnSource();
  void spawnSource(const cow_String& command, const VRKBasUtlFilePath& directory,
                   const cow_List<cow_String>& arguments, uti_Redirection& redirection,
                   const uti_Environment& environment);

 private:
  uti_SpawnReadEnd m_Read;
};

// A child whose stdin the parent writes and whose stdout it reads.
class VRKLNU_EXPORT uti_SpawnSourceWithSink : public uti_SpawnSource {
 public:
  uti_SpawnSourceWithSink(const cow_String& command, const VRKBasUtlFilePath& directory,
                          const cow_List<cow_String>& arguments, uti_Redirection& redirection,
                          const uti_Environment& environment);
  explicit uti_SpawnSourceWithSink(const cow_String& commandLine);
  ~uti_SpawnSourceWithSink() override;

  // Closes the write end, so that the child sees the end of its input, then waits for it
  // without limit, whatever `seconds` says: the child ends only once its input has.
  int Reap(int seconds) override;
  void Detach() override;
  int GetWriteDescriptor() const { return m_Write; }

 private:
  void spawnSourceWithSink(const cow_String& command, const VRKBasUtlFilePath& directory,
                           const cow_List<cow_String>& arguments, uti_Redirection& redirection,
                           const uti_Environment& environment);

  int m_Write = -1;
};

// A child whose stdin the parent writes.
class VRKLNU_EXPORT uti_SpawnSink : public uti_Spawn {
 public:
  uti_SpawnSink(const cow_String& command, const VRKBasUtlFilePath& directory,
                const cow_List<cow_String>& arguments, uti_Redirection& redirection,
                const uti_Environment& environment);
  explicit uti_SpawnSink(const cow_String& commandLine);
  ~uti_SpawnSink() override;

  // Closes the write end while the child runs, so that it sees the end of its input, then
  // waits as uti_Spawn does.
  int Reap(int seconds) override;
  void Detach() override;
  int GetWriteDescriptor() const { return m_Write; }

 protected:
  uti_SpawnSink();
  void spawnSink(const cow_String& command, const VRKBasUtlFilePath& directory,
                 const cow_List<cow_String>& arguments, uti_Redirection& redirection,
                 const uti_Environment& environment);

 private:
  int m_Write = -1;
};

// A child whose stdin the parent writes and whose stdout it reads; its Reap leaves the write
// end open.
class VRKLNU_EXPORT uti_SpawnSinkWithSource : public uti_SpawnSink {
 public:
  uti_SpawnSinkWithSource(const cow_String& command, const VRKBasUtlFilePath& directory,
                          const cow_List<cow_String>& arguments, uti_Redirection& redirection,
                          const uti_Environment& environment);
  explicit uti_SpawnSinkWithSource(const cow_String& commandLine);
  ~uti_SpawnSinkWithSource() override;

  // Waits as uti_Spawn does, and closes the read end once the child has ended.
  int Reap(int seconds) override;
  void Detach() override;
  int GetLine(char* buffer, int size) { return m_Read.GetLine(buffer, size); }
  int GetReadDescriptor() const { return m_Read.descriptor; }

 private:
  void spawnSinkWithSource(const cow_String& command, const VRKBasUtlFilePath& directory,
                           const cow_List<cow_String>& arguments, uti_Redirection& redirection,
                           const uti_Environment& environment);

  uti_SpawnReadEnd m_Read;
};

#endif  // UTI_SPAWN_H
