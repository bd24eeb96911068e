#include "atr_String.h"

#include "aio_ostream.h"

atr_String& atr_String::operator+=(const char* text) {
  append(text, -1, 0, 0x7fffffff);
  return *this;
}

atr_String& atr_String::operator+=(const atr_String& text) {
  Append(text.c_str(), text.Length());
  return *this;
}

bool operator==(const atr_String& a, const char* b) {
  return a.Equals(b, -1);
}

bool operator<(const atr_String& a, const atr_String& b) {
  return a.Compare(b.c_str(), b.Length()) < 0;
}

aio_ostream& operator<<(aio_ostream& os, const atr_String& text) {
  return os.print_text(text.c_str(), text.Length());
}
