// Where the three standard streams of a child process go, in the words of a shell: a symbol
// and a target, a file or a descriptor. A spawn (uti_Spawn) takes the redirection once:
//
//   uti_Redirection redirection(">", "run.log", "<", "input.txt");
//   redirection.Redirect("2>>", "errors.log");
//   uti_Spawn::AndWait("/usr/bin/sort", directory, arguments, redirection, environment);
//
//   uti_Redirection fromText("< input.txt >& all.log");  // the same symbols read from text
//
// The symbols: "<" (stdin), ">" and ">>" (stdout, truncating or appending), "2>" and "2>>"
// (stderr), ">&" and ">>&" (stdout, and stderr with it). A stream takes one target; one left
// undefined is the parent's own. Text is read as on a command line (see uti_Spawn::Parser for
// the quoting): "> 'my file'" and ">'my file'" alike; anything but symbols and their
// targets is refused.
//
// Ownership: the redirection owns the descriptors it holds, those it opened and those given
// to it in a Handle (3 and above): the spawn closes them in the parent once the child has its
// copies, and the destructor closes what is left. Descriptors 0, 1 and 2 are never closed.
// Files named as targets are opened at the spawn (OpenFiles), with close-on-exec, and paths
// are made absolute when the Handle is made. Failures throw: nex_TextException for text and
// symbols that don't fit, uti_IOErrorException for a descriptor that isn't open ("fstat")
// or a file that can't be opened ("open"), nex_SystemErrorException for a pipe that can't be
// made. A failure leaves the slots filled before it as they were. Threads: an object
// belongs to one thread.
#ifndef UTI_REDIRECTION_H
#define UTI_REDIRECTION_H

#include "VRKBasExport.h"
#include "VRKBasSharedContainers.h"
#include "VRKBasUtlFilePath.h"
#include "cow_String.h"
#include "mem_Alloc.h"

class VRKLNU_EXPORT uti_Redirection : public mem_AllocationOperators {
 public:
  // A target: a descriptor, or the absolute path of a file; neither for none.
  class VRKLNU_EXPORT Handle {
   public:
    Handle() = default;
    Handle(int descriptor) : descriptor(descriptor) {}
    Handle(const char* path);
    Handle(const cow_String& path);
    Handle(const VRKBasUtlFilePath& path);

    int descriptor = -1;
    cow_String path;
  };

  struct VRKLNU_EXPORT Redirector {
    bool isUndefined() const { return handle.descriptor == -1 && handle.path.IsEmpty(); }

    Handle handle;
    bool append = false;
  };

  // No stream redirected.
  uti_Redirection() = default;
  // Reads symbols and targets from text (see above); throws nex_TextException naming the
  // position of text that doesn't fit.
  explicit uti_Redirection(const cow_String& text);
  uti_Redirection(const cow_String& symbol, const Handle& handle);
  uti_Redirection(const cow_String& symbol1, const Handle& handle1, const cow_String& symbol2,
                  const Handle& handle2);
  uti_Redirection(const cow_String& symbol1, const Handle& handle1, const cow_String& symbol2,
                  const Handle& handle2, const cow_String& symbol3, const Handle& handle3);
  // Symbols and targets in turn, at most three pairs: "Two many redirection arguments" and
  // "Redirection arguments must be paired" are thrown before any slot is touched.
  explicit uti_Redirection(const cow_List<cow_String>& items);
  // Closes the descriptors of 3 and above still held.
  ~uti_Redirection();
  uti_Redirection(const uti_Redirection&) = delete;
  uti_Redirection& operator=(const uti_Redirection&) = delete;

  // Sends the symbol's stream to the handle: "Unrecognized redirector symbol" for an unknown
  // symbol, "Stream <name> has already redirected." for a stream that has a target.
  void Redirect(const cow_String& symbol, const Handle& handle);
  static bool IsSymbol(const cow_String& text);
  // "/dev/null".
  static cow_String NullDevice();
  // Sends each undefined stream to the null device.
  void Nullify();

  // Opens the files named as targets: stdin for reading, the others for writing (created,
  // truncated or appended to). On a failure the files opened by this call are closed again.
  void OpenFiles();
  // Makes a pipe whose write end becomes the child's stdout; returns the read end, which the
  // caller owns. Throws "Stream stdout has already redirected." when stdout has a target.
  int ConnectStdoutPipe();
  // Makes a pipe whose read end becomes the child's stdin; returns the write end, which the
  // caller owns.
  int ConnectStdinPipe();

  // The slot of stream 0, 1 or 2.
  const Redirector& getRedirector(int stream) const { return m_Slots[stream]; }

 private:
  friend class uti_Spawn;

  void setRedirector(int stream, bool append, const Handle& handle);
  // Takes the descriptor as the stream's target; the pipe's other end `keep` is returned, or
  // both are closed when the stream has a target.
  int ConnectPipe(int stream, int take, int keep);
  // Closes the slots' descriptors of 3 and above, and forgets every descriptor: what a spawn
  // does once the child has its copies.
  void ReleaseDescriptors();

  Redirector m_Slots[3];
};

#endif  // UTI_REDIRECTION_H
