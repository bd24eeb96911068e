// One temporary file in a scratch directory: named at first need, created exclusively, and
// removed when the object dies.
//
//   utl_TempFile scratch(".tmp");
//   if (scratch.AvailableSpace() < needed) ...   // names it: nothing on disk yet
//   scratch.Create();                             // ".../LnqTempFileXXXXXX.tmp", made new
//   write(scratch.Descriptor(), data, size);
//   // the file is closed and removed when `scratch` goes
//
// The directory is the first of these that is a directory: the command-line option
// `tmpdir`, the environment variables SCRATCH and TMPDIR. Others are passed over without a
// word; with none, naming fails with utl_TempFileCantExc. The name is the directory, "/",
// "LnqTempFile" and six characters that make a name no file has, then the suffix, with a
// "." put in front of a suffix that doesn't begin with one.
#ifndef UTL_TEMPFILE_H
#define UTL_TEMPFILE_H

#include <cstdint>

#include "VRKBasExport.h"
#include "cow_String.h"
#include "mem_Alloc.h"

// Owns the file (removed at destruction once named, created or not) and its descriptor.
// Not copyable. No lock: one thread at a time. Failures raise utl_TempFileException's
// family (utl_TempFileException.h), or the free-space query's nex_TextException.
class VRKLNU_EXPORT utl_TempFile : public mem_AllocationOperators {
 public:
  // Keeps the suffix; touches nothing.
  explicit utl_TempFile(const cow_String& suffix);
  // Closes, and removes the file if it was named; a failed removal isn't reported.
  ~utl_TempFile();
  utl_TempFile(const utl_TempFile&) = delete;
  utl_TempFile& operator=(const utl_TempFile&) = delete;

  // The full path, made at the first call of this or of any operation below.
  const cow_String& Name() const;
  // Bytes free to the caller in the directory, as they were when the name was made.
  uint64_t AvailableSpace() const;
  // Creates the file, which must not exist yet, and opens it for reading and writing. A file
  // of that name made meanwhile by another process, or any other failure, raises
  // utl_TempFileOpenExc.
  void Create();
  // Opens the file for reading and writing; false, with no descriptor, if it doesn't exist.
  // Another failure raises utl_TempFileOpenExc.
  bool OpenIfPresent();
  // OpenIfPresent, with a missing file raising utl_TempFileOpenExc ("No such file or
  // directory").
  void Open();
  // Closes the descriptor, if open.
  void Close();
  // The open descriptor, -1 when closed.
  int Descriptor() const { return m_Descriptor; }

 private:
  void MakeName() const;

  mutable bool m_IsNamed = false;
  mutable uint64_t m_AvailableSpace = 0;
  // The suffix until the name is made, then the full path.
  mutable cow_String m_Name;
  int m_Descriptor = -1;
};

#endif  // UTL_TEMPFILE_H
