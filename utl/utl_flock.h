// Whole-file locks with the BSD operation codes, and descriptors kept from child processes.
//
//   if (utl_flock(fd, 6) != 0 && errno == EWOULDBLOCK) ...someone else holds the file...
//   ...
//   utl_flock(fd, 8);
//
// The locks are advisory: they stop only others who lock too. They belong to the open file,
// so all descriptors duplicated from one open share them, and they go when it is closed.
#ifndef UTL_FLOCK_H
#define UTL_FLOCK_H

#include "VRKBasExport.h"

// Operation 1 takes a shared lock and 2 an exclusive one, waiting as long as it takes; 5 and
// 6 are the same without waiting; 8 releases. Returns 0, or -1 with errno set: EINVAL (22)
// for any other operation, EWOULDBLOCK when a lock that doesn't wait is held elsewhere, or
// the system's error for the descriptor.
VRKLNU_EXPORT int utl_flock(int descriptor, int operation);

// Marks the descriptor to be closed in child programs. False for -1 or a descriptor that
// isn't open.
VRKLNU_EXPORT bool utl_noInheritFile(int descriptor);
// The same for a socket.
VRKLNU_EXPORT bool utl_noInheritSocket(int socket);

#endif  // UTL_FLOCK_H
