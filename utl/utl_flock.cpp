#include "utl_flock.h"

#include <fcntl.h>
#include <sys/file.h>

#include <cerrno>

// The operation codes are flock's own; a lock that waits isn't given up for a signal, as the
// system's file lock waits are not.
int utl_flock(int descriptor, int operation) {
  if (operation != LOCK_SH && operation != LOCK_EX && operation != (LOCK_SH | LOCK_NB) &&
      operation != (LOCK_EX | LOCK_NB) && operation != LOCK_UN) {
    errno = EINVAL;
    return -1;
  }
  int result;
  while ((result = ::flock(descriptor, operation)) != 0 && errno == EINTR) {
  }
  return result;
}

bool utl_noInheritFile(int descriptor) {
  if (descriptor == -1) return false;
  const int flags = ::fcntl(descriptor, F_GETFD);
  return flags != -1 && ::fcntl(descriptor, F_SETFD, flags | FD_CLOEXEC) == 0;
}

bool utl_noInheritSocket(int socket) {
  return utl_noInheritFile(socket);
}
