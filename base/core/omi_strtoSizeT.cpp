#include "omi_strtoSizeT.h"

#include <cctype>
#include <limits>

size_t omi_strtoSizeT(const char* text) {
  if (text == nullptr) return 0;
  while (std::isspace(static_cast<unsigned char>(*text)))
    ++text;
  const size_t max = std::numeric_limits<size_t>::max();
  size_t value = 0;
  for (; *text >= '0' && *text <= '9'; ++text) {
    const size_t digit = *text - '0';
    if (value > (max - digit) / 10) return max;
    value = value * 10 + digit;
  }
  return value;
}
