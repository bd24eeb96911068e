// A lock between processes made of a file's existence: whoever creates the file holds the
// lock, and removes the file when done.
//
//   utl_LockFile lock(name + ".lock");
//   if (!lock.acquire(10, 10)) fail("busy");   // ten tries, 10 ms apart
//   ...                                         // the destructor removes the file
//
// A lock file left behind by a process that died keeps everyone out until it is deleted by
// hand; that is intended, since nothing tells a dead holder from a slow one.
#ifndef UTL_LOCKFILE_H
#define UTL_LOCKFILE_H

#include "VRKBasExport.h"
#include "cow_String.h"
#include "mem_Alloc.h"

// Not copyable; one thread at a time. acquire sleeps between its tries.
class VRKLNU_EXPORT utl_LockFile : public mem_AllocationOperators {
 public:
  // Names the file; nothing is tried yet.
  explicit utl_LockFile(const cow_String& name);
  // Removes the file if this object holds the lock, and only then.
  ~utl_LockFile();
  utl_LockFile(const utl_LockFile&) = delete;
  utl_LockFile& operator=(const utl_LockFile&) = delete;

  // True at once if held; otherwise tries to create the file at most `attempts` times,
  // sleeping `sleepMilliseconds` after each failed try, the last one included.
  bool acquire(int attempts, int sleepMilliseconds);

  bool IsHeld() const { return m_IsHeld; }
  const cow_String& Name() const { return m_Name; }

 private:
  bool TryCreate() const;

  bool m_IsHeld = false;
  cow_String m_Name;
};

#endif  // UTL_LOCKFILE_H
