#include "utl_BinStream.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>

#include "cow_SystemErrorCode.h"
#include "utl_BinStreamException.h"

namespace {

// Descriptors have no text or binary mode here; the check that the switch made, that the
// descriptor is open, stays.
void CheckOpen(int descriptor) {
  if (fcntl(descriptor, F_GETFL) >= 0) return;
  const cow_String text = cow_SystemErrorCode(static_cast<unsigned>(errno)).GetText();
  NEX_THROW(utl_BinStreamException(
      nex_Translate("*** ERROR: Can't set stream to binary mode: %s", text)));
}

// A count of elements as bytes; nothing for a count of 0 or less.
template <class T>
size_t ArrayBytes(int count) {
  return count > 0 ? static_cast<size_t>(count) * sizeof(T) : 0;
}

}  // namespace

utl_BinOStream::utl_BinOStream(int descriptor, omi_Swapper::EndianType) : m_Descriptor(descriptor) {
  CheckOpen(descriptor);
}

void utl_BinOStream::WriteBytes(const void* buffer, size_t length) {
  const char* next = static_cast<const char*>(buffer);
  while (length > 0) {
    const ssize_t written = ::write(m_Descriptor, next, length);
    if (written < 0) {
      if (errno == EINTR) continue;
      NEX_THROW(utl_BinStreamWriteError(errno));
    }
    next += written;
    length -= static_cast<size_t>(written);
  }
}

void utl_BinOStream::Write(const char* buffer, int length) {
  if (length > 0) WriteBytes(buffer, static_cast<size_t>(length));
}

template <class T>
void utl_BinOStream::WriteScalar(const T& value) {
  WriteBytes(&value, sizeof value);
}

template <class T>
void utl_BinOStream::WriteArray(const T* values, int count) {
  WriteBytes(values, ArrayBytes<T>(count));
}

void utl_BinOStream::WriteSchar(signed char value) {
  WriteScalar(value);
}
void utl_BinOStream::WriteUchar(unsigned char value) {
  WriteScalar(value);
}
void utl_BinOStream::WriteShort(short value) {
  WriteScalar(value);
}
void utl_BinOStream::WriteUShort(const unsigned short& value) {
  WriteScalar(value);
}
void utl_BinOStream::WriteInt(const int& value) {
  WriteScalar(value);
}
void utl_BinOStream::WriteUInt(const unsigned int& value) {
  WriteScalar(value);
}
void utl_BinOStream::WriteInt64(const int64_t& value) {
  WriteScalar(value);
}
void utl_BinOStream::WriteUInt64(const uint64_t& value) {
  WriteScalar(value);
}

void utl_BinOStream::WriteString(const cow_String& text) {
  WriteInt(text.Length());
  Write(text.c_str(), text.Length());
}

void utl_BinOStream::WriteIntArray(const int* values, int count) {
  WriteArray(values, count);
}
void utl_BinOStream::WriteFloatArray(const float* values, int count) {
  WriteArray(values, count);
}
void utl_BinOStream::WriteDoubleArray(const double* values, int count) {
  WriteArray(values, count);
}

utl_BinIStream::utl_BinIStream(int descriptor, omi_Swapper::EndianType) : m_Descriptor(descriptor) {
  CheckOpen(descriptor);
}

void utl_BinIStream::ReadBytes(void* buffer, size_t length) const {
  char* next = static_cast<char*>(buffer);
  while (length > 0) {
    const ssize_t got = ::read(m_Descriptor, next, length);
    if (got == 0) NEX_THROW(utl_BinStreamEOF());
    if (got < 0) {
      if (errno == EINTR) continue;
      NEX_THROW(utl_BinStreamReadError(errno));
    }
    next += got;
    length -= static_cast<size_t>(got);
  }
}

void utl_BinIStream::Read(char* buffer, int length) const {
  if (length > 0) ReadBytes(buffer, static_cast<size_t>(length));
}

template <class T>
T utl_BinIStream::ReadScalar() const {
  T value;
  ReadBytes(&value, sizeof value);
  return value;
}

template <class T>
void utl_BinIStream::ReadArray(T* values, int count) const {
  ReadBytes(values, ArrayBytes<T>(count));
}

signed char utl_BinIStream::ReadSchar() const {
  return ReadScalar<signed char>();
}
unsigned char utl_BinIStream::ReadUchar() const {
  return ReadScalar<unsigned char>();
}
short utl_BinIStream::ReadShort() const {
  return ReadScalar<short>();
}
unsigned short utl_BinIStream::ReadUShort() const {
  return ReadScalar<unsigned short>();
}
int utl_BinIStream::ReadInt() const {
  return ReadScalar<int>();
}
unsigned int utl_BinIStream::ReadUInt() const {
  return ReadScalar<unsigned int>();
}
int64_t utl_BinIStream::ReadInt64() const {
  return ReadScalar<int64_t>();
}
uint64_t utl_BinIStream::ReadUInt64() const {
  return ReadScalar<uint64_t>();
}

cow_String utl_BinIStream::ReadString() const {
  const int length = ReadInt();
  if (length < 0) NEX_THROW(utl_BinStreamReadError(EBADMSG));
  if (length == 0) return cow_String();
  char* block = static_cast<char*>(mem_OperatorNewThrow(static_cast<size_t>(length) + 1));
  try {
    ReadBytes(block, static_cast<size_t>(length));
  } catch (...) {
    mem_Free(block);
    throw;
  }
  block[length] = '\0';
  return cow_String(block, length, cow_String::Adopt);
}

void utl_BinIStream::ReadIntArray(int* values, int count) const {
  ReadArray(values, count);
}
void utl_BinIStream::ReadFloatArray(float* values, int count) const {
  ReadArray(values, count);
}
void utl_BinIStream::ReadDoubleArray(double* values, int count) const {
  ReadArray(values, count);
}
