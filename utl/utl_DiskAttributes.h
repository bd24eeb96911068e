// How much disk is left where a path lies:
//
//   uint64_t free = utl_DiskAttributes(outputDirectory).GetFreeDiskSpace();
//
// The count is what the caller may use, which a quota or the blocks reserved for the
// administrator can make smaller than what is free on the file system.
#ifndef UTL_DISKATTRIBUTES_H
#define UTL_DISKATTRIBUTES_H

#include <cstdint>

#include "VRKBasExport.h"
#include "cow_String.h"
#include "mem_Alloc.h"

// A value; the system is asked at each GetFreeDiskSpace.
class VRKLNU_EXPORT utl_DiskAttributes : public mem_AllocationOperators {
 public:
  // `path` names any existing file or directory on the file system in question.
  explicit utl_DiskAttributes(const cow_String& path);

  // Bytes free to the caller. With debug level 3 or more for facility "utl", first prints the
  // free space of the file system and of the caller on standard output, in a debug frame. A
  // failed query raises nex_TextException ("error: %u:  could not get free space for ...").
  uint64_t GetFreeDiskSpace() const;

 private:
  cow_String m_Root;
};

#endif  // UTL_DISKATTRIBUTES_H
