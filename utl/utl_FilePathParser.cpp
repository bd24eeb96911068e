#include "utl_FilePathParser.h"

#include <cstring>

namespace {

bool Contains(const cow_String& path, char c) {
  return std::memchr(path.c_str(), c, path.Length()) != nullptr;
}

// Position of the last `c` among the first `length` characters of `text`, or -1.
int LastOf(const char* text, int length, char c) {
  const void* found = memrchr(text, c, length);
  return found ? static_cast<int>(static_cast<const char*>(found) - text) : -1;
}

bool BeginsWithHost(const cow_String& path) {
  return path.Length() >= 2 && path.c_str()[0] == '\\' && path.c_str()[1] == '\\';
}

// A path cut at its last separator by its style.
struct Parts {
  bool styled = false;  // of one of the two styles
  bool hasSeparator = false;
  cow_String dirName;
  cow_String baseName;
  cow_String extension;
};

Parts Split(const cow_String& path) {
  Parts parts;
  const bool windows = utl_FilePathParser::IsWindowsStyle(path);
  parts.styled = windows || utl_FilePathParser::IsUnixStyle(path);
  int start = 0;
  if (windows && utl_FilePathParser::Drive(path) != 0) {
    start = 2;
  } else if (windows && BeginsWithHost(path)) {
    start = 2 + utl_FilePathParser::Host(path).Length();
  }
  const char* text = path.c_str() + start;
  const int length = path.Length() - start;
  const int separator = LastOf(text, length, windows ? '\\' : '/');
  parts.hasSeparator = separator >= 0;
  parts.dirName = cow_String(text, separator < 0 ? 0 : separator);
  const char* name = text + separator + 1;
  const int nameLength = length - separator - 1;
  const int dot = LastOf(name, nameLength, '.');
  parts.baseName = cow_String(name, dot < 0 ? nameLength : dot);
  if (dot >= 0) parts.extension = cow_String(name + dot + 1, nameLength - dot - 1);
  return parts;
}

}  // namespace

bool utl_FilePathParser::IsWindowsStyle(const cow_String& path) {
  const char* text = path.c_str();
  for (int i = 0; i < path.Length(); ++i) {
    const unsigned char c = text[i];
    if ((c >= 1 && c <= 31) || c == '<' || c == '>' || c == '"' || c == '/' || c == '|') {
      return false;
    }
  }
  return true;
}

bool utl_FilePathParser::IsUnixStyle(const cow_String& path) {
  if (Contains(path, '/')) return true;
  return !Contains(path, '\\') && Drive(path) == 0;
}

char utl_FilePathParser::Drive(const cow_String& path) {
  if (path.Length() < 2 || path.c_str()[1] != ':') return 0;
  const char letter = path.c_str()[0];
  if (letter >= 'A' && letter <= 'Z') return static_cast<char>(letter - 'A' + 'a');
  return letter >= 'a' && letter <= 'z' ? letter : 0;
}

bool utl_FilePathParser::HasDrive(const cow_String& path) {
  return IsWindowsStyle(path) && Drive(path) != 0;
}

cow_String utl_FilePathParser::Host(const cow_String& path) {
  if (!BeginsWithHost(path)) return cow_String();
  const char* text = path.c_str() + 2;
  const void* end = std::memchr(text, '\\', path.Length() - 2);
  if (end == nullptr) return cow_String();
  return cow_String(text, static_cast<int>(static_cast<const char*>(end) - text));
}

bool utl_FilePathParser::HasHost(const cow_String& path) {
  return IsWindowsStyle(path) && !Host(path).IsEmpty();
}

cow_String utl_FilePathParser::DirName(const cow_String& path) {
  return Split(path).dirName;
}

cow_String utl_FilePathParser::BaseName(const cow_String& path) {
  return Split(path).baseName;
}

cow_String utl_FilePathParser::Extension(const cow_String& path) {
  return Split(path).extension;
}

bool utl_FilePathParser::HasDirName(const cow_String& path) {
  const Parts parts = Split(path);
  return parts.styled && parts.hasSeparator;
}

bool utl_FilePathParser::HasBaseName(const cow_String& path) {
  const Parts parts = Split(path);
  return parts.styled && !parts.baseName.IsEmpty();
}

bool utl_FilePathParser::HasExtension(const cow_String& path) {
  const Parts parts = Split(path);
  return parts.styled && !parts.extension.IsEmpty();
}
