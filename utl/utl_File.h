// The library's random-access file: a thin, unbuffered layer over the system's descriptor
// calls, with 64-bit positions, an open at first use, and one exception class per kind of
// failure (utl_FileException.h).
//
//   utl_File file(path, utl_AccessUpdate, utl_ShareDefault);  // nothing touched yet
//   file.Seek(utl_FileOffset(int64_t{5} << 32));              // opens, then positions
//   int got = file.Read(buffer, sizeof buffer);                // the rest of buffer is zero
//   file.Write(buffer, got);
//
// Every Read and Write is one system call (a write beyond the system's largest single
// transfer goes on in further calls); nothing is buffered or retried. A short read is no
// failure: the caller gets the smaller count and zero bytes behind it. A short write means
// a full disk: it raises utl_FileExceptionFull, or, when utl_SystemErrorHandler::isActive is
// set, prints one line on standard output and returns the short count.
//
// Sharing: the modes of utl_FileSharing hold between all openings of the file, in this
// process and in others that use this class. An opening that another refuses, or that
// refuses one already there, fails with utl_FileExceptionOpen ("Device or resource busy").
// Every descriptor is close-on-exec.
#ifndef UTL_FILE_H
#define UTL_FILE_H

#include <cstdint>

#include "VRKBasExport.h"
#include "cow_String.h"
#include "mem_Alloc.h"

enum utl_FileAccess {
  utl_AccessRead = 0,    // an existing file, read only
  utl_AccessUpdate = 1,  // an existing file, read and write
  utl_AccessWrite = 2    // created or truncated, read and write
};

// What an opening lets others do: a reader lets others read, and write unless it asks for
// utl_ShareRead; a writer (update or write access) lets others read, and write only when it
// asks for utl_ShareAll. The asymmetry is intended.
enum utl_FileSharing { utl_ShareDefault = 0, utl_ShareRead = 1, utl_ShareAll = 2 };

// A position or size in a file.
class VRKLNU_EXPORT utl_FileOffset {
 public:
  utl_FileOffset(int64_t value) : m_Value(value) {}

  int64_t Value() const { return m_Value; }
  // This offset minus `other`; outside the int range raises nex_AssertException with
  // "d >= INT_MIN && d <= INT_MAX".
  int DiffAsInt32(utl_FileOffset other) const;

 private:
  int64_t m_Value;
};

// Owns its descriptor from the first operation to destruction; there is no Close. Not
// copyable. No lock: the position belongs to the descriptor, so threads that share an object
// take turns themselves. Calls block for as long as the disk takes; an open waits while
// another opening of the file is between its check and its marks (a moment).
class VRKLNU_EXPORT utl_File : public mem_AllocationOperators {
 public:
  // Read access, no name, and sharing utl_ShareAll.
  utl_File();
  // Records the values; the disk is touched at the first operation.
  utl_File(const cow_String& name, utl_FileAccess access, utl_FileSharing sharing);
  // Closes the descriptor if open. A failed close raises utl_FileExceptionClose ("CloseHandle")
  // unless an exception is already on its way.
  ~utl_File() noexcept(false);
  utl_File(const utl_File&) = delete;
  utl_File& operator=(const utl_File&) = delete;

  // Replaces the name, access and sharing and calls Init. An object already open keeps its
  // descriptor: only a fresh object opens a second file. That is intended.
  void Open(const cow_String& name, utl_FileAccess access, utl_FileSharing sharing);
  // Opens at the first call; every operation calls it. Missing file (read or update access):
  // utl_FileExceptionNoFile; any other failure: utl_FileExceptionOpen.
  void Init();

  // Absolute position; utl_FileExceptionSeek ("SetFilePointer").
  void Seek(const utl_FileOffset& offset);
  // utl_FileExceptionLocation ("SetFilePointer").
  utl_FileOffset Location() const;
  // utl_FileExceptionSize ("GetFileSize").
  utl_FileOffset FileSize() const;
  // Zero-fills `buffer`, reads up to `count` bytes at the position and returns how many came;
  // utl_FileExceptionRead ("ReadFile").
  int Read(char* buffer, int count);
  // Writes `count` bytes at the position. Read access: utl_FileExceptionWrite without an error
  // ("attempt to write to a read-only file."); a refusal: utl_FileExceptionWrite
  // ("WriteFile"); a short count: the full-disk rule above.
  int Write(const char* buffer, int count);
  // Write without the full-disk rule: returns whatever count the system gives.
  int WriteShortAllowed(const char* buffer, int count);
  // Writes the file's data and metadata to the disk. Read access: utl_FileExceptionFlush
  // ("attempt to flush a read-only file."); a refusal: utl_FileExceptionFlush
  // ("FlushFileBuffers").
  void Flush();
  // Sets the size (shorter or longer) and rewrites the last four bytes, keeping the position.
  // Read access: nex_TextException; a failed step: utl_FileExceptionExtend naming the step.
  // A size below 4 fails at "SetFilePointer 3", after the file was cut.
  void Extend(const utl_FileOffset& newSize);

  const cow_String& Name() const { return m_Name; }
  utl_FileAccess Access() const { return m_Access; }

 private:
  // Init for the const queries as well.
  void Opened() const;
  int OpenRead(const cow_String& name) const;
  int OpenUpdate(const cow_String& name) const;
  int OpenWrite(const cow_String& name) const;
  // Opens with `flags` and claims the sharing; raises with `missingStep` for a missing file
  // (null: no such distinction) and `failedStep` otherwise.
  int OpenWith(const cow_String& name, int flags, const char* missingStep,
               const char* failedStep) const;
  // The write of Write and WriteShortAllowed.
  int WriteCall(const char* buffer, int count);
  // Extend's repositioning steps.
  void ExtendSeek(int64_t position, const char* step);

  // The open state changes in the const queries too, since they open at first use.
  mutable bool m_IsOpen = false;
  mutable int m_Handle = -1;
  cow_String m_Name;
  utl_FileAccess m_Access = utl_AccessRead;
  utl_FileSharing m_Sharing = utl_ShareAll;
};

#endif  // UTL_FILE_H
