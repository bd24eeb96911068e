// Finding a file along a list of directories held in an environment variable, and finding
// the commands of the remote and secure shells.
//
//   cow_String tool = utl_PathFinder::getPath("PATH", "gzip", true, false, false);
//   if (tool.IsEmpty()) ...not found, or found first where it can't be read...
//
// The variable's directories are separated by ':'. Reading the environment is safe from any
// thread that doesn't change it at the same time.
#ifndef UTL_PATHFINDER_H
#define UTL_PATHFINDER_H

#include "VRKBasExport.h"
#include "cow_String.h"

class VRKLNU_EXPORT utl_PathFinder {
 public:
  // The first "directory/subDirectory/file" that exists, for the directories of `variable`
  // in order (empty ones skipped, and `subDirectory` left out when empty); empty when the
  // variable is unset or empty, `file` is empty, or no directory holds the file. The first
  // directory that holds the file decides: with `mustBeReadable`, a hit that can't be read
  // ends the search with an empty result. A `file` that begins with '/' gets no separator
  // before it; a directory that ends in '/' gets a second one, which the system accepts.
  // `tryExe` and `appendExe` ask for a ".exe" variant, which names no program on this
  // system: they change nothing here.
  static cow_String getSubDirPath(const cow_String& variable, const cow_String& subDirectory,
                                  const cow_String& file, bool mustBeReadable, bool tryExe,
                                  bool appendExe);
  // getSubDirPath with no sub-directory.
  static cow_String getPath(const cow_String& variable, const cow_String& file, bool mustBeReadable,
                            bool tryExe, bool appendExe);
};

// The remote shell: the first executable of "usr/ucb/rsh", "usr/net/rsh", "usr/bsd/rsh",
// "/usr/bin/rsh", then the same directories with "remsh". The first three are relative to
// the working directory: intended, as they have always been. Raises nex_TextException
// "Cannot find remote shell command" when none qualifies.
VRKLNU_EXPORT cow_String remoteShellCommand();
// The secure shell, "/usr/bin/ssh" if it is executable; else raises nex_TextException
// "Cannot find secure shell command".
VRKLNU_EXPORT cow_String secureShellCommand();

#endif  // UTL_PATHFINDER_H
