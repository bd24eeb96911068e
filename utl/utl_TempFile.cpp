#include "utl_TempFile.h"

#include <fcntl.h>
#include <sys/random.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>

#include "VRKBasUtlStat.h"
#include "cow_SystemErrorCode.h"
#include "utl_CommandLine.h"
#include "utl_DiskAttributes.h"
#include "utl_TempFileException.h"

namespace {

// The value of an option of the command line, empty when it isn't given.
cow_String Option(const char* name) {
  return utl_CommandLine::Instance().ConstGetValue(name, cow_String());
}

// The directory without its trailing '/', except for the root, which keeps it.
cow_String WithoutSeparator(const cow_String& directory) {
  const int length = directory.Length();
  return length > 1 && directory.c_str()[length - 1] == '/' ? directory.Substr(0, length - 1)
                                                            : directory;
}

// The first candidate that is a directory, with a '/' behind; empty when none is.
cow_String ChooseDirectory() {
  const char* scratch = std::getenv("SCRATCH");
  const char* temporary = std::getenv("TMPDIR");
  for (const cow_String& candidate :
       {Option("tmpdir"), cow_String(scratch), cow_String(temporary)}) {
    if (candidate.IsEmpty() || !VRKBasUtlStat(WithoutSeparator(candidate)).IsDir()) continue;
    cow_String chosen = candidate;
    if (chosen.c_str()[chosen.Length() - 1] != '/') chosen += "/";
    return chosen;
  }
  return cow_String();
}

// Replaces the trailing "XXXXXX" of `path` by characters that make the name of no file there
// now; false after many tries.
bool Uniquify(cow_String& path) {
  static const char kAlphabet[] = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789";
  const int at = path.Length() - 6;
  for (int attempt = 0; attempt < 100; ++attempt) {
    unsigned char random[6];
    if (getrandom(random, sizeof random, 0) != static_cast<ssize_t>(sizeof random)) return false;
    for (int i = 0; i < 6; ++i)
      path[at + i] = kAlphabet[random[i] % (sizeof kAlphabet - 1)];
    struct stat status;
    if (lstat(path.c_str(), &status) != 0 && errno == ENOENT) return true;
  }
  return false;
}

[[noreturn]] void RaiseOpen(const cow_String& name, int error) {
  NEX_THROW(utl_TempFileOpenExc(name, cow_SystemErrorCode(static_cast<unsigned>(error)).GetText()));
}

}  // namespace

utl_TempFile::utl_TempFile(const cow_String& suffix) : m_Name(suffix) {}

utl_TempFile::~utl_TempFile() {
  if (!m_IsNamed) return;
  Close();
  ::unlink(m_Name.c_str());
}

void utl_TempFile::MakeName() const {
  if (m_IsNamed) return;
  const cow_String directory = ChooseDirectory();
  if (directory.IsEmpty()) NEX_THROW(utl_TempFileCantExc());
  m_AvailableSpace = utl_DiskAttributes(WithoutSeparator(directory)).GetFreeDiskSpace();
  cow_String path = directory + "LnqTempFileXXXXXX";
  if (!Uniquify(path)) NEX_THROW(utl_TempFileCantExc());
  if (!m_Name.IsEmpty() && m_Name.c_str()[0] != '.') path += ".";
  m_Name = path + m_Name;
  m_IsNamed = true;
}

const cow_String& utl_TempFile::Name() const {
  MakeName();
  return m_Name;
}

uint64_t utl_TempFile::AvailableSpace() const {
  MakeName();
  return m_AvailableSpace;
}

void utl_TempFile::Create() {
  MakeName();
  // Exclusive creation closes the gap between naming and creating.
  const int fd = ::open(m_Name.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
  if (fd < 0) RaiseOpen(m_Name, errno);
  Close();
  m_Descriptor = fd;
}

bool utl_TempFile::OpenIfPresent() {
  MakeName();
  Close();
  m_Descriptor = ::open(m_Name.c_str(), O_RDWR | O_CLOEXEC);
  if (m_Descriptor >= 0) return true;
  if (errno != ENOENT) RaiseOpen(m_Name, errno);
  return false;
}

void utl_TempFile::Open() {
  if (!OpenIfPresent()) RaiseOpen(m_Name, ENOENT);
}

void utl_TempFile::Close() {
  if (m_Descriptor >= 0) ::close(m_Descriptor);
  m_Descriptor = -1;
}
