// Plain text: identifiers, paths and file content. Copies share one representation until
// one of them changes (see atr_StringBase for the layout and the rules).
//
//   cow_String path("/tmp/run");
//   cow_String copy = path;        // shares, no allocation
//   copy += "/step1.log";          // copy gets its own text; path is unchanged
//   int slash = copy.Find("/", 1); // a miss would give copy.Length()
//
// The use count is a plain integer: a string and its copies belong to one thread at a
// time. Positions outside the string are clamped; see each operation in atr_StringBase.
#ifndef COW_STRING_H
#define COW_STRING_H

#include "VRKBasExport.h"
#include "atr_String.h"
#include "atr_StringBase.h"

class aio_ostream;

class VRKLNU_EXPORT cow_String : public atr_StringBase {
 public:
  cow_String() = default;
  cow_String(const char* text) : atr_StringBase(text) {}
  cow_String(const char* text, int length) : atr_StringBase(text, length) {}
  cow_String(const char* text, int length, BorrowEnm borrow)
      : atr_StringBase(text, length, borrow) {}
  cow_String(char* block, int length, AdoptEnm adopt) : atr_StringBase(block, length, adopt) {}
  explicit cow_String(int value) : atr_StringBase(value) {}
  explicit cow_String(unsigned int value) : atr_StringBase(value) {}
  cow_String(int capacity, PreSizeEnm preSize) : atr_StringBase(capacity, preSize) {}
  // The text of a user message.
  cow_String(const atr_String& text) : atr_StringBase(text) {}

  cow_String& operator=(const char* text) {
    atr_StringBase::operator=(text);
    return *this;
  }

  using atr_StringBase::append;
  using atr_StringBase::Erase;
  using atr_StringBase::LeftTrim;
  using atr_StringBase::RightTrim;
  using atr_StringBase::Substitute;
  using atr_StringBase::ToLower;
  using atr_StringBase::ToUpper;
  using atr_StringBase::Trim;
  using atr_StringBase::operator[];
  using atr_StringBase::rfind;

  int Find(const char* text, int from = 0) const { return atr_StringBase::Find(text, from); }
  cow_String Substr(int position, int length) const {
    return cow_String(atr_StringBase::Substr(position, length));
  }

  cow_String& operator+=(const char* text) {
    append(text, -1, 0, 0x7fffffff);
    return *this;
  }
  cow_String& operator+=(const cow_String& text) {
    append(text.c_str(), text.Length(), 0, 0x7fffffff);
    return *this;
  }
  cow_String& operator+=(char c) {
    append(&c, 1, 0, 1);
    return *this;
  }

 private:
  explicit cow_String(const atr_StringBase& text) : atr_StringBase(text) {}
};

VRKLNU_EXPORT cow_String operator+(const cow_String& a, const cow_String& b);
VRKLNU_EXPORT cow_String operator+(const cow_String& a, const char* b);

VRKLNU_EXPORT aio_ostream& operator<<(aio_ostream& os, const cow_String& text);

#endif  // COW_STRING_H
