#include "nex_CommandException.h"

#include "cls_ReadVisitor.h"
#include "internal/nex_Metadata.h"

nex_CommandException::nex_CommandException() = default;

nex_CommandException::nex_CommandException(const nex_CommandException& other) = default;

nex_CommandException::nex_CommandException(const cls_ReadVisitor& visitor)
    : nex_Exception(cls_ReadVisitor(visitor)), m_Uid(visitor.GetUid()) {}

nex_CommandException::~nex_CommandException() = default;

atr_String nex_CommandException::AsString() const {
  atr_String text = nex_Translate("%s: ", PythonType());
  text += JournalMessage();
  return text;
}

unsigned nex_CommandException::DynTypeId() const {
  return TypeId();
}

void nex_CommandException::DBWrite(const cls_WriteVisitor& visitor) const {
  StartLevel<nex_Exception>(*this, visitor, TypeId(), m_Uid);
}

void nex_CommandException::InitializeMetadata(cls_ClassRegistrar& registrar) {
  nex_DeclareAbstract<nex_CommandException>(registrar, "nex_CommandException",
                                            nex_Exception::TypeId());
}
