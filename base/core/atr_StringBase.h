// The common base of the two string classes, cow_String (plain text) and atr_String (text
// for the user). A string is two words: a pointer to its characters and a pointer to a
// shared representation. The representation begins with a 32-bit use count and holds the
// 32-bit length; a null representation is the empty string, read as a shared empty literal
// of length 0.
//
// Copying a string copies the two words and adds 1 to the use count; the count is a plain
// integer, so a string and its copies belong to one thread at a time. A change to a shared
// string first gives it a private copy (copy on write).
//
// Positions and lengths outside the string are clamped to it, as each operation states;
// only character access by an index outside the string raises omi_FatalError.
#ifndef ATR_STRINGBASE_H
#define ATR_STRINGBASE_H

#include <cstdint>
#include <type_traits>

#include "VRKBasExport.h"

class VRKLNU_EXPORT atr_StringBase {
 public:
  enum BorrowEnm { Borrow };
  enum AdoptEnm { Adopt };
  enum PreSizeEnm { PreSize };

  ~atr_StringBase() {
    if (m_Rep && --m_Rep->m_UseCount == 0) Delete();
  }

  const char* c_str() const { return m_Text; }
  int Length() const { return m_Rep ? m_Rep->m_Length : 0; }
  bool IsEmpty() const { return Length() == 0; }

  // Whether the text equals `length` characters of `text` (a negative length takes the
  // text up to its terminator), and their bytewise order, characters compared as unsigned.
  bool Equals(const char* text, int length) const;
  int Compare(const char* text, int length) const;

 protected:
  // The shared representation; owned characters follow it in the same block.
  struct Rep {
    int32_t m_UseCount;
    int32_t m_Length;
    int32_t m_Capacity;  // characters that fit in place, without the terminator
    int32_t m_Kind;      // Owned, Adopted or Borrowed
    char* m_Block;       // an adopted block, freed with the representation
  };

  atr_StringBase() = default;
  // A copy of the text; null is the empty string.
  explicit atr_StringBase(const char* text);
  // A copy of `length` characters (a negative length takes the text up to its terminator).
  atr_StringBase(const char* text, int length);
  // Uses the caller's text without copying. It must outlive every copy of this string and be
  // terminated at `length`.
  atr_StringBase(const char* text, int length, BorrowEnm);
  // Takes ownership of a block from the memory layer, terminated at `length`.
  atr_StringBase(char* block, int length, AdoptEnm);
  // The decimal text of the number.
  explicit atr_StringBase(int value);
  explicit atr_StringBase(unsigned int value);
  // An empty string with room for `capacity` characters.
  atr_StringBase(int capacity, PreSizeEnm);

  atr_StringBase(const atr_StringBase& other) : m_Text(other.m_Text), m_Rep(other.m_Rep) {
    if (m_Rep) ++m_Rep->m_UseCount;
  }
  atr_StringBase& operator=(const atr_StringBase& other);
  atr_StringBase& operator=(const char* text);

  // Character access; an index outside [0, Length()) raises omi_FatalError. The non-const
  // form gives the string a private copy first.
  char operator[](int index) const;
  char& operator[](int index);

  // Appends characters [start, start + count) of the `length` characters of `text`, both
  // clamped to them (a negative length takes the text up to its terminator).
  void append(const char* text, int length, int start, int count);
  // Position of `text` at or after `from`; a miss gives Length().
  int Find(const char* text, int from) const;
  // Position of the last occurrence of the first `count` characters of `text` (all of them
  // when `count` is negative; null is the empty text) that starts at or before `from`; a miss
  // gives -1.
  int rfind(const char* text, int from, int count) const;
  // `length` characters from `position`, both clamped to the string; a negative length
  // reaches the end.
  atr_StringBase Substr(int position, int length) const;
  // Removes the range, clamped as for Substr.
  void Erase(int position, int length);
  // Replaces occurrences of `oldText` by `newText`, from the left, at most `maxCount` of them
  // (all when `maxCount` is 0 or less). Returns how many were replaced.
  int Substitute(const char* oldText, const char* newText, int maxCount);
  // Remove the given characters (white space when null) at both ends, or at one end.
  void Trim(const char* characters);
  void LeftTrim(const char* characters);
  void RightTrim(const char* characters);
  void ToLower();
  void ToUpper();

  // Releases the representation once its count has reached 0.
  void Delete();

 private:
  char* Reserve(int length);
  void SetLength(int length);
  void Assign(const char* text, int length);

  static const char s_Empty[1];

  const char* m_Text = s_Empty;
  Rep* m_Rep = nullptr;
};

// Comparisons between two strings of one class, and between a string and a text; equality
// of the texts and bytewise order, characters compared as unsigned. A cow_String and an
// atr_String don't compare with each other.
template <class S>
using atr_IfString = std::enable_if_t<std::is_base_of<atr_StringBase, S>::value, bool>;

template <class S>
atr_IfString<S> operator==(const S& a, const S& b) {
  return a.Equals(b.c_str(), b.Length());
}
template <class S>
atr_IfString<S> operator==(const S& a, const char* b) {
  return a.Equals(b, -1);
}
template <class S>
atr_IfString<S> operator==(const char* a, const S& b) {
  return b.Equals(a, -1);
}
template <class S>
atr_IfString<S> operator!=(const S& a, const S& b) {
  return !(a == b);
}
template <class S>
atr_IfString<S> operator!=(const S& a, const char* b) {
  return !(a == b);
}
template <class S>
atr_IfString<S> operator!=(const char* a, const S& b) {
  return !(b == a);
}
template <class S>
atr_IfString<S> operator<(const S& a, const S& b) {
  return a.Compare(b.c_str(), b.Length()) < 0;
}

#endif  // ATR_STRINGBASE_H
