#include "VRKLnuUtl.h"

#include <gtest/gtest.h>

#include "VRKBasUtlExceptionModel.h"
#include "VRKLnuLifecycle.h"
#include "VRKTestChild.h"
#include "mem_Alloc.h"
#include "utl_CommandLine.h"
#include "utl_ExceptionFactory.h"

namespace {

class ClientFactory : public VRKBasUtlExceptionFactory {
 public:
  void RaiseSystemError(cow_SystemErrorCode) override {}
};

// Runs in a child: the command line is the process's.
TEST(UtlPackage, StopDestroysTheCommandLineAndDeletesOnlyTheFactoryItsStartInstalled) {
  if (VRKChildRole() == "restart") {
    int tally = 0;
    char* argv[] = {const_cast<char*>("prog"), const_cast<char*>("-a"), nullptr};
    unsigned long footprint = 0;
    for (int cycle = 0; cycle < 2; ++cycle) {
      VRKLnuBasicUtils_initialize(tally);
      EXPECT_NE(dynamic_cast<utl_ExceptionFactory*>(VRKBasUtlExceptionModel::getBehavior()),
                nullptr);
      EXPECT_EQ(utl_CommandLine::Instance().Size(), 0);
      utl_CommandLineSetup(2, argv);
      // A client's factory in place of the package's: the stop leaves it installed and
      // doesn't delete it (a delete of this stack object would stop the child).
      ClientFactory client;
      VRKBasUtlExceptionModel::setBehavior(&client);
      VRKLnuBasicUtils_finalize(tally);
      EXPECT_EQ(VRKBasUtlExceptionModel::getBehavior(), &client);
      VRKBasUtlExceptionModel::setBehavior(nullptr);
      // The package's own factory and the line went with the first stop.
      EXPECT_TRUE(cycle == 0 || mem_Footprint() == footprint);
      footprint = mem_Footprint();
    }
    VRKChildExit(::testing::Test::HasFailure() ? 1 : 0);
  }
  const VRKChildResult result = VRKChild("restart").Run();
  EXPECT_EQ(result.exitCode, 0) << result.out << result.err;
}

}  // namespace
