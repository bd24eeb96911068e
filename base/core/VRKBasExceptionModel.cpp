#include "VRKBasExceptionModel.h"

#include <cerrno>
#include <cstdio>

#include "omi_FatalError.h"

template <>
std::atomic<VRKBasExceptionFactory*> VRKBasModel<VRKBasExceptionFactory>::s_Factory{nullptr};

VRKBasExceptionFactory::~VRKBasExceptionFactory() = default;

void VRKBasExceptionModel::RaisePatternError(int offset, const char* text) {
  if (VRKBasExceptionFactory* f = getBehavior()) f->RaisePatternError(offset, text);
  char message[512];
  std::snprintf(message, sizeof message, "regular expression error at offset %d: %s", offset,
                text ? text : "");
  throw omi_FatalError(message, EINVAL);
}

void VRKBasExceptionModel::RaiseExecError(int code) {
  if (VRKBasExceptionFactory* f = getBehavior()) f->RaiseExecError(code);
  char message[64];
  std::snprintf(message, sizeof message, "regular expression exec error: %d", code);
  throw omi_FatalError(message, EINVAL);
}
