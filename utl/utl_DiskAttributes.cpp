#include "utl_DiskAttributes.h"

#include <sys/statvfs.h>

#include <cerrno>
#include <cstdio>

#include "nex_TextException.h"
#include "pnt_PrettyPrint.h"
#include "typ_DebugFlags.h"

namespace {

constexpr unsigned kDebugFacility = 3;  // "utl"

// The two lines of the report, both in the unit that suits the free space on the drive.
void PrintFreeSpace(const cow_String& root, unsigned long long onDrive,
                    unsigned long long toCaller) {
  const char* unit = "kbytes";
  int shift = 10;
  if (onDrive >= 1048577) {
    unit = "MB";
    shift = 20;
  } else if (onDrive < 1025) {
    unit = "bytes";
    shift = 0;
  }
  std::printf("\n Free space on drive %s =%llu %s \n", root.c_str(), onDrive >> shift, unit);
  std::printf("\n Free space to caller %s =%llu %s \n", root.c_str(), toCaller >> shift, unit);
  std::fflush(stdout);
}

}  // namespace

// Linux has no drive roots: the file system is found from the path itself.
utl_DiskAttributes::utl_DiskAttributes(const cow_String& path)
    : m_Root(path.IsEmpty() ? cow_String(".") : path) {}

uint64_t utl_DiskAttributes::GetFreeDiskSpace() const {
  struct statvfs status;
  if (statvfs(m_Root.c_str(), &status) != 0) {
    const unsigned error = static_cast<unsigned>(errno);
    NEX_THROW(nex_TextException(
        nex_Translate("error: %u:  could not get free space for \"%s\"\n", error, m_Root)));
  }
  const uint64_t toCaller = uint64_t{status.f_bavail} * status.f_frsize;
  if (typ_DebugFlags::GetDebugFlags(kDebugFacility) >= 3) {
    pnt_debugPrint().StartDebug(__FILE__, __LINE__);
    PrintFreeSpace(m_Root, uint64_t{status.f_bfree} * status.f_frsize, toCaller);
    pnt_debugPrint().EndDebug();
  }
  return toCaller;
}
