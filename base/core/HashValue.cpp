#include "HashValue.h"

#include <cstdint>

namespace {

// Fibonacci hashing: the high bits of the product are the well-mixed ones.
unsigned Spread(uint64_t key, unsigned buckets) {
  if (buckets == 0) return 0;
  const uint64_t mixed = (key ^ key >> 29) * 0x9E3779B97F4A7C15ull;
  return static_cast<unsigned>((mixed >> 32) % buckets);
}

}  // namespace

unsigned HashValue(const unsigned& key, unsigned buckets) {
  return Spread(key, buckets);
}

unsigned HashValue(void* const& key, unsigned buckets) {
  return Spread(reinterpret_cast<uintptr_t>(key), buckets);
}
