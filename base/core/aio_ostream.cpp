#include "aio_ostream.h"

#include <algorithm>
#include <cstdio>
#include <cstring>

namespace {

// Precision is capped so that any double fits the formatting buffer in fixed notation.
constexpr int kMaxPrecision = 100;
constexpr size_t kNumberBuffer = 512;

// Starts a printf conversion with the '+' and '#' flags as asked; returns the end.
char* StartFormat(char* format, bool plus, bool alternate) {
  *format++ = '%';
  if (plus) *format++ = '+';
  if (alternate) *format++ = '#';
  return format;
}

}  // namespace

int aio_ios::flags(int newFlags) {
  const int old = m_Flags;
  m_Flags = newFlags;
  return old;
}

int aio_ios::setf(int bits) {
  return flags(m_Flags | bits);
}

int aio_ios::setf(int bits, int mask) {
  return flags((m_Flags & ~mask) | (bits & mask));
}

int aio_ios::unsetf(int bits) {
  return flags(m_Flags & ~bits);
}

int aio_ios::width(int newWidth) {
  const int old = m_Width;
  m_Width = newWidth;
  return old;
}

int aio_ios::precision(int newPrecision) {
  const int old = m_Precision;
  m_Precision = newPrecision;
  return old;
}

aio_ostream::~aio_ostream() = default;

bool aio_ostream::Sync() {
  return true;
}

bool aio_ostream::Seek(long long, seek_dir) {
  return false;
}

void aio_ostream::Put(const char* data, size_t size) {
  if (m_Failed) return;
  if (size <= static_cast<size_t>(m_End - m_Next)) {
    std::memcpy(m_Next, data, size);
    m_Next += size;
  } else if (!Overflow(data, size)) {
    m_Failed = true;
  }
}

void aio_ostream::Pad(int count) {
  static const char blanks[] = "                                ";
  for (; count > 0; count -= sizeof blanks - 1)
    Put(blanks, std::min<int>(count, sizeof blanks - 1));
}

aio_ostream& aio_ostream::Done() {
  if ((m_Flags & unitbuf) && !m_Failed && !Sync()) m_Failed = true;
  return *this;
}

aio_ostream& aio_ostream::print(const char* text) {
  return print_text(text, text ? static_cast<int>(std::strlen(text)) : 0);
}

aio_ostream& aio_ostream::print_text(const char* text, int length) {
  const int padding = m_Width - std::max(length, 0);
  m_Width = 0;
  if (!(m_Flags & left)) Pad(padding);
  if (length > 0) Put(text, length);
  if (m_Flags & left) Pad(padding);
  return Done();
}

// Under oct or hex a negative number shows its two's complement pattern, as iostreams do.
aio_ostream& aio_ostream::print_int(int value) {
  if (m_Flags & (oct | hex)) return print_unsigned(static_cast<unsigned int>(value));
  return print_long(value);
}

aio_ostream& aio_ostream::print_long(long long value) {
  if (m_Flags & (oct | hex)) return print_unsigned(static_cast<unsigned long long>(value));
  char format[8];
  std::strcpy(StartFormat(format, m_Flags & showpos, false), "lld");
  char text[32];
  return print_text(text, std::snprintf(text, sizeof text, format, value));
}

aio_ostream& aio_ostream::print_unsigned(unsigned long long value) {
  char format[8];
  const char conversion = (m_Flags & hex)   ? ((m_Flags & uppercase) ? 'X' : 'x')
                          : (m_Flags & oct) ? 'o'
                                            : 'u';
  char* p = StartFormat(format, false, (m_Flags & showbase) && conversion != 'u');
  *p++ = 'l';
  *p++ = 'l';
  *p++ = conversion;
  *p = '\0';
  char text[32];
  return print_text(text, std::snprintf(text, sizeof text, format, value));
}

aio_ostream& aio_ostream::print_double(double value) {
  char format[16];
  char* p = StartFormat(format, m_Flags & showpos, m_Flags & showpoint);
  std::strcpy(p, ".*");
  const bool upper = m_Flags & uppercase;
  switch (m_Flags & floatfield) {
    case fixed:
      p[2] = 'f';
      break;
    case scientific:
      p[2] = upper ? 'E' : 'e';
      break;
    default:
      p[2] = upper ? 'G' : 'g';
      break;
  }
  p[3] = '\0';
  char text[kNumberBuffer];
  const int digits = std::min(std::max(m_Precision, 0), kMaxPrecision);
  return print_text(text, std::snprintf(text, sizeof text, format, digits, value));
}

aio_ostream& aio_ostream::print_pointer(const void* value) {
  char text[32];
  return print_text(text, std::snprintf(text, sizeof text, "%p", value));
}

aio_ostream& aio_ostream::put(char c) {
  Put(&c, 1);
  return Done();
}

aio_ostream& aio_ostream::write(const char* data, int length) {
  if (length > 0) Put(data, length);
  return Done();
}

aio_ostream& aio_ostream::flush() {
  if (!m_Failed && !Sync()) m_Failed = true;
  return *this;
}

aio_ostream& aio_ostream::seekp(long long offset, seek_dir direction) {
  if (!m_Failed && !(Sync() && Seek(offset, direction))) m_Failed = true;
  return *this;
}

aio_ostream& aio_setwidth(aio_ostream& os, int width) {
  os.width(width);
  return os;
}

aio_ostream& operator<<(aio_ostream& os, const char* text) {
  return os.print(text);
}

aio_ostream& operator<<(aio_ostream& os, char c) {
  return os.print_text(&c, 1);
}

aio_ostream& operator<<(aio_ostream& os, int value) {
  return os.print_int(value);
}

aio_ostream& operator<<(aio_ostream& os, unsigned int value) {
  return os.print_unsigned(value);
}

aio_ostream& operator<<(aio_ostream& os, long value) {
  return os.print_long(value);
}

aio_ostream& operator<<(aio_ostream& os, unsigned long value) {
  return os.print_unsigned(value);
}

aio_ostream& operator<<(aio_ostream& os, long long value) {
  return os.print_long(value);
}

aio_ostream& operator<<(aio_ostream& os, unsigned long long value) {
  return os.print_unsigned(value);
}

aio_ostream& operator<<(aio_ostream& os, double value) {
  return os.print_double(value);
}

aio_ostream& operator<<(aio_ostream& os, const void* pointer) {
  return os.print_pointer(pointer);
}

aio_ostream& aio_endl(aio_ostream& os) {
  return os.put('\n').flush();
}

aio_ostream& aio_flush(aio_ostream& os) {
  return os.flush();
}
