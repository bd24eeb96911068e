#include "aio_ostrstream.h"

#include <cstring>

#include "mem_Alloc.h"

aio_ostrstream::aio_ostrstream() : aio_ostream(nullptr, 0) {}

aio_ostrstream::~aio_ostrstream() {
  mem_Free(m_Begin);
}

cow_String aio_ostrstream::str() const {
  return cow_String(m_Begin, Length());
}

char* aio_ostrstream::adoptString(void* (*allocator)(size_t)) {
  const size_t length = m_Next - m_Begin;
  char* text;
  if (allocator == mem_Malloc && m_Begin != nullptr) {
    text = m_Begin;  // the buffer is a block of this allocator: hand it over as it is
    m_Begin = m_Next = m_End = nullptr;
  } else {
    text = static_cast<char*>(allocator(length + 1));
    if (text != nullptr && length > 0) std::memcpy(text, m_Begin, length);
    m_Next = m_Begin;
  }
  if (text != nullptr) text[length] = '\0';
  return text;
}

bool aio_ostrstream::Grow(size_t needed) {
  const size_t length = m_Next - m_Begin;
  size_t capacity = m_End - m_Begin + 1;
  if (capacity < 256) capacity = 256;
  while (length + needed >= capacity)
    capacity *= 2;
  char* grown = static_cast<char*>(mem_Realloc(m_Begin, capacity));
  if (grown == nullptr) return false;
  m_Begin = grown;
  m_Next = grown + length;
  m_End = grown + capacity - 1;
  return true;
}

bool aio_ostrstream::Overflow(const char* data, size_t size) {
  if (!Grow(size)) return false;
  std::memcpy(m_Next, data, size);
  m_Next += size;
  return true;
}

bool aio_ostrstream::Seek(long long offset, seek_dir direction) {
  const long long base = direction == cur ? m_Next - m_Begin : 0;
  const long long position = direction == end ? Length() + offset : base + offset;
  if (position < 0 || position > Length()) return false;
  m_Next = m_Begin + position;
  return true;
}
