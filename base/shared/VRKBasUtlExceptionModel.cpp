#include "VRKBasUtlExceptionModel.h"

#include <atomic>

#include "omi_FatalError.h"

namespace {
std::atomic<VRKBasUtlExceptionFactory*> factory{nullptr};
}

VRKBasUtlExceptionFactory::~VRKBasUtlExceptionFactory() = default;

bool VRKBasUtlExceptionModel::setBehavior(VRKBasUtlExceptionFactory* newFactory) {
  factory.store(newFactory);
  return true;
}

VRKBasUtlExceptionFactory* VRKBasUtlExceptionModel::getBehavior() {
  return factory.load();
}

void VRKBasUtlExceptionModel::RaiseSystemError(const cow_SystemErrorCode& error) {
  if (VRKBasUtlExceptionFactory* f = factory.load()) f->RaiseSystemError(error);
  throw omi_FatalError(error.GetText().c_str(), error.m_CRTErrorCode);
}
