#include "pnt_NumberText.h"

#include <cstring>

void pnt_NumberText::FixReal(char* text, int width) {
  const size_t length = std::strlen(text);
  char* exponent = std::strchr(text, 'e');
  if (exponent == nullptr && std::strchr(text, '.') == nullptr) {
    text[length] = '.';
    text[length + 1] = '\0';
    if (text[0] == ' ') std::memmove(text, text + 1, length + 1);
    return;
  }
  if (exponent == nullptr || (exponent[1] != '+' && exponent[1] != '-')) return;
  char* digits = exponent + 2;  // behind the exponent's sign
  if (digits[0] != '0' || std::strspn(digits, "0123456789") != 3) return;
  std::memmove(digits, digits + 1, std::strlen(digits));
  if (width != 0) {
    std::memmove(text + 1, text, length);
    text[0] = ' ';
  }
}

void pnt_NumberText::FixReal(int width) {
  FixReal(m_Text, width);
  m_Length = static_cast<int>(std::strlen(m_Text));
}
