#include "utl_Catenator.h"

#include <new>

#include "aio_ostrstream.h"

namespace {

// From this length on, the reserved string is handed out as it is; a shorter text gets a
// copy of its own size, leaving the reserved block behind.
const int kShareLength = 497;

}  // namespace

utl_Catenator::utl_Catenator() : m_String(kStringCapacity, cow_String::PreSize) {}

// The stream is placed in a block of the memory layer, like every object of the library.
utl_Catenator::~utl_Catenator() {
  if (m_Overflow == nullptr) return;
  m_Overflow->~aio_ostrstream();
  mem_Free(m_Overflow);
}

utl_Catenator& utl_Catenator::Cat(const char* text, int length) {
  if (length <= 0) return *this;
  if (m_Overflow == nullptr && length < kStringCapacity - m_String.Length()) {
    m_String.append(text, length, 0, length);
    return *this;
  }
  if (m_Overflow == nullptr) {
    m_Overflow = new (mem_OperatorNewThrow(sizeof(aio_ostrstream))) aio_ostrstream;
    m_Overflow->write(m_String.c_str(), m_String.Length());
    m_String = cow_String();
  }
  m_Overflow->write(text, length);
  return *this;
}

utl_Catenator& utl_Catenator::Erase() {
  if (m_Overflow != nullptr) {
    m_Overflow->seekp(0, aio_ios::beg);
  } else {
    m_String.Erase(0, -1);
  }
  return *this;
}

cow_String utl_Catenator::GetString() {
  if (m_Overflow != nullptr)
    return cow_String(m_Overflow->adoptString(mem_Malloc), -1, cow_String::Adopt);
  if (m_String.Length() >= kShareLength) return m_String;
  return cow_String(m_String.c_str(), m_String.Length());
}
