#include "utl_ShareLock.h"

#include <fcntl.h>

#include <cerrno>

namespace {

// Reserved bytes, far past any data and past the range of whole-file locks. The guard makes
// checking and marking one step: writers take it exclusively, readers shared, since readers
// never refuse each other (and a read-only descriptor can't take an exclusive lock).
constexpr off_t kGuard = 0x7fffffff00000000;
constexpr off_t kWriting = kGuard + 1;
constexpr off_t kDenyingWrite = kGuard + 2;

int Lock(int fd, int command, short type, off_t at) {
  struct flock lock = {};
  lock.l_type = type;
  lock.l_whence = SEEK_SET;
  lock.l_start = at;
  lock.l_len = 1;
  while (fcntl(fd, command, &lock) != 0) {
    if (errno != EINTR) return errno;
  }
  return 0;
}

// Whether another open file description holds a mark on the byte; errors are taken as a mark.
bool Marked(int fd, off_t at) {
  struct flock lock = {};
  lock.l_type = F_WRLCK;
  lock.l_whence = SEEK_SET;
  lock.l_start = at;
  lock.l_len = 1;
  return fcntl(fd, F_OFD_GETLK, &lock) != 0 || lock.l_type != F_UNLCK;
}

int CheckAndMark(int fd, bool writes, bool deniesWrite) {
  if ((writes && Marked(fd, kDenyingWrite)) || (deniesWrite && Marked(fd, kWriting))) return EBUSY;
  if (writes) {
    if (int error = Lock(fd, F_OFD_SETLK, F_RDLCK, kWriting)) return error;
  }
  if (deniesWrite) return Lock(fd, F_OFD_SETLK, F_RDLCK, kDenyingWrite);
  return 0;
}

}  // namespace

int utl_ClaimSharing(int fd, bool writes, bool deniesWrite) {
  if (int error = Lock(fd, F_OFD_SETLKW, writes ? F_WRLCK : F_RDLCK, kGuard)) return error;
  const int result = CheckAndMark(fd, writes, deniesWrite);
  Lock(fd, F_OFD_SETLK, F_UNLCK, kGuard);
  return result;
}
