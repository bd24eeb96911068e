#include "VRKLnuUtl.h"

#include "VRKBasCountedPair.h"
#include "VRKBasUtlExceptionModel.h"
#include "utl_CommandLine.h"
#include "utl_ExceptionFactory.h"

namespace {
int useCount = 0;
// The factory this package's start installed; its stop deletes this one and no other.
utl_ExceptionFactory* installedFactory = nullptr;
}  // namespace

// Sockets need no start on this system: there is no counterpart of the Winsock start and
// cleanup that the package's start and stop make elsewhere.
void VRKLnuUtl_initialize(int& tally) {
  if (!VRKBasCountedEnter(useCount, tally, "utl")) return;
  installedFactory = new utl_ExceptionFactory;
  VRKBasUtlExceptionModel::setBehavior(installedFactory);
}

void VRKLnuUtl_finalize(int& tally) {
  if (!VRKBasCountedLeave(useCount, tally, "utl")) return;
  utl_CommandLine::Finalize();
  // The i/o tracking container's singleton goes here, after the command line's.
  VRKBasUtlExceptionModel::setBehavior(nullptr);
  delete installedFactory;
  installedFactory = nullptr;
}
