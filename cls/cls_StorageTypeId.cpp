#include "cls_StorageTypeId.h"

#include <atomic>

namespace {
std::atomic<int> lastId{0};
}

int cls_StorageTypeId::AllocateId() {
  return lastId.fetch_add(1, std::memory_order_relaxed) + 1;
}
