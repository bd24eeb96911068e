// Typed values over a descriptor the caller owns, such as a pipe or a socket to another
// process: utl_BinOStream writes them, utl_BinIStream reads them back.
//
//   utl_BinOStream out(pipeEnds[1], omi_Swapper::HostEndian());
//   out.WriteInt(count);
//   out.WriteDoubleArray(values, count);
//   ...
//   utl_BinIStream in(pipeEnds[0], omi_Swapper::HostEndian());
//   int count = in.ReadInt();
//   in.ReadDoubleArray(values, count);
//
// The wire form is each value's memory image in host order (little-endian here), with no
// tag and no padding: scalars of 1, 2, 4 or 8 bytes; arrays as their elements, with no
// count; a string as a 4-byte length and its bytes, with no terminator. The byte order given
// to the constructors is accepted and not used: nothing is ever swapped. That is intended.
//
// Nothing is buffered: each call hands the caller's memory to the system, and partial
// transfers and interrupted calls are carried on until the value is whole. Senders of many
// small values should gather them into an array.
#ifndef UTL_BINSTREAM_H
#define UTL_BINSTREAM_H

#include <cstddef>
#include <cstdint>

#include "VRKBasExport.h"
#include "cow_String.h"
#include "mem_Alloc.h"
#include "omi_Swapper.h"

// Writes values on `descriptor`, which stays the caller's and is never closed. Cheap: make
// one at each use if convenient. Calls block until every byte is taken. A failed write raises
// utl_BinStreamWriteError with the system's text, after which the bytes already sent are
// gone; there is no resynchronising. A write to a pipe whose reader has gone raises SIGPIPE
// as any write does, unless the program ignores that signal; then it fails with "Broken pipe".
// No lock: two threads on one descriptor interleave their bytes.
class VRKLNU_EXPORT utl_BinOStream : public mem_AllocationOperators {
 public:
  // A descriptor that isn't open raises utl_BinStreamException ("*** ERROR: Can't set stream
  // to binary mode: Bad file descriptor").
  utl_BinOStream(int descriptor, omi_Swapper::EndianType endian);

  // Writes `length` bytes; 0 or less returns at once.
  void Write(const char* buffer, int length);
  void WriteSchar(signed char value);
  void WriteUchar(unsigned char value);
  void WriteShort(short value);
  void WriteUShort(const unsigned short& value);
  void WriteInt(const int& value);
  void WriteUInt(const unsigned int& value);
  void WriteInt64(const int64_t& value);
  void WriteUInt64(const uint64_t& value);
  // The length as a 4-byte int (0 for the empty string), then the bytes.
  void WriteString(const cow_String& text);
  // `count` elements; a count of 0 or less writes nothing.
  void WriteIntArray(const int* values, int count);
  void WriteFloatArray(const float* values, int count);
  void WriteDoubleArray(const double* values, int count);

 private:
  template <class T>
  void WriteScalar(const T& value);
  template <class T>
  void WriteArray(const T* values, int count);
  void WriteBytes(const void* buffer, size_t length);

  int m_Descriptor;
};

// Reads values from `descriptor`, which stays the caller's and is never closed. Calls block
// until the whole value has come. The peer closing before that, in the middle of a value as
// well, raises utl_BinStreamEOF; a failed read raises utl_BinStreamReadError with the
// system's text. The bytes of a value read before a failure are lost. No lock.
class VRKLNU_EXPORT utl_BinIStream : public mem_AllocationOperators {
 public:
  // A descriptor that isn't open raises utl_BinStreamException, as for utl_BinOStream.
  utl_BinIStream(int descriptor, omi_Swapper::EndianType endian);

  // Fills `buffer` with exactly `length` bytes; 0 or less returns at once.
  void Read(char* buffer, int length) const;
  signed char ReadSchar() const;
  unsigned char ReadUchar() const;
  short ReadShort() const;
  unsigned short ReadUShort() const;
  int ReadInt() const;
  unsigned int ReadUInt() const;
  int64_t ReadInt64() const;
  uint64_t ReadUInt64() const;
  // A negative length on the stream, which no writer sends, raises utl_BinStreamReadError
  // ("Bad message") before anything is allocated.
  cow_String ReadString() const;
  void ReadIntArray(int* values, int count) const;
  void ReadFloatArray(float* values, int count) const;
  void ReadDoubleArray(double* values, int count) const;

 private:
  template <class T>
  T ReadScalar() const;
  template <class T>
  void ReadArray(T* values, int count) const;
  void ReadBytes(void* buffer, size_t length) const;

  int m_Descriptor;
};

#endif  // UTL_BINSTREAM_H
