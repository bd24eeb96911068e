// How the lower layers raise errors of the library above them. The library installs a
// factory at start; a lower layer that meets an error asks the model to raise it, and the
// factory throws the library's exception. With no factory installed the model throws
// omi_FatalError with the same information.
//
//   VRKBasExceptionModel::setBehavior(&myFactory);  // kept valid by the caller until replaced
//   VRKBasExceptionModel::RaisePatternError(4, "missing )");
#ifndef VRKBASEXCEPTIONMODEL_H
#define VRKBASEXCEPTIONMODEL_H

#include "VRKBasExport.h"
#include "VRKBasModel.h"
#include "mem_Alloc.h"

class VRKLNU_EXPORT VRKBasExceptionFactory : public mem_AllocationOperators {
 public:
  virtual ~VRKBasExceptionFactory();
  // A regular expression that doesn't compile: the offset of the fault and its text.
  virtual void RaisePatternError(int offset, const char* text) = 0;
  // A regular expression that failed while matching, with its error code.
  virtual void RaiseExecError(int code) = 0;
};

template <>
VRKLNU_EXPORT std::atomic<VRKBasExceptionFactory*> VRKBasModel<VRKBasExceptionFactory>::s_Factory;

class VRKLNU_EXPORT VRKBasExceptionModel : public VRKBasModel<VRKBasExceptionFactory> {
 public:
  // Raise through the factory, or as omi_FatalError when there is none. Never return.
  [[noreturn]] static void RaisePatternError(int offset, const char* text);
  [[noreturn]] static void RaiseExecError(int code);
};

#endif  // VRKBASEXCEPTIONMODEL_H
