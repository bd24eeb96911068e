#include "VRKBasUtlFilePath.h"

#include <sys/stat.h>
#include <unistd.h>

#include <climits>

namespace {

cow_String Join(const cow_String& directory, const cow_String& name) {
  if (directory.IsEmpty()) return name;
  if (name.IsEmpty()) return directory;
  return directory.c_str()[directory.Length() - 1] == '/' ? directory + name
                                                          : directory + "/" + name;
}

cow_String WorkingDirectory() {
  char buffer[PATH_MAX];
  return cow_String(::getcwd(buffer, sizeof buffer) ? buffer : "/");
}

// Resolves "." and ".." segments and repeated separators of an absolute path.
cow_String Normalize(const cow_String& path) {
  cow_String result(path.Length(), cow_String::PreSize);
  const char* p = path.c_str();
  while (*p) {
    while (*p == '/')
      ++p;
    const char* end = p;
    while (*end && *end != '/')
      ++end;
    const int length = static_cast<int>(end - p);
    if (length == 2 && p[0] == '.' && p[1] == '.') {
      result.Erase(result.rfind("/", result.Length(), 1), -1);
    } else if (length > 0 && !(length == 1 && p[0] == '.')) {
      result += "/";
      result.append(p, length, 0, length);
    }
    p = end;
  }
  return result.IsEmpty() ? cow_String("/") : result;
}

cow_String Absolute(const cow_String& path) {
  return Normalize(path.c_str()[0] == '/' ? path : Join(WorkingDirectory(), path));
}

bool HasMode(const cow_String& path, mode_t type) {
  struct stat status;
  return ::stat(path.c_str(), &status) == 0 && (status.st_mode & S_IFMT) == type;
}

void MakePortable(cow_String& part) {
  if (part.Find("\\") < part.Length()) part.Substitute("\\", "/", 0);
  while (part.Find("//") < part.Length())
    part.Substitute("//", "/", 0);
  while (part.Find("/./") < part.Length())
    part.Substitute("/./", "/", 0);
  while (part.Find("./") == 0 && part.Length() > 2)
    part.Erase(0, 2);
}

}  // namespace

VRKBasUtlFilePath::VRKBasUtlFilePath(const cow_String& directory, const cow_String& fileName)
    : m_Directory(directory), m_FileName(fileName) {}

VRKBasUtlFilePath::VRKBasUtlFilePath(const cow_String& path) {
  const int slash = path.rfind("/", path.Length(), 1);
  m_Directory = slash == 0 ? cow_String("/") : path.Substr(0, slash < 0 ? 0 : slash);
  m_FileName = path.Substr(slash + 1, -1);
}

cow_String VRKBasUtlFilePath::PathName() const {
  return Join(m_Directory, m_FileName);
}

cow_String VRKBasUtlFilePath::AbsolutePathName() const {
  return Absolute(PathName());
}

cow_String VRKBasUtlFilePath::AbsoluteDirectoryPath() const {
  return Absolute(m_Directory.IsEmpty() ? cow_String(".") : m_Directory);
}

bool VRKBasUtlFilePath::Exists() const {
  return ::access(PathName().c_str(), F_OK) == 0;
}

bool VRKBasUtlFilePath::IsDir() const {
  return HasMode(PathName(), S_IFDIR);
}

bool VRKBasUtlFilePath::IsReadable() const {
  return ::access(PathName().c_str(), R_OK) == 0;
}

bool VRKBasUtlFilePath::IsWriteable() const {
  return ::access(PathName().c_str(), W_OK) == 0;
}

bool VRKBasUtlFilePath::IsExecutable() const {
  return ::access(PathName().c_str(), X_OK) == 0;
}

VRKBasUtlFilePath& VRKBasUtlFilePath::Portable() {
  MakePortable(m_Directory);
  MakePortable(m_FileName);
  return *this;
}
