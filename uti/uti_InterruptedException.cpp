#include "uti_InterruptedException.h"

#include "cls_ClassMetadata.h"
#include "cls_ClassRegistrar.h"
#include "cls_ReadVisitor.h"

namespace {

cls_FieldHandle CauseField() {
  return cls_FieldHandle(0, "m_Cause");
}

// A stored cause that this version doesn't know reads as a signal.
uti_InterruptedException::CauseEnm CauseOf(int stored) {
  if (stored == uti_InterruptedException::Keyboard || stored == uti_InterruptedException::Stop) {
    return static_cast<uti_InterruptedException::CauseEnm>(stored);
  }
  return uti_InterruptedException::Signal;
}

}  // namespace

uti_InterruptedException::uti_InterruptedException(CauseEnm cause) : m_Cause(CauseOf(cause)) {}

uti_InterruptedException::uti_InterruptedException(const cls_ReadVisitor& visitor)
    : nex_ConcreteException(cls_ReadVisitor(visitor)),
      m_Cause(CauseOf(visitor.Read(CauseField(), static_cast<int>(Signal)))),
      m_Uid(visitor.GetUid()) {}

uti_InterruptedException::~uti_InterruptedException() = default;

atr_String uti_InterruptedException::AsString() const {
  static const char* const kWords[] = {"uti_Keyboard", "uti_Stop", "uti_Signal"};
  return nex_Translate(kWords[m_Cause]);
}

void uti_InterruptedException::DBWrite(const cls_WriteVisitor& visitor) const {
  if (!StartLevel<nex_Exception>(*this, visitor, TypeId(), m_Uid)) return;
  visitor.Write(CauseField(), static_cast<int>(m_Cause));
}

void uti_InterruptedException::InitializeMetadata(cls_ClassRegistrar& registrar) {
  registrar
      .AddClassMD(new cls_TypeAdapter<uti_InterruptedException>(
          "uti_InterruptedException", TypeId(), 800, nex_Exception::TypeId()))
      .AddAttribute(CauseField(), cls_AttrInt, 1, cls_CollNone);
}
