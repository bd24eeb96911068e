#include "internal/bio_ExternalForm.h"

#include <atomic>

namespace {

// The machine's order (-1) until a test sets one. Relaxed: the value is all that is shared.
std::atomic<int> hostOrder{-1};

}  // namespace

bool bio_externalFormSwaps() {
  const int order = hostOrder.load(std::memory_order_relaxed);
  return (order < 0 ? omi_Swapper::HostEndian() : order) == omi_Swapper::BigEndian;
}

void bio_setExternalHostOrder(omi_Swapper::EndianType order) {
  hostOrder.store(order, std::memory_order_relaxed);
}
