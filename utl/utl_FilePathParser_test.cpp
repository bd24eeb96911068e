#include "utl_FilePathParser.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using P = utl_FilePathParser;

// A path and every answer about it. The has* flags read: directory, base name, extension,
// host, drive.
struct PathCase {
  std::string path;
  bool windows, unix;
  char drive;
  std::string host, dir, base, ext;
  bool hasDir, hasBase, hasExt, hasHost, hasDrive;
};

const PathCase kPaths[] = {
    {"", true, true, 0, "", "", "", "", false, false, false, false, false},
    {"abc", true, true, 0, "", "", "abc", "", false, true, false, false, false},
    {"a/b", false, true, 0, "", "a", "b", "", true, true, false, false, false},
    {"/usr/lib/libm.so.6", false, true, 0, "", "/usr/lib", "libm.so", "6", true, true, true, false,
     false},
    {"C:\\x\\y.txt", true, false, 'c', "", "\\x", "y", "txt", true, true, true, false, true},
    {"d:name.tar.gz", true, false, 'd', "", "", "name.tar", "gz", false, true, true, false, true},
    {"C:", true, false, 'c', "", "", "", "", false, false, false, false, true},
    {"\\\\srv\\share", true, false, 0, "srv", "", "share", "", true, true, false, true, false},
    {"\\\\srv", true, false, 0, "", "", "srv", "", false, true, false, false, false},
    {"\\\\\\x", true, false, 0, "", "", "x", "", true, true, false, false, false},
    {"dir\\", true, false, 0, "", "dir", "", "", true, false, false, false, false},
    {".bashrc", true, true, 0, "", "", "", "bashrc", false, false, true, false, false},
    // A `/` makes a path Unix-style, whatever else it holds.
    {"C:/x\\y", false, true, 'c', "", "C:", "x\\y", "", true, true, false, false, false},
    // Of neither style: split at `/`, and no part counts.
    {"a<\\b.c", false, false, 0, "", "", "a<\\b", "c", false, false, false, false, false},
    {"C:|", false, false, 'c', "", "", "C:|", "", false, false, false, false, false},
    // Control characters rule out the Windows style; any byte is read safely.
    {"tab\there", false, true, 0, "", "", "tab\there", "", false, true, false, false, false},
    {std::string("a\0b/c\xff.d", 8), false, true, 0, "", std::string("a\0b", 3), "c\xff", "d", true,
     true, true, false, false},
    {std::string("n\0.e", 4), true, true, 0, "", "", std::string("n\0", 2), "e", false, true, true,
     false, false},
};

std::string Text(const cow_String& s) {
  return std::string(s.c_str(), s.Length());
}

TEST(UtlFilePathParser, AnswersForEachPath) {
  for (const PathCase& c : kPaths) {
    const cow_String path(c.path.data(), static_cast<int>(c.path.size()));
    SCOPED_TRACE("path \"" + c.path + "\"");
    EXPECT_EQ(P::IsWindowsStyle(path), c.windows);
    EXPECT_EQ(P::IsUnixStyle(path), c.unix);
    EXPECT_EQ(P::Drive(path), c.drive);
    EXPECT_EQ(Text(P::Host(path)), c.host);
    EXPECT_EQ(Text(P::DirName(path)), c.dir);
    EXPECT_EQ(Text(P::BaseName(path)), c.base);
    EXPECT_EQ(Text(P::Extension(path)), c.ext);
    EXPECT_EQ(P::HasDirName(path), c.hasDir);
    EXPECT_EQ(P::HasBaseName(path), c.hasBase);
    EXPECT_EQ(P::HasExtension(path), c.hasExt);
    EXPECT_EQ(P::HasHost(path), c.hasHost);
    EXPECT_EQ(P::HasDrive(path), c.hasDrive);
  }
}

}  // namespace
