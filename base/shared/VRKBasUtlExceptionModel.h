// How the shared layer raises system errors of the library above it: through a factory
// that the library installs at start, or as omi_FatalError while there is none.
#ifndef VRKBASUTLEXCEPTIONMODEL_H
#define VRKBASUTLEXCEPTIONMODEL_H

#include "VRKBasExport.h"
#include "VRKBasModel.h"
#include "cow_SystemErrorCode.h"
#include "mem_Alloc.h"

class VRKLNU_EXPORT VRKBasUtlExceptionFactory : public mem_AllocationOperators {
 public:
  virtual ~VRKBasUtlExceptionFactory();
  virtual void RaiseSystemError(cow_SystemErrorCode error) = 0;
};

template <>
VRKLNU_EXPORT std::atomic<VRKBasUtlExceptionFactory*>
    VRKBasModel<VRKBasUtlExceptionFactory>::s_Factory;

class VRKLNU_EXPORT VRKBasUtlExceptionModel : public VRKBasModel<VRKBasUtlExceptionFactory> {
 public:
  // Raises through the factory, or as omi_FatalError with the system's text and number.
  [[noreturn]] static void RaiseSystemError(const cow_SystemErrorCode& error);
};

#endif  // VRKBASUTLEXCEPTIONMODEL_H
