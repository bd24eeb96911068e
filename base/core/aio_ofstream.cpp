#include "aio_ofstream.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

// Constant-initialized: usable from any static constructor or destructor of a client.
aio_ofstream aio_cerr(STDERR_FILENO, aio_ios::unitbuf);
aio_ofstream aio_cout(STDOUT_FILENO);

aio_ofstream::aio_ofstream() : aio_ostream(m_Buffer, kBufferSize) {}

aio_ofstream::aio_ofstream(const char* name, int mode) : aio_ostream(m_Buffer, kBufferSize) {
  open(name, mode);
}

aio_ofstream::~aio_ofstream() {
  close();
}

bool aio_ofstream::open(const char* name, int mode) {
  close();
  const int how = O_WRONLY | O_CREAT | O_CLOEXEC | ((mode & app) ? O_APPEND : O_TRUNC);
  m_Descriptor = name ? ::open(name, how, 0666) : -1;
  m_Owned = m_Descriptor >= 0;
  m_Failed = !m_Owned;
  return m_Owned;
}

bool aio_ofstream::close() {
  if (!m_Failed && !Sync()) m_Failed = true;
  const bool good = !m_Failed;
  if (!m_Owned) return good;
  const bool closed = ::close(m_Descriptor) == 0;
  m_Descriptor = -1;
  m_Owned = false;
  return good && closed;
}

bool aio_ofstream::WriteAll(const char* data, size_t size) {
  while (size > 0) {
    const ssize_t written = ::write(m_Descriptor, data, size);
    if (written < 0 && errno == EINTR) continue;
    if (written <= 0) return false;
    data += written;
    size -= written;
  }
  return true;
}

bool aio_ofstream::Sync() {
  if (m_Next == m_Begin) return true;
  if (m_Descriptor < 0) return false;
  const bool written = WriteAll(m_Begin, m_Next - m_Begin);
  m_Next = m_Begin;
  return written;
}

bool aio_ofstream::Overflow(const char* data, size_t size) {
  if (!Sync()) return false;
  if (size > static_cast<size_t>(m_End - m_Begin)) return WriteAll(data, size);
  std::memcpy(m_Next, data, size);
  m_Next += size;
  return true;
}

bool aio_ofstream::Seek(long long offset, seek_dir direction) {
  const int whence = direction == beg ? SEEK_SET : direction == cur ? SEEK_CUR : SEEK_END;
  return m_Descriptor >= 0 && ::lseek(m_Descriptor, offset, whence) >= 0;
}
