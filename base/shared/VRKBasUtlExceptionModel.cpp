#include "VRKBasUtlExceptionModel.h"

#include "omi_FatalError.h"

template <>
std::atomic<VRKBasUtlExceptionFactory*> VRKBasModel<VRKBasUtlExceptionFactory>::s_Factory{nullptr};

VRKBasUtlExceptionFactory::~VRKBasUtlExceptionFactory() = default;

void VRKBasUtlExceptionModel::RaiseSystemError(const cow_SystemErrorCode& error) {
  if (VRKBasUtlExceptionFactory* f = getBehavior()) f->RaiseSystemError(error);
  throw omi_FatalError(error.GetText().c_str(), error.m_CRTErrorCode);
}
