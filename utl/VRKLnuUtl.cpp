#include "VRKLnuUtl.h"

#include "VRKBasCountedPair.h"
#include "VRKBasUtlExceptionModel.h"
#include "utl_CommandLine.h"
#include "utl_ExceptionFactory.h"
#include "utl_IOTracker.h"

namespace {
int useCount = 0;
VRKBasInstalledFactory<VRKBasUtlExceptionModel, utl_ExceptionFactory> factory;
}  // namespace

// Sockets need no start on this system: there is no counterpart of the Winsock start and
// cleanup that the package's start and stop make elsewhere.
void VRKLnuUtl_initialize(int& tally) {
  if (!VRKBasCountedEnter(useCount, tally, "utl")) return;
  factory.Install();
}

void VRKLnuUtl_finalize(int& tally) {
  if (!VRKBasCountedLeave(useCount, tally, "utl")) return;
  utl_CommandLine::Finalize();
  utl_IOTracker_Container::Finalize();
  factory.Remove();
}
