// Reads the parts of a path written in either of the two path styles, whatever the running
// system: Windows style (`C:\dir\name.ext`, `\\host\share\name`, split at `\`) and Unix style
// (`/dir/name.ext`, split at `/`). Pure text functions: nothing asks the file system.
//
//   utl_FilePathParser::Drive("C:\\x\\y.txt");     // 'c'
//   utl_FilePathParser::DirName("C:\\x\\y.txt");   // "\\x"
//   utl_FilePathParser::BaseName("/a/b.tar.gz");   // "b.tar"
//   utl_FilePathParser::Extension("/a/b.tar.gz");  // "gz"
//
// A bare name such as `abc` is of both styles; a path that passes IsWindowsStyle is always
// split the Windows way, after losing its drive (`C:`) or host (`\\host`) prefix. A path may
// hold any bytes. Nothing is thrown but by allocation; safe from any thread.
#ifndef UTL_FILEPATHPARSER_H
#define UTL_FILEPATHPARSER_H

#include "VRKBasExport.h"
#include "cow_String.h"

class VRKLNU_EXPORT utl_FilePathParser {
 public:
  // Empty, or free of `<`, `>`, `"`, `/`, `|` and of the control characters 1 to 31.
  static bool IsWindowsStyle(const cow_String& path);
  // Has a `/`; or else has no `\`, no drive and no host.
  static bool IsUnixStyle(const cow_String& path);

  // The drive letter in lower case when the path begins with a letter and ':', else 0.
  static char Drive(const cow_String& path);
  static bool HasDrive(const cow_String& path);
  // For a path beginning with `\\`, the text up to the next `\`; empty when there is none.
  static cow_String Host(const cow_String& path);
  static bool HasHost(const cow_String& path);

  // The part before the last separator, the part after it less everything from its last
  // '.' on, and the text after that '.'. Each is empty when missing.
  static cow_String DirName(const cow_String& path);
  static cow_String BaseName(const cow_String& path);
  static cow_String Extension(const cow_String& path);

  // Whether the path is of one of the two styles and has the part, not empty. A path of
  // either style has a directory name as soon as it holds its separator, even when the text
  // before it is empty (`\x`, `/x`): this is intended.
  static bool HasDirName(const cow_String& path);
  static bool HasBaseName(const cow_String& path);
  static bool HasExtension(const cow_String& path);
};

#endif  // UTL_FILEPATHPARSER_H
