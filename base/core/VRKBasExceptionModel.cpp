#include "VRKBasExceptionModel.h"

#include <atomic>
#include <cerrno>
#include <cstdio>

#include "omi_FatalError.h"

namespace {
std::atomic<VRKBasExceptionFactory*> factory{nullptr};
}

VRKBasExceptionFactory::~VRKBasExceptionFactory() = default;

bool VRKBasExceptionModel::setBehavior(VRKBasExceptionFactory* newFactory) {
  factory.store(newFactory);
  return true;
}

VRKBasExceptionFactory* VRKBasExceptionModel::getBehavior() {
  return factory.load();
}

void VRKBasExceptionModel::RaisePatternError(int offset, const char* text) {
  if (VRKBasExceptionFactory* f = factory.load()) f->RaisePatternError(offset, text);
  char message[512];
  std::snprintf(message, sizeof message, "regular expression error at offset %d: %s", offset,
                text ? text : "");
  throw omi_FatalError(message, EINVAL);
}

void VRKBasExceptionModel::RaiseExecError(int code) {
  if (VRKBasExceptionFactory* f = factory.load()) f->RaiseExecError(code);
  char message[64];
  std::snprintf(message, sizeof message, "regular expression exec error: %d", code);
  throw omi_FatalError(message, EINVAL);
}
