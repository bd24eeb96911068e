#include "strnatcmp.h"

#include <atomic>

namespace {

std::atomic<bool> naturalOrder{false};

bool IsDigit(char c) {
  return c >= '0' && c <= '9';
}

int Sign(int value) {
  return (value > 0) - (value < 0);
}

// Compares the digit runs at `a` and `b` by value and moves both past them. `zeros` keeps
// the first difference in leading zeros, which decides only between equal texts.
int CompareNumbers(const char*& a, const char*& b, int& zeros) {
  const char* startA = a;
  const char* startB = b;
  while (*a == '0')
    ++a;
  while (*b == '0')
    ++b;
  if (zeros == 0) zeros = Sign(static_cast<int>((b - startB) - (a - startA)));
  int firstDifference = 0;
  for (;; ++a, ++b) {
    const bool digitA = IsDigit(*a);
    const bool digitB = IsDigit(*b);
    if (!digitA || !digitB) return digitA ? 1 : digitB ? -1 : firstDifference;
    if (firstDifference == 0) firstDifference = Sign(*a - *b);
  }
}

}  // namespace

int strnatcmp(const char* a, const char* b) {
  if (a == nullptr) a = "";
  if (b == nullptr) b = "";
  int zeros = 0;
  for (;;) {
    if (IsDigit(*a) && IsDigit(*b)) {
      if (const int order = CompareNumbers(a, b, zeros)) return order;
      continue;
    }
    const unsigned char ca = static_cast<unsigned char>(*a);
    const unsigned char cb = static_cast<unsigned char>(*b);
    if (ca != cb) return ca < cb ? -1 : 1;
    if (ca == '\0') return zeros;
    ++a;
    ++b;
  }
}

bool atr_getNaturalOrder() {
  return naturalOrder.load(std::memory_order_relaxed);
}

void atr_setNaturalOrder(bool natural) {
  naturalOrder.store(natural, std::memory_order_relaxed);
}
