#include "utl_LockFile.h"

#include <fcntl.h>
#include <unistd.h>

#include "VRKBasUtlPlatform.h"

utl_LockFile::utl_LockFile(const cow_String& name) : m_Name(name) {}

utl_LockFile::~utl_LockFile() {
  if (m_IsHeld) ::unlink(m_Name.c_str());
}

bool utl_LockFile::acquire(int attempts, int sleepMilliseconds) {
  for (int attempt = 0; attempt < attempts && !m_IsHeld; ++attempt) {
    m_IsHeld = TryCreate();
    if (!m_IsHeld) VRKBasUtlsleep(static_cast<unsigned>(sleepMilliseconds));
  }
  return m_IsHeld;
}

// An exclusive creation, closed at once; a file that anyone may read and write.
bool utl_LockFile::TryCreate() const {
  const int fd = ::open(m_Name.c_str(), O_RDONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
  if (fd < 0) return false;
  ::close(fd);
  return true;
}
