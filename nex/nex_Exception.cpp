#include "nex_Exception.h"

#include <cstdlib>
#include <cstring>

#include "cls_ClassRegistrar.h"
#include "cls_ReadVisitor.h"
#include "internal/nex_Metadata.h"

template class cow_CountedHld<nex_Exception>;
template class cow_COW<nex_Exception, cow_Virtual<nex_Exception>>;

namespace {

cls_FieldHandle FromFileField() {
  return cls_FieldHandle(0, "m_FromFile");
}
cls_FieldHandle FromLineField() {
  return cls_FieldHandle(1, "m_FromLine");
}

// Releases a cow_COW of exceptions given as the library's generic shared value; the two
// holders have one layout.
void DeleteCow(cow_COW<int, cow_Direct<int>>* cow) {
  delete reinterpret_cast<cow_COW<nex_Exception, cow_Virtual<nex_Exception>>*>(cow);
}

}  // namespace

cow_String nex_SourceName(const char* path) {
  const char* slash = std::strrchr(path, '/');
  const char* name = slash ? slash + 1 : path;
  const char* dot = std::strrchr(name, '.');
  return cow_String(name, dot ? static_cast<int>(dot - name) : -1);
}

nex_Exception::nex_Exception() = default;

nex_Exception::nex_Exception(const nex_Exception& other) = default;

nex_Exception::nex_Exception(const cls_ReadVisitor& visitor)
    : m_FromFile(visitor.Read(FromFileField(), cow_String(0))),
      m_FromLine(visitor.Read(FromLineField(), 0)),
      m_Uid(visitor.GetUid()) {}

nex_Exception::~nex_Exception() = default;

atr_String nex_Exception::DeveloperReport() const {
  return nex_Translate("Exception: %s in file %s at line %d", UserReport(), m_FromFile, m_FromLine);
}

atr_String nex_Exception::UserReport() const {
  return AsString();
}

unsigned nex_Exception::DynTypeId() const {
  return TypeId();
}

void nex_Exception::DBWrite(const cls_WriteVisitor& visitor) const {
  if (!visitor.StartWrite(TypeId(), m_Uid)) return;
  visitor.Write(FromFileField(), m_FromFile);
  visitor.Write(FromLineField(), m_FromLine);
}

void nex_Exception::Throw(const char* file, int line) {
  m_FromFile = file;
  m_FromLine = line;
  Propagate();
  std::abort();  // a Propagate that returned broke its contract
}

void nex_Exception::InitializeMetadata(cls_ClassRegistrar& registrar) {
  nex_DeclareAbstract<nex_Exception>(registrar, "nex_Exception", 1)
      .AddDtor(DeleteCow)
      .AddAttribute(FromFileField(), cls_AttrString, 1, cls_CollNone)
      .AddAttribute(FromLineField(), cls_AttrInt, 1, cls_CollNone);
}
