// Checks a file name that a user gave before any work starts, and says in one message what is
// wrong with it:
//
//   cow_String input = uti_PreCheckFile(name, uti_AccessRead, ".inp");  // "job" -> "/run/job.inp"
//   cow_String output = uti_PreCheckFile(outName, uti_AccessWrite, ".dat");
//
// A name without an extension gets the given one (with its dot, as it stands) and is made
// absolute. Nothing is created or opened. The checks ask the system for existence and access
// rights at the time of the call; as the superuser, files read and write regardless of their
// permission bits.
#ifndef UTI_PRECHECKFILE_H
#define UTI_PRECHECKFILE_H

#include "VRKBasExport.h"
#include "cow_String.h"
#include "nex_CommandException.h"

enum uti_AccessModeEnm {
  uti_AccessRead = 0,       // the file will be read
  uti_AccessWrite = 1,      // the file will be written, and may not exist yet
  uti_AccessReadWrite = 2,  // the file must exist and will be read and written
};

// Why a file name failed its check, and the name. A command error of kind "PreCheckFile"
// whose journal message is composed from the reason when it is asked for; persistent like
// every exception.
class VRKLNU_EXPORT uti_PreCheckFileException
    : public nex_ConcreteException<uti_PreCheckFileException, 0x20021, nex_CommandException> {
 public:
  enum ReasonEnm {
    EmptyName = 1,                  // "Empty filename"
    InvalidName = 2,                // "%s: Invalid filename"
    IsDirectory = 3,                // "%s: Is a directory"
    FileNotFound = 4,               // "%s: File not found"
    DirectoryNotFound = 5,          // "%s: Directory not found"
    ReadPermissionDenied = 6,       // "%s: Permission denied"
    WritePermissionDenied = 7,      // "%s: Permission denied" too: two reasons, one text
    DirectoryPermissionDenied = 8,  // "%s: Directory permission denied"
  };

  uti_PreCheckFileException(ReasonEnm reason, const cow_String& name);
  // The base level, then "m_Reason" (default 0) and "m_FileName", then the identity.
  explicit uti_PreCheckFileException(const cls_ReadVisitor& visitor);
  ~uti_PreCheckFileException() override;

  // The reason's text with the name; "Unknown file precheck error" for a reason not above.
  atr_String JournalMessage() const override;
  // "PreCheckFile".
  cow_String PythonType() const override;
  void DBWrite(const cls_WriteVisitor& visitor) const override;

  // Declares the class (concrete, version 800, parent nex_CommandException) with its fields.
  static void InitializeMetadata(cls_ClassRegistrar& registrar);

  ReasonEnm Reason() const { return m_Reason; }
  const cow_String& FileName() const { return m_FileName; }

 private:
  ReasonEnm m_Reason;
  cow_String m_FileName;
  cls_Uid m_Uid;
};

// The name to use, or uti_PreCheckFileException with the first thing found wrong, in this
// order: an empty name; a directory given as the file (whatever the mode); a missing
// directory; then by mode. Read: the file missing, then unreadable. Write: for a new file, an
// invalid file name (empty, "." or "..", or longer than 255 bytes), then a directory that
// can't be written (reported with the directory's name); for an existing one, not writeable.
// Read and write: missing, not writeable, unreadable.
VRKLNU_EXPORT cow_String uti_PreCheckFile(const cow_String& name, uti_AccessModeEnm mode,
                                          const cow_String& extension);

#endif  // UTI_PRECHECKFILE_H
