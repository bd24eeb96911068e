#include "atr_StringBase.h"

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <functional>

#include "mem_Alloc.h"
#include "omi_FatalError.h"

namespace {

enum Kind { Owned, Adopted, Borrowed };
constexpr int kMaxLength = 0x7fffffff - 64;
const char* const kWhiteSpace = " \t\r\n\f\v";

int Clamp(int value, int low, int high) {
  return std::min(std::max(value, low), high);
}

int LengthOf(const char* text, int length) {
  if (text == nullptr) return 0;
  if (length >= 0) return length;
  const size_t n = std::strlen(text);
  if (n > static_cast<size_t>(kMaxLength)) throw omi_FatalError("string too long", ERANGE);
  return static_cast<int>(n);
}

}  // namespace

const char atr_StringBase::s_Empty[1] = {'\0'};

atr_StringBase::atr_StringBase(const char* text) {
  Assign(text, LengthOf(text, -1));
}

atr_StringBase::atr_StringBase(const char* text, int length) {
  Assign(text, LengthOf(text, length));
}

atr_StringBase::atr_StringBase(const char* text, int length, BorrowEnm) {
  length = LengthOf(text, length);
  if (length == 0) return;
  m_Rep = static_cast<Rep*>(mem_OperatorNewThrow(sizeof(Rep)));
  *m_Rep = Rep{1, length, 0, Borrowed, nullptr};
  m_Text = text;
}

atr_StringBase::atr_StringBase(char* block, int length, AdoptEnm) {
  length = LengthOf(block, length);
  if (length == 0) {
    mem_Free(block);
    return;
  }
  try {
    m_Rep = static_cast<Rep*>(mem_OperatorNewThrow(sizeof(Rep)));
  } catch (...) {
    mem_Free(block);
    throw;
  }
  *m_Rep = Rep{1, length, 0, Adopted, block};
  m_Text = block;
}

atr_StringBase::atr_StringBase(int value) {
  char digits[16];
  Assign(digits, std::snprintf(digits, sizeof digits, "%d", value));
}

atr_StringBase::atr_StringBase(unsigned int value) {
  char digits[16];
  Assign(digits, std::snprintf(digits, sizeof digits, "%u", value));
}

atr_StringBase::atr_StringBase(int capacity, PreSizeEnm) {
  Reserve(Clamp(capacity, 0, kMaxLength));
  SetLength(0);
}

atr_StringBase& atr_StringBase::operator=(const atr_StringBase& other) {
  if (other.m_Rep) ++other.m_Rep->m_UseCount;
  if (m_Rep && --m_Rep->m_UseCount == 0) Delete();
  m_Text = other.m_Text;
  m_Rep = other.m_Rep;
  return *this;
}

atr_StringBase& atr_StringBase::operator=(const char* text) {
  const int length = LengthOf(text, -1);
  // The text may lie inside this string: copy it before the old representation goes.
  atr_StringBase copy(text, length);
  return *this = copy;
}

char atr_StringBase::operator[](int index) const {
  if (index < 0 || index >= Length()) throw omi_FatalError("string index out of range", ERANGE);
  return m_Text[index];
}

char& atr_StringBase::operator[](int index) {
  if (index < 0 || index >= Length()) throw omi_FatalError("string index out of range", ERANGE);
  return Reserve(Length())[index];
}

void atr_StringBase::append(const char* text, int length, int start, int count) {
  length = LengthOf(text, length);
  start = Clamp(start, 0, length);
  count = Clamp(count, 0, length - start);
  if (count == 0) return;
  const int old = Length();
  if (count > kMaxLength - old) throw omi_FatalError("string too long", ERANGE);
  // Text taken from this string itself must outlive the move to a larger representation.
  const std::less<const char*> before;
  const bool own = !before(text, m_Text) && before(text, m_Text + old + 1);
  const atr_StringBase keep(own ? *this : atr_StringBase());
  std::memmove(Reserve(old + count) + old, text + start, count);
  SetLength(old + count);
}

int atr_StringBase::Find(const char* text, int from) const {
  const int length = Length();
  from = std::max(from, 0);
  if (from > length) return length;
  const int n = LengthOf(text, -1);
  const void* hit = memmem(m_Text + from, length - from, text ? text : s_Empty, n);
  return hit ? static_cast<int>(static_cast<const char*>(hit) - m_Text) : length;
}

int atr_StringBase::rfind(const char* text, int from, int count) const {
  if (text == nullptr) text = s_Empty;
  const int n = LengthOf(text, count < 0 ? -1 : std::min(count, LengthOf(text, -1)));
  for (int i = std::min(from, Length() - n); i >= 0; --i) {
    if (std::memcmp(m_Text + i, text, n) == 0) return i;
  }
  return -1;
}

atr_StringBase atr_StringBase::Substr(int position, int length) const {
  position = Clamp(position, 0, Length());
  length = length < 0 ? Length() - position : Clamp(length, 0, Length() - position);
  if (position == 0 && length == Length()) return *this;
  return atr_StringBase(m_Text + position, length);
}

void atr_StringBase::Erase(int position, int length) {
  position = Clamp(position, 0, Length());
  length = length < 0 ? Length() - position : Clamp(length, 0, Length() - position);
  if (length == 0) return;
  char* text = Reserve(Length());
  std::memmove(text + position, text + position + length, Length() - position - length);
  SetLength(Length() - length);
}

int atr_StringBase::Substitute(const char* oldText, const char* newText, int maxCount) {
  const int oldLength = LengthOf(oldText, -1);
  if (oldLength == 0) return 0;
  const int newLength = LengthOf(newText, -1);
  atr_StringBase result(0, PreSize);
  int replaced = 0;
  int from = 0;
  for (int hit = Find(oldText, 0); hit < Length() && (maxCount <= 0 || replaced < maxCount);
       hit = Find(oldText, from)) {
    result.append(m_Text, Length(), from, hit - from);
    result.append(newText, newLength, 0, newLength);
    from = hit + oldLength;
    ++replaced;
  }
  if (replaced == 0) return 0;
  result.append(m_Text, Length(), from, Length() - from);
  *this = result;
  return replaced;
}

void atr_StringBase::Trim(const char* characters) {
  RightTrim(characters);
  LeftTrim(characters);
}

void atr_StringBase::LeftTrim(const char* characters) {
  const char* set = characters ? characters : kWhiteSpace;
  int n = 0;
  while (n < Length() && std::strchr(set, m_Text[n]) && m_Text[n] != '\0')
    ++n;
  Erase(0, n);
}

void atr_StringBase::RightTrim(const char* characters) {
  const char* set = characters ? characters : kWhiteSpace;
  int n = Length();
  while (n > 0 && std::strchr(set, m_Text[n - 1]) && m_Text[n - 1] != '\0')
    --n;
  Erase(n, -1);
}

void atr_StringBase::ToLower() {
  if (IsEmpty()) return;
  char* text = Reserve(Length());
  for (int i = 0; i < Length(); ++i)
    text[i] = std::tolower(static_cast<unsigned char>(text[i]));
}

void atr_StringBase::ToUpper() {
  if (IsEmpty()) return;
  char* text = Reserve(Length());
  for (int i = 0; i < Length(); ++i)
    text[i] = std::toupper(static_cast<unsigned char>(text[i]));
}

bool atr_StringBase::Equals(const char* text, int length) const {
  length = LengthOf(text, length);
  return length == Length() && std::memcmp(m_Text, text ? text : s_Empty, length) == 0;
}

int atr_StringBase::Compare(const char* text, int length) const {
  length = LengthOf(text, length);
  const int common = std::min(length, Length());
  const int order = std::memcmp(m_Text, text ? text : s_Empty, common);
  if (order != 0) return order;
  return Length() < length ? -1 : Length() > length ? 1 : 0;
}

void atr_StringBase::Delete() {
  if (m_Rep->m_Kind == Adopted) mem_Free(m_Rep->m_Block);
  mem_Free(m_Rep);
  m_Rep = nullptr;
  m_Text = s_Empty;
}

// Makes the representation private, owned and able to hold `length` characters, keeping the
// present text, and returns the characters for writing.
char* atr_StringBase::Reserve(int length) {
  if (m_Rep && m_Rep->m_UseCount == 1 && m_Rep->m_Kind == Owned && m_Rep->m_Capacity >= length) {
    return const_cast<char*>(m_Text);
  }
  const int old = Length();
  int capacity = std::max(length, 15);
  if (m_Rep && m_Rep->m_Kind == Owned && length > m_Rep->m_Capacity) {
    capacity = std::max(capacity, Clamp(old + old / 2, 0, kMaxLength));
  }
  Rep* rep = static_cast<Rep*>(mem_OperatorNewThrow(sizeof(Rep) + capacity + 1));
  *rep = Rep{1, old, capacity, Owned, nullptr};
  char* text = reinterpret_cast<char*>(rep + 1);
  std::memcpy(text, m_Text, old);
  text[old] = '\0';
  if (m_Rep && --m_Rep->m_UseCount == 0) Delete();
  m_Rep = rep;
  m_Text = text;
  return text;
}

void atr_StringBase::SetLength(int length) {
  m_Rep->m_Length = length;
  const_cast<char*>(m_Text)[length] = '\0';
}

void atr_StringBase::Assign(const char* text, int length) {
  if (length == 0) return;
  std::memcpy(Reserve(length), text, length);
  SetLength(length);
}
