#include "VRKBasAtiThreadingModel.h"

#include <cstring>

namespace {
constexpr size_t kNameBlock = 30;
}

template <>
std::atomic<VRKBasAtiThreadFactory*> VRKBasModel<VRKBasAtiThreadFactory>::s_Factory{nullptr};

template class VRKBasAtiAtomicTemplate<int>;
template class VRKBasAtiAtomicTemplate<double>;
template class VRKBasAtiAtomicTemplate<unsigned long long>;

VRKBasAtiMutex::~VRKBasAtiMutex() = default;
VRKBasAtiCondVar::~VRKBasAtiCondVar() = default;
VRKBasAtiBarrier::~VRKBasAtiBarrier() = default;
VRKBasAtiThreadTask::~VRKBasAtiThreadTask() = default;
VRKBasAtiThreadFactory::~VRKBasAtiThreadFactory() = default;

char* VRKBasAtiThreadFactory::NameBlock(const char* name) {
  char* block = static_cast<char*>(mem_Calloc(kNameBlock, 1));
  if (block) std::strncpy(block, name, kNameBlock - 1);
  return block;
}

char* VRKBasAtiThreadFactory::AsString() {
  return NameBlock("SINGLE_THREADED");
}

void VRKBasAtiThreadFactory::UpgradeAllIssuedPrimitives() {}
