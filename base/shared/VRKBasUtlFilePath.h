// A file path as a directory and a file name, with queries on the file it names.
//
//   VRKBasUtlFilePath log(cow_String("out"), cow_String("run.log"));
//   log.PathName();          // "out/run.log"
//   log.AbsolutePathName();  // "/home/me/job/out/run.log", from the working directory
//   if (log.IsWriteable()) ...
//
// The queries ask the system each time; a path that can't be looked at answers false.
#ifndef VRKBASUTLFILEPATH_H
#define VRKBASUTLFILEPATH_H

#include "VRKBasExport.h"
#include "cow_String.h"
#include "mem_Alloc.h"

class VRKLNU_EXPORT VRKBasUtlFilePath : public mem_AllocationOperators {
 public:
  VRKBasUtlFilePath() = default;
  VRKBasUtlFilePath(const cow_String& directory, const cow_String& fileName);
  // Splits a whole path at its last '/'.
  explicit VRKBasUtlFilePath(const cow_String& path);

  // The directory and the file name joined by '/' (either alone when the other is empty).
  cow_String PathName() const;
  cow_String FileName() const { return m_FileName; }
  // The path made absolute against the working directory, with "." and ".." segments and
  // repeated separators resolved in the text (links are not followed).
  cow_String AbsolutePathName() const;
  // The same for the directory alone (the working directory when it is empty).
  cow_String AbsoluteDirectoryPath() const;

  bool Exists() const;
  bool IsDir() const;
  bool IsReadable() const;
  bool IsWriteable() const;
  bool IsExecutable() const;

  // Rewrites both parts in the portable form: '/' for every '\', no repeated separators and
  // no "./" segments. Returns this path.
  VRKBasUtlFilePath& Portable();

 private:
  cow_String m_Directory;
  cow_String m_FileName;
};

#endif  // VRKBASUTLFILEPATH_H
