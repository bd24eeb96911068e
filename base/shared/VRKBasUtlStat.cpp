#include "VRKBasUtlStat.h"

#include <sys/stat.h>

#include <cerrno>

VRKBasUtlStat::VRKBasUtlStat(const cow_String& path) {
  struct stat status;
  if (::stat(path.c_str(), &status) != 0) {
    m_Errno = errno;
    return;
  }
  m_IsDir = S_ISDIR(status.st_mode);
  m_IsFile = S_ISREG(status.st_mode);
  m_Size = status.st_size;
  m_ModificationTime = status.st_mtim.tv_sec + status.st_mtim.tv_nsec * 1e-9;
}
