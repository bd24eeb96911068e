#include "cow_String.h"

#include <cstring>

#include "aio_ostream.h"

namespace {

cow_String Join(const cow_String& a, const char* b, int length) {
  cow_String result(a.Length() + length, cow_String::PreSize);
  result += a;
  result.append(b, length, 0, length);
  return result;
}

}  // namespace

cow_String operator+(const cow_String& a, const cow_String& b) {
  return Join(a, b.c_str(), b.Length());
}

cow_String operator+(const cow_String& a, const char* b) {
  return Join(a, b, b ? static_cast<int>(std::strlen(b)) : 0);
}

aio_ostream& operator<<(aio_ostream& os, const cow_String& text) {
  return os.print_text(text.c_str(), text.Length());
}
