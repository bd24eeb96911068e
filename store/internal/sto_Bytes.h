// The bytes of a stored graph, in the library's fixed external form (the form of
// bio_OexternalMemFilter): little-endian on every host, bool and char one byte, short widened
// to four, int, unsigned and float four, double eight, a string its four-byte length and its
// bytes. sto_Output writes into one growing block that can be patched afterwards (a record's
// length is known only at its end); sto_Input reads with every read held to the bytes there
// are, and a read that would pass them raises, saying what was being read and where.
#ifndef STO_BYTES_H
#define STO_BYTES_H

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <type_traits>

#include "cow_String.h"

// What an item of a record holds: a value of a scalar type, an object or a collection.
enum sto_Tag : unsigned char {
  sto_TagString = 1,
  sto_TagDouble,
  sto_TagFloat,
  sto_TagUnsigned,
  sto_TagInt,
  sto_TagUShort,
  sto_TagShort,
  sto_TagUChar,
  sto_TagChar,
  sto_TagBool,
  sto_TagLong,
  sto_TagNull = 20,  // a field that holds nothing, or a null element (with its class)
  sto_TagObject,     // class, version, identity number, then the object's items
  sto_TagReference,  // the identity number of an object stored earlier in the graph
  sto_TagBase,       // the base-class part, an object
  sto_TagListPrim = 30,
  sto_TagMapInt2Prim,
  sto_TagMapString2Prim,
  sto_TagListObj,
  sto_TagMapInt2Obj,
  sto_TagMapString2Obj,
  sto_TagIntTable,
  sto_TagAgentList,  // element kind and the number of an extent of the graph
};

// The element kind of lists and extents of T: the tag of its scalar.
template <class T>
constexpr sto_Tag sto_kindOf() {
  if constexpr (std::is_same<T, cow_String>::value) return sto_TagString;
  if constexpr (std::is_same<T, double>::value) return sto_TagDouble;
  if constexpr (std::is_same<T, float>::value) return sto_TagFloat;
  if constexpr (std::is_same<T, unsigned>::value) return sto_TagUnsigned;
  if constexpr (std::is_same<T, int>::value) return sto_TagInt;
  return sto_TagBool;
}

// The bytes that a value of the kind takes (a string: at least its length).
int sto_SizeOfKind(unsigned kind);

class sto_Output {
 public:
  sto_Output() = default;
  sto_Output(const sto_Output&) = delete;
  sto_Output& operator=(const sto_Output&) = delete;
  ~sto_Output();

  size_t Size() const { return static_cast<size_t>(m_End - m_Begin); }
  // The bytes written, handed over as a string; the output is empty afterwards.
  cow_String Take();

  void PutRaw(const void* bytes, size_t count) {
    if (static_cast<size_t>(m_Limit - m_End) < count) Grow(count);
    std::memcpy(m_End, bytes, count);
    m_End += count;
  }
  void PutU8(unsigned char value) { PutRaw(&value, 1); }
  void PutU32(uint32_t value) {
    unsigned char bytes[4] = {
        static_cast<unsigned char>(value), static_cast<unsigned char>(value >> 8),
        static_cast<unsigned char>(value >> 16), static_cast<unsigned char>(value >> 24)};
    PutRaw(bytes, 4);
  }
  void PutU64(uint64_t value) {
    PutU32(static_cast<uint32_t>(value));
    PutU32(static_cast<uint32_t>(value >> 32));
  }
  void PutString(const cow_String& text) { PutString(text.c_str(), text.Length()); }
  void PutString(const char* text, int length) {
    PutU32(static_cast<uint32_t>(length));
    PutRaw(text, static_cast<size_t>(length));
  }
  // The value in the external form of its type.
  void Put(const cow_String& value) { PutString(value); }
  void Put(double value) {
    uint64_t bits;
    std::memcpy(&bits, &value, 8);
    PutU64(bits);
  }
  void Put(float value) {
    uint32_t bits;
    std::memcpy(&bits, &value, 4);
    PutU32(bits);
  }
  void Put(unsigned value) { PutU32(value); }
  void Put(int value) { PutU32(static_cast<uint32_t>(value)); }
  void Put(bool value) { PutU8(value ? 1 : 0); }
  // `count` values one after another; a little-endian host copies them in one move.
  template <class T>
  void PutArray(const T* values, int count);

  // Writes a 32-bit value over the four bytes at `position`.
  void PatchU32(size_t position, uint32_t value);

 private:
  void Grow(size_t count);

  char* m_Begin = nullptr;
  char* m_End = nullptr;
  char* m_Limit = nullptr;
};

class sto_Input {
 public:
  // Reads bytes that stay the caller's. `what` names them in messages.
  sto_Input(const char* bytes, size_t size) : m_Begin(bytes), m_Size(size) {}

  size_t Size() const { return m_Size; }
  // Raises unless `count` bytes lie at `position`; `what` says what they were to be.
  void Require(size_t position, size_t count, const char* what) const {
    if (position > m_Size || m_Size - position < count) Fail(position, what);
  }
  [[noreturn]] void Fail(size_t position, const char* what) const;

  unsigned char U8(size_t position, const char* what) const {
    Require(position, 1, what);
    return static_cast<unsigned char>(m_Begin[position]);
  }
  uint32_t U32(size_t position, const char* what) const {
    Require(position, 4, what);
    return Unchecked32(position);
  }
  uint64_t U64(size_t position, const char* what) const {
    Require(position, 8, what);
    return Unchecked32(position) | static_cast<uint64_t>(Unchecked32(position + 4)) << 32;
  }
  // The string at `position`, and in `next` the position after it.
  cow_String String(size_t position, size_t& next, const char* what) const;
  // Moves past the string at `position`: `next` is the position after it.
  void SkipString(size_t position, size_t& next, const char* what) const {
    const uint32_t length = U32(position, what);
    Require(position + 4, length, what);
    next = position + 4 + length;
  }
  // Whether the string at `position` is `text`, and in `next` the position after it.
  bool StringIs(size_t position, const cow_String& text, size_t& next, const char* what) const;

  // The value of type T at `position`, checked.
  template <class T>
  T Get(size_t position, size_t& next, const char* what) const;
  // `count` values into `values`, checked.
  template <class T>
  void GetArray(size_t position, int count, T* values, const char* what) const;

 private:
  uint32_t Unchecked32(size_t position) const {
    const unsigned char* p = reinterpret_cast<const unsigned char*>(m_Begin + position);
    return p[0] | p[1] << 8 | p[2] << 16 | static_cast<uint32_t>(p[3]) << 24;
  }

  const char* m_Begin;
  size_t m_Size;
};

#endif  // STO_BYTES_H
