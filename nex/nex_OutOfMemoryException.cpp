#include "nex_OutOfMemoryException.h"

#include "cls_ReadVisitor.h"
#include "internal/nex_Metadata.h"
#include "internal/nex_Setup.h"
#include "mem_Alloc.h"

template class cow_CountedHld<nex_OutOfMemoryException>;
template class cow_COW<nex_OutOfMemoryException>;

namespace {

// One of the package's two messages.
struct MessageHolder : public mem_AllocationOperators {
  atr_String m_Text;
};

MessageHolder* specificMessage = nullptr;
MessageHolder* genericMessage = nullptr;
mem_OutOfMemoryHandler replacedHandler = nullptr;

// Whether the calling thread is raising an out-of-memory error: an allocation that fails
// meanwhile ends in std::bad_alloc instead of raising again without end.
thread_local bool raising = false;

constexpr int kVersion = 871;

cls_FieldHandle MessageField() {
  return cls_FieldHandle(0, "m_Msg");
}
cls_FieldHandle ErrorField() {
  return cls_FieldHandle(1, "m_Err");
}

MessageHolder* NewMessage(const char* text) {
  MessageHolder* holder = new MessageHolder;
  holder->m_Text += nex_Translate(text);
  return holder;
}

void AppendTo(MessageHolder* holder, const atr_String& text) {
  if (holder != nullptr) holder->m_Text += text;
}

void RaiseOutOfMemory(size_t size) {
  if (raising) return;
  struct Raising {
    Raising() { raising = true; }
    ~Raising() { raising = false; }
  } scope;
  const unsigned long limit = mem_MemoryLimit();
  const bool overLimit = limit != 0 && mem_Footprint() + size > limit;
  throw nex_OutOfMemoryException(overLimit ? nex_OutOfMemoryLimitReached
                                           : nex_OutOfMemorySystemRefused);
}

}  // namespace

void nex_OutOfMemorySetUp() {
  specificMessage = NewMessage(
      "*** Error: An out of memory error occurred, or the Lunara/CAE memory limit was "
      "reached.\n \nIf the application ran out of memory, please create backup copies of your "
      "Lunara/CAE databases and then try to save them.\nDatabase corruption may occur if an out "
      "of memory error occurs during the save operation.\n \nTo change the Lunara/CAE memory "
      "limit now, issue the following command in the Lunara/CAE CLI: \n "
      "session.setValues(kernelMemoryLimit=valueInMBytes) \n \nTo change the value for future "
      "Lunara/CAE sessions, refer to the LUNARA Installation and Licensing Guide for details on "
      "how to modify this value in your lunara_v6.env file.\n \nIt is recommended that you exit "
      "Lunara/CAE and then restart it.\n \nOn 32-bit versions of Windows, you can use the boot "
      "option /3GB /userva=SizeInMBytes to increase the amount of memory that can be used by "
      "Lunara/CAE. Please refer to Microsoft's documentation for more detailed "
      "information.\nAlternatively, if you have access to a 64-bit operating system, you can try "
      "running Lunara/CAE there, where the memory is not limited to 2 or 3GB. \n");
  genericMessage = NewMessage(
      "*** Error: An out-of-memory error occurred. If you have access to a machine with more "
      "physical memory, you can try running the application there.\n");
  replacedHandler = mem_SetOutOfMemoryHandler(RaiseOutOfMemory);
}

void nex_OutOfMemoryTearDown() {
  delete specificMessage;
  specificMessage = nullptr;
  delete genericMessage;
  genericMessage = nullptr;
  mem_SetOutOfMemoryHandler(replacedHandler);
  replacedHandler = nullptr;
}

nex_OutOfMemoryException::nex_OutOfMemoryException(nex_OutOfMemoryErrEnm error) : m_Err(error) {}

nex_OutOfMemoryException::nex_OutOfMemoryException(const atr_String& message,
                                                   nex_OutOfMemoryErrEnm error)
    : m_Msg(message), m_Err(error) {
  AppendTo(specificMessage, message);
  AppendTo(genericMessage, message);
}

nex_OutOfMemoryException::nex_OutOfMemoryException(const cls_ReadVisitor& visitor)
    : nex_ConcreteException(cls_ReadVisitor(visitor)),
      m_Msg(visitor.Read(MessageField(), atr_String())),
      m_Err(static_cast<nex_OutOfMemoryErrEnm>(visitor.Read(ErrorField(), 0))),
      m_Uid(visitor.GetUid()) {
  if (specificMessage != nullptr) specificMessage->m_Text = m_Msg;
}

nex_OutOfMemoryException::~nex_OutOfMemoryException() = default;

atr_String nex_OutOfMemoryException::AsString() const {
  return JournalMessage();
}

void nex_OutOfMemoryException::DBWrite(const cls_WriteVisitor& visitor) const {
  m_Msg = JournalMessage();
  if (!StartLevel<nex_Exception>(*this, visitor, TypeId(), m_Uid)) return;
  visitor.Write(MessageField(), m_Msg);
  visitor.Write(ErrorField(), static_cast<int>(m_Err));
}

atr_String nex_OutOfMemoryException::JournalMessage() const {
  return specificMessage ? specificMessage->m_Text : atr_String();
}

cow_String nex_OutOfMemoryException::PythonType() const {
  return "OutOfMemory";
}

void nex_OutOfMemoryException::InitializeMetadata(cls_ClassRegistrar& registrar) {
  nex_DeclareConcrete<nex_OutOfMemoryException>(registrar, "nex_OutOfMemoryException",
                                                nex_Exception::TypeId(), kVersion)
      .AddAttribute(MessageField(), cls_AttrTrString, 1, cls_CollNone)
      .AddAttribute(ErrorField(), cls_AttrInt, 1, cls_CollNone);
}

atr_String* nex_OutOfMemoryException::GetOutOfMemoryMsgGeneric() {
  return genericMessage ? &genericMessage->m_Text : nullptr;
}
