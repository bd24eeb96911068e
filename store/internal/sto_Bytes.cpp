#include "sto_Bytes.h"

#include "mem_Alloc.h"
#include "nex_Exception.h"
#include "nex_TextException.h"

namespace {

constexpr bool kLittleEndianHost = __BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__;

}  // namespace

int sto_SizeOfKind(unsigned kind) {
  switch (kind) {
    case sto_TagDouble:
      return 8;
    case sto_TagBool:
    case sto_TagUChar:
    case sto_TagChar:
      return 1;
    case sto_TagString:
    case sto_TagFloat:
    case sto_TagUnsigned:
    case sto_TagInt:
    case sto_TagUShort:
    case sto_TagShort:
    case sto_TagLong:
      return 4;
    default:
      return 0;
  }
}

sto_Output::~sto_Output() {
  mem_Free(m_Begin);
}

cow_String sto_Output::Take() {
  PutU8(0);  // the terminator the string wants behind its bytes
  const int length = static_cast<int>(Size() - 1);
  cow_String bytes(m_Begin, length, cow_String::Adopt);
  m_Begin = m_End = m_Limit = nullptr;
  return bytes;
}

template <class T>
void sto_Output::PutArray(const T* values, int count) {
  if (count < 1) return;
  if (kLittleEndianHost && !std::is_same<T, cow_String>::value && !std::is_same<T, bool>::value) {
    PutRaw(values, sizeof(T) * static_cast<size_t>(count));
    return;
  }
  for (int i = 0; i < count; ++i)
    Put(values[i]);
}

void sto_Output::PatchU32(size_t position, uint32_t value) {
  const size_t end = Size();
  m_End = m_Begin + position;
  PutU32(value);
  m_End = m_Begin + end;
}

void sto_Output::Grow(size_t count) {
  const size_t size = Size();
  size_t capacity = static_cast<size_t>(m_Limit - m_Begin);
  capacity = capacity < 4096 ? 4096 : capacity * 2;
  // A large write leaves room behind it, so that the next small one moves nothing.
  if (capacity < size + count) capacity = size + count + 4096;
  char* block = static_cast<char*>(mem_Realloc(m_Begin, capacity));
  if (block == nullptr) {  // the throwing allocation raises the job's out-of-memory error
    block = static_cast<char*>(mem_OperatorNewThrow(capacity));
    std::memcpy(block, m_Begin, size);
    mem_Free(m_Begin);
  }
  m_Begin = block;
  m_End = block + size;
  m_Limit = block + capacity;
}

void sto_Input::Fail(size_t position, const char* what) const {
  nex_TextException error(
      nex_Translate("Stored record is truncated or corrupt: %s at byte %d of %d", what,
                    static_cast<int>(position), static_cast<int>(m_Size)));
  NEX_THROW(error);
}

cow_String sto_Input::String(size_t position, size_t& next, const char* what) const {
  SkipString(position, next, what);
  return cow_String(m_Begin + position + 4, static_cast<int>(next - position - 4));
}

bool sto_Input::StringIs(size_t position, const cow_String& text, size_t& next,
                         const char* what) const {
  SkipString(position, next, what);
  const size_t length = next - position - 4;
  return length == static_cast<size_t>(text.Length()) &&
         std::memcmp(m_Begin + position + 4, text.c_str(), length) == 0;
}

template <class T>
T sto_Input::Get(size_t position, size_t& next, const char* what) const {
  if constexpr (std::is_same<T, cow_String>::value) {
    return String(position, next, what);
  } else if constexpr (std::is_same<T, bool>::value) {
    next = position + 1;
    return U8(position, what) != 0;
  } else {
    T value;
    next = position + sizeof(T);
    if constexpr (sizeof(T) == 8) {
      const uint64_t bits = U64(position, what);
      std::memcpy(&value, &bits, 8);
    } else {
      const uint32_t bits = U32(position, what);
      std::memcpy(&value, &bits, 4);
    }
    return value;
  }
}

template <class T>
void sto_Input::GetArray(size_t position, int count, T* values, const char* what) const {
  if (count < 1) return;
  if (kLittleEndianHost && !std::is_same<T, cow_String>::value && !std::is_same<T, bool>::value) {
    Require(position, sizeof(T) * static_cast<size_t>(count), what);
    std::memcpy(static_cast<void*>(values), m_Begin + position,
                sizeof(T) * static_cast<size_t>(count));
    return;
  }
  for (int i = 0; i < count; ++i)
    values[i] = Get<T>(position, position, what);
}

#define STO_INSTANTIATE(T)                                          \
  template void sto_Output::PutArray<T>(const T*, int);             \
  template T sto_Input::Get<T>(size_t, size_t&, const char*) const; \
  template void sto_Input::GetArray<T>(size_t, int, T*, const char*) const;
STO_INSTANTIATE(bool)
STO_INSTANTIATE(int)
STO_INSTANTIATE(unsigned)
STO_INSTANTIATE(float)
STO_INSTANTIATE(double)
STO_INSTANTIATE(cow_String)
#undef STO_INSTANTIATE
