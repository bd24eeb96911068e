#include "uti_PreCheckFile.h"

#include "VRKBasUtlFilePath.h"
#include "cls_ClassMetadata.h"
#include "cls_ClassRegistrar.h"
#include "cls_ReadVisitor.h"

namespace {

cls_FieldHandle ReasonField() {
  return cls_FieldHandle(0, "m_Reason");
}
cls_FieldHandle NameField() {
  return cls_FieldHandle(1, "m_FileName");
}

// The longest file name the system's file systems take (NAME_MAX).
constexpr int kLongestFileName = 255;

[[noreturn]] void Fail(uti_PreCheckFileException::ReasonEnm reason, const cow_String& name) {
  NEX_THROW(uti_PreCheckFileException(reason, name));
}

// A dot that is neither the name's first character (a hidden file) nor its last.
bool HasExtension(const cow_String& fileName) {
  const int dot = fileName.rfind(".", fileName.Length(), 1);
  return dot > 0 && dot < fileName.Length() - 1;
}

bool IsValidFileName(const cow_String& fileName) {
  return !fileName.IsEmpty() && fileName != "." && fileName != ".." &&
         fileName.Length() <= kLongestFileName;
}

void CheckRead(const VRKBasUtlFilePath& path) {
  if (!path.Exists()) Fail(uti_PreCheckFileException::FileNotFound, path.PathName());
  if (!path.IsReadable()) Fail(uti_PreCheckFileException::ReadPermissionDenied, path.PathName());
}

void CheckWrite(const VRKBasUtlFilePath& path, const VRKBasUtlFilePath& directory) {
  if (path.Exists()) {
    if (!path.IsWriteable()) {
      Fail(uti_PreCheckFileException::WritePermissionDenied, path.PathName());
    }
    return;
  }
  if (!IsValidFileName(path.FileName())) {
    Fail(uti_PreCheckFileException::InvalidName, path.PathName());
  }
  if (!directory.IsWriteable()) {
    Fail(uti_PreCheckFileException::DirectoryPermissionDenied, directory.PathName());
  }
}

void CheckReadWrite(const VRKBasUtlFilePath& path) {
  if (!path.Exists()) Fail(uti_PreCheckFileException::FileNotFound, path.PathName());
  if (!path.IsWriteable()) Fail(uti_PreCheckFileException::WritePermissionDenied, path.PathName());
  if (!path.IsReadable()) Fail(uti_PreCheckFileException::ReadPermissionDenied, path.PathName());
}

}  // namespace

uti_PreCheckFileException::uti_PreCheckFileException(ReasonEnm reason, const cow_String& name)
    : m_Reason(reason), m_FileName(name) {}

uti_PreCheckFileException::uti_PreCheckFileException(const cls_ReadVisitor& visitor)
    : nex_ConcreteException(cls_ReadVisitor(visitor)),
      m_Reason(static_cast<ReasonEnm>(visitor.Read(ReasonField(), 0))),
      m_FileName(visitor.Read(NameField(), cow_String())),
      m_Uid(visitor.GetUid()) {}

uti_PreCheckFileException::~uti_PreCheckFileException() = default;

atr_String uti_PreCheckFileException::JournalMessage() const {
  static const char* const kTexts[] = {
      "Empty filename",          "%s: Invalid filename",
      "%s: Is a directory",      "%s: File not found",
      "%s: Directory not found", "%s: Permission denied",
      "%s: Permission denied",   "%s: Directory permission denied",
  };
  if (m_Reason < EmptyName || m_Reason > DirectoryPermissionDenied) {
    return nex_Translate("Unknown file precheck error");
  }
  return nex_Translate(kTexts[m_Reason - EmptyName], m_FileName);
}

cow_String uti_PreCheckFileException::PythonType() const {
  return "PreCheckFile";
}

void uti_PreCheckFileException::DBWrite(const cls_WriteVisitor& visitor) const {
  if (!StartLevel<nex_CommandException>(*this, visitor, TypeId(), m_Uid)) return;
  visitor.Write(ReasonField(), static_cast<int>(m_Reason));
  visitor.Write(NameField(), m_FileName);
}

void uti_PreCheckFileException::InitializeMetadata(cls_ClassRegistrar& registrar) {
  registrar
      .AddClassMD(new cls_TypeAdapter<uti_PreCheckFileException>(
          "uti_PreCheckFileException", TypeId(), 800, nex_CommandException::TypeId()))
      .AddAttribute(ReasonField(), cls_AttrInt, 1, cls_CollNone)
      .AddAttribute(NameField(), cls_AttrString, 1, cls_CollNone);
}

cow_String uti_PreCheckFile(const cow_String& name, uti_AccessModeEnm mode,
                            const cow_String& extension) {
  if (name.IsEmpty()) Fail(uti_PreCheckFileException::EmptyName, name);
  VRKBasUtlFilePath path(name);
  path.Portable();
  if (path.IsDir()) Fail(uti_PreCheckFileException::IsDirectory, path.AbsolutePathName());
  if (!HasExtension(path.FileName())) {
    path = VRKBasUtlFilePath(path.AbsoluteDirectoryPath(), path.FileName() + extension);
  }
  const VRKBasUtlFilePath directory(path.AbsoluteDirectoryPath());
  if (!directory.IsDir()) Fail(uti_PreCheckFileException::DirectoryNotFound, path.PathName());
  switch (mode) {
    case uti_AccessRead:
      CheckRead(path);
      break;
    case uti_AccessWrite:
      CheckWrite(path, directory);
      break;
    case uti_AccessReadWrite:
      CheckReadWrite(path);
      break;
  }
  return path.PathName();
}
