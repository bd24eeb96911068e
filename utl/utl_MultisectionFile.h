// A file of named sections, each a run of bytes with its own checksum. A client opens the
// file, reads or replaces sections by name in memory, and commits them all at once:
//
//   utl_MultisectionFile file(path, utl_AccessUpdate);   // takes path + ".lock", loads
//   if (file.hasSection("mesh")) {
//     std::vector<char> mesh(file.getSectionLength("mesh"));
//     file.getSectionData("mesh", mesh.data());          // checksum tested here
//   }
//   file.setSectionData("result", data, size);           // staged in memory
//   file.saveChanges();                                  // rewrites the file
//
// The format, all integers 32-bit little-endian, lengths and counts signed, no padding: the
// bytes 0x28 0xC1 0x1D 0xAF, the version 1, the count N, N directory entries (name length,
// name bytes, body length, checksum), then the N bodies in directory order. A file with no
// sections is 12 bytes. The checksum is utl_Crc32 of the body (0xFFFFFFFF when empty). Files
// and sections stay below 2 GiB.
//
// Writers (update or write access) keep each other out with a lock file beside the file,
// "<name>.lock", taken in ten tries 10 ms apart; readers take no lock and may meet a file
// half rewritten, against which the checksums are the only defence. A lock file left by a
// writer that died keeps writers out until it is deleted.
//
// saveChanges writes the whole new file into a temporary beside it ("<name>.<pid>.tmp"),
// copying the unchanged bodies from the file, then sets the file's size and copies the
// temporary over it, and deletes the temporary. It is not atomic: a failure while the file is
// copied over leaves it half rewritten; a failure before (a full disk while the temporary is
// written, for one) leaves the file untouched and the object as it was, staged bodies
// included. Data moves in chunks of 1 MiB, so the memory a commit needs beyond the staged
// bodies stays at a few MiB however large the file is. A write that comes out short
// fails the commit with utl_FileExceptionFull, even when utl_SystemErrorHandler::isActive
// has it print its message instead: a commit can't go on without its bytes.
//
// Failures of this class are nex_TextException with the text "\"<name>\": " and the reason:
// "Invalid file type", "Unsupported file format", "Invalid string length", "Truncated file"
// (the directory runs past the end of the file, or the bodies do), "Invalid section length"
// (a negative one), "Cannot create the lock file." or "Data corrupted in section \"<section>\"".
// The exceptions of utl_File pass through: a missing file is utl_FileExceptionNoFile.
//
// One thread at a time. A name that isn't in the file, given to getSectionLength,
// getSectionData or removeSection, ends the process by the list's index check: ask
// hasSection first. That is intended.
#ifndef UTL_MULTISECTIONFILE_H
#define UTL_MULTISECTIONFILE_H

#include <cstdint>

#include "VRKBasExport.h"
#include "cow_List.h"
#include "cow_String.h"
#include "utl_File.h"
#include "utl_LockFile.h"

// One directory entry with its place in the file, and the body staged for the next commit.
struct utl_FileSection {
  cow_String m_Name;
  uint32_t m_Offset = 0;  // of the body on disk, below 2 GiB
  int m_Length = 0;       // of the body on disk
  bool m_HasPending = false;
  cow_String m_Pending;     // the staged body (any bytes), shared by copies of the entry
  uint32_t m_Checksum = 0;  // of the staged body if there is one, else of the disk body

  int CurrentLength() const { return m_HasPending ? m_Pending.Length() : m_Length; }
};

// Owns its file descriptor, its lock and its staged bodies. Blocks on the disk, and up to
// about 100 ms for the lock.
class VRKLNU_EXPORT utl_MultisectionFile : public utl_File {
 public:
  // Read access: loads the directory. Update access: takes the lock, then loads. Write access:
  // takes the lock; the file is created empty at saveChanges. A failure after the lock was
  // taken gives it back.
  utl_MultisectionFile(const cow_String& name, utl_FileAccess access);
  // Drops staged bodies without complaint and gives back the lock.
  ~utl_MultisectionFile();

  // By exact, case-sensitive name; the first match counts.
  bool hasSection(const cow_String& name) const;
  // The staged body's length if there is one, else the disk body's.
  int getSectionLength(const cow_String& name) const;
  // Copies the body into `destination`, sized by getSectionLength. A staged body is copied as
  // it is; a disk body is read and its checksum tested, and a mismatch (a body cut short by
  // the end of the file included) raises "Data corrupted in section" with the bad bytes
  // already in `destination`.
  void getSectionData(const cow_String& name, void* destination);
  // Stages a copy of `length` bytes at `data` for the section, made at the end if it is new.
  // The file isn't touched.
  void setSectionData(const cow_String& name, const void* data, int length);
  // Drops the section; the next saveChanges leaves it out.
  void removeSection(const cow_String& name);
  // Writes every section, staged or not, to the file.
  void saveChanges();

 private:
  // The index of the first section with the name, or -1.
  int Find(const cow_String& name) const;
  void Load();

  utl_LockFile m_Lock;
  cow_List<utl_FileSection> m_Sections;
};

#endif  // UTL_MULTISECTIONFILE_H
