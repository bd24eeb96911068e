#include "VRKLnuUtl.h"

#include "VRKBasCountedPair.h"
#include "VRKBasUtlExceptionModel.h"
#include "utl_ExceptionFactory.h"

namespace {
int useCount = 0;
}

// Sockets need no start on this system: there is no counterpart of the Winsock start and
// cleanup that the package's start and stop make elsewhere.
void VRKLnuUtl_initialize(int& tally) {
  if (!VRKBasCountedEnter(useCount, tally, "utl")) return;
  VRKBasUtlExceptionModel::setBehavior(new utl_ExceptionFactory);
}

void VRKLnuUtl_finalize(int& tally) {
  if (!VRKBasCountedLeave(useCount, tally, "utl")) return;
  // The model keeps no ownership: the factory that this package installed goes with it.
  VRKBasUtlExceptionFactory* factory = VRKBasUtlExceptionModel::getBehavior();
  VRKBasUtlExceptionModel::setBehavior(nullptr);
  delete dynamic_cast<utl_ExceptionFactory*>(factory);
}
