#include "utl_PathFinder.h"

#include <cstdlib>

#include "VRKBasUtlFilePath.h"
#include "nex_TextException.h"

namespace {

constexpr const char* kRemoteDirectories[] = {"usr/ucb", "usr/net", "usr/bsd", "/usr/bin"};
constexpr const char* kRemoteCommands[] = {"rsh", "remsh"};
constexpr const char* kSecureDirectories[] = {"/usr/bin"};
constexpr const char* kSecureCommands[] = {"ssh"};

// The first "directory/command" of the lists, by command then directory, that exists and is
// executable; raises with `failure` when there is none.
template <size_t kDirectories, size_t kCommands>
cow_String FindShell(const char* const (&directories)[kDirectories],
                     const char* const (&commands)[kCommands], const char* failure) {
  for (const char* command : commands) {
    for (const char* directory : directories) {
      const VRKBasUtlFilePath candidate{cow_String(directory), cow_String(command)};
      if (candidate.Exists() && candidate.IsExecutable()) return candidate.PathName();
    }
  }
  NEX_THROW(nex_TextException(nex_Translate(failure)));
}

}  // namespace

// On Windows the ".exe" variant is tried; here programs carry no suffix, so the two flags have
// nothing to ask for.
cow_String utl_PathFinder::getSubDirPath(const cow_String& variable, const cow_String& subDirectory,
                                         const cow_String& file, bool mustBeReadable, bool, bool) {
  const char* list = std::getenv(variable.c_str());
  if (list == nullptr || *list == '\0' || file.IsEmpty()) return cow_String();
  cow_String tail = file.c_str()[0] == '/' ? cow_String() : cow_String("/");
  if (!subDirectory.IsEmpty()) tail += subDirectory + "/";
  tail += file;
  for (const char* start = list; *start != '\0';) {
    const char* end = start;
    while (*end != '\0' && *end != ':')
      ++end;
    if (end > start) {
      const cow_String path = cow_String(start, static_cast<int>(end - start)) + tail;
      const VRKBasUtlFilePath candidate(path);
      if (candidate.Exists())
        return mustBeReadable && !candidate.IsReadable() ? cow_String() : path;
    }
    start = *end == ':' ? end + 1 : end;
  }
  return cow_String();
}

cow_String utl_PathFinder::getPath(const cow_String& variable, const cow_String& file,
                                   bool mustBeReadable, bool tryExe, bool appendExe) {
  return getSubDirPath(variable, cow_String(), file, mustBeReadable, tryExe, appendExe);
}

// The platform test that answers "rsh" at once on Windows has no case on this system.
cow_String remoteShellCommand() {
  return FindShell(kRemoteDirectories, kRemoteCommands, "Cannot find remote shell command");
}

cow_String secureShellCommand() {
  return FindShell(kSecureDirectories, kSecureCommands, "Cannot find secure shell command");
}
