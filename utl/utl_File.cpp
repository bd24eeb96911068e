#include "utl_File.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstring>
#include <exception>

#include "internal/utl_ShareLock.h"
#include "nex_AssertException.h"
#include "nex_TextException.h"
#include "utl_FileException.h"
#include "utl_IOTracker.h"
#include "utl_SystemErrorHandler.h"

namespace {

// The most that one read or write moves on Linux.
constexpr int kLargestTransfer = 0x7ffff000;

atr_String Step(const char* text) {
  return nex_Translate(text);
}

// Raises a failure of the system call just made, with its error number.
template <class Failure>
[[noreturn]] void RaiseErrno(const cow_String& name, const char* step, int line) {
  const int error = errno;
  Failure(error, name, Step(step)).Throw(nex_SourceName(__FILE__).c_str(), line);
}

// A missing file is one whose directory exists; with the directory missing too, it is another
// open failure.
bool DirectoryExists(const cow_String& name) {
  const char* path = name.c_str();
  const char* slash = std::strrchr(path, '/');
  const cow_String directory = slash == nullptr ? cow_String(".")
                               : slash == path  ? cow_String("/")
                                                : cow_String(path, static_cast<int>(slash - path));
  struct stat status;
  return stat(directory.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

}  // namespace

int utl_FileOffset::DiffAsInt32(utl_FileOffset other) const {
  int64_t d;
  if (__builtin_sub_overflow(m_Value, other.m_Value, &d) || d < INT_MIN || d > INT_MAX)
    NEX_THROW(nex_AssertException("d >= INT_MIN && d <= INT_MAX"));
  return static_cast<int>(d);
}

utl_File::utl_File() = default;

utl_File::utl_File(const cow_String& name, utl_FileAccess access, utl_FileSharing sharing)
    : m_Name(name), m_Access(access), m_Sharing(sharing) {}

utl_File::~utl_File() noexcept(false) {
  if (!m_IsOpen || m_Handle < 0) return;
  // The descriptor is gone after close whatever it returns; an interrupted close did close.
  if (::close(m_Handle) == 0 || errno == EINTR || std::uncaught_exceptions() > 0) return;
  RaiseErrno<utl_FileExceptionClose>(m_Name, "CloseHandle", __LINE__);
}

void utl_File::Open(const cow_String& name, utl_FileAccess access, utl_FileSharing sharing) {
  m_Name = name;
  m_Access = access;
  m_Sharing = sharing;
  Init();
}

void utl_File::Init() {
  Opened();
}

void utl_File::Opened() const {
  if (m_IsOpen) return;
  switch (m_Access) {
    case utl_AccessRead:
      m_Handle = OpenRead(m_Name);
      break;
    case utl_AccessUpdate:
      m_Handle = OpenUpdate(m_Name);
      break;
    case utl_AccessWrite:
      m_Handle = OpenWrite(m_Name);
      break;
  }
  m_IsOpen = true;
}

int utl_File::OpenRead(const cow_String& name) const {
  return OpenWith(name, O_RDONLY, "in OpenRead", "CreateFile in OpenRead");
}

int utl_File::OpenUpdate(const cow_String& name) const {
  return OpenWith(name, O_RDWR, "in OpenUpdate", "CreateFile in OpenUpdate");
}

int utl_File::OpenWrite(const cow_String& name) const {
  // The first creation, even one that fails, starts i/o tracking in a run that asked for it.
  utl_IOTracker_Container::Instance();
  return OpenWith(name, O_RDWR | O_CREAT, nullptr, "CreateFile in OpenWrite");
}

int utl_File::OpenWith(const cow_String& name, int flags, const char* missingStep,
                       const char* failedStep) const {
  const int fd = ::open(name.c_str(), flags | O_CLOEXEC, 0666);
  if (fd < 0) {
    const int error = errno;
    if (error == ENOENT && missingStep != nullptr && DirectoryExists(name))
      NEX_THROW(utl_FileExceptionNoFile(name, Step(missingStep)));
    errno = error;
    RaiseErrno<utl_FileExceptionOpen>(name, failedStep, __LINE__);
  }
  const bool writes = m_Access != utl_AccessRead;
  const bool deniesWrite =
      m_Access == utl_AccessRead ? m_Sharing == utl_ShareRead : m_Sharing != utl_ShareAll;
  struct stat status;
  int error = fstat(fd, &status) != 0 ? errno : S_ISDIR(status.st_mode) ? EISDIR : 0;
  if (error == 0) error = utl_ClaimSharing(fd, writes, deniesWrite);
  // A refused creation must leave the file as it was: the file is truncated only now.
  if (error == 0 && (flags & O_CREAT) != 0 && ftruncate(fd, 0) != 0) error = errno;
  if (error != 0) {
    ::close(fd);
    errno = error;
    RaiseErrno<utl_FileExceptionOpen>(name, failedStep, __LINE__);
  }
  // No random-access hint: on Linux it turns read-ahead off, which costs sequential reads even
  // from the cache, and the hint changes nothing else that could be seen.
  return fd;
}

void utl_File::Seek(const utl_FileOffset& offset) {
  Init();
  if (lseek(m_Handle, offset.Value(), SEEK_SET) < 0)
    RaiseErrno<utl_FileExceptionSeek>(m_Name, "SetFilePointer", __LINE__);
}

utl_FileOffset utl_File::Location() const {
  Opened();
  const off_t position = lseek(m_Handle, 0, SEEK_CUR);
  if (position < 0) RaiseErrno<utl_FileExceptionLocation>(m_Name, "SetFilePointer", __LINE__);
  return utl_FileOffset(position);
}

utl_FileOffset utl_File::FileSize() const {
  Opened();
  struct stat status;
  if (fstat(m_Handle, &status) != 0)
    RaiseErrno<utl_FileExceptionSize>(m_Name, "GetFileSize", __LINE__);
  return utl_FileOffset(status.st_size);
}

// Only the bytes that didn't come are cleared: the same result as clearing all first.
int utl_File::Read(char* buffer, int count) {
  Init();
  ssize_t got = -1;
  if (count < 0)
    errno = EINVAL;
  else
    got = ::read(m_Handle, buffer, static_cast<size_t>(count));
  if (got < 0) {
    const int error = errno;
    if (count > 0) std::memset(buffer, 0, static_cast<size_t>(count));
    errno = error;
    RaiseErrno<utl_FileExceptionRead>(m_Name, "ReadFile", __LINE__);
  }
  if (got < count) std::memset(buffer + got, 0, static_cast<size_t>(count - got));
  return static_cast<int>(got);
}

int utl_File::Write(const char* buffer, int count) {
  const int written = WriteCall(buffer, count);
  if (written >= count) return written;
  utl_SystemErrorHandler& handler = utl_SystemErrorHandler::Instance();
  if (!handler.isActive.load(std::memory_order_relaxed)) NEX_THROW(utl_FileExceptionFull(m_Name));
  handler.handleError(nex_Translate("Lunara analysis error: No disk space available\n"));
  return written;
}

int utl_File::WriteShortAllowed(const char* buffer, int count) {
  return WriteCall(buffer, count);
}

int utl_File::WriteCall(const char* buffer, int count) {
  Init();
  if (m_Access == utl_AccessRead)
    NEX_THROW(utl_FileExceptionWrite(m_Name, Step("attempt to write to a read-only file.")));
  if (count < 0) {
    errno = EINVAL;
    RaiseErrno<utl_FileExceptionWrite>(m_Name, "WriteFile", __LINE__);
  }
  int done = 0;
  ssize_t moved;
  do {
    moved = ::write(m_Handle, buffer + done,
                    static_cast<size_t>(std::min(count - done, kLargestTransfer)));
    if (moved < 0) RaiseErrno<utl_FileExceptionWrite>(m_Name, "WriteFile", __LINE__);
    done += static_cast<int>(moved);
  } while (moved == kLargestTransfer && done < count);
  return done;
}

void utl_File::Flush() {
  Init();
  if (m_Access == utl_AccessRead)
    NEX_THROW(utl_FileExceptionFlush(m_Name, Step("attempt to flush a read-only file.")));
  if (fsync(m_Handle) != 0)
    RaiseErrno<utl_FileExceptionFlush>(m_Name, "FlushFileBuffers", __LINE__);
}

void utl_File::Extend(const utl_FileOffset& newSize) {
  Init();
  if (m_Access == utl_AccessRead)
    NEX_THROW(
        nex_TextException(nex_Translate("utl_File::Extend - attempt to extend a read-only file.")));
  const off_t remembered = lseek(m_Handle, 0, SEEK_CUR);
  if (remembered < 0) RaiseErrno<utl_FileExceptionExtend>(m_Name, "SetFilePointer 1", __LINE__);
  ExtendSeek(newSize.Value(), "SetFilePointer 2");
  if (ftruncate(m_Handle, newSize.Value()) != 0)
    RaiseErrno<utl_FileExceptionExtend>(m_Name, "SetEndOfFile", __LINE__);
  // The place of the last four bytes is computed in double precision; the rounding above
  // 2^53 is accepted.
  const int64_t last = static_cast<int64_t>(static_cast<double>(newSize.Value()) - 4.0);
  ExtendSeek(last, "SetFilePointer 3");
  char bytes[4] = {};
  if (::read(m_Handle, bytes, sizeof bytes) < 0)
    RaiseErrno<utl_FileExceptionExtend>(m_Name, "ReadFile", __LINE__);
  ExtendSeek(last, "SetFilePointer 4");
  // Written directly: a short count is no failure here.
  if (::write(m_Handle, bytes, sizeof bytes) < 0)
    RaiseErrno<utl_FileExceptionExtend>(m_Name, "WriteFile", __LINE__);
  ExtendSeek(remembered, "SetFilePointer 5");
}

void utl_File::ExtendSeek(int64_t position, const char* step) {
  if (lseek(m_Handle, position, SEEK_SET) < 0)
    RaiseErrno<utl_FileExceptionExtend>(m_Name, step, __LINE__);
}
