#include "utl_JobFileName.h"

#include <gtest/gtest.h>
#include <stdlib.h>
#include <unistd.h>

#include <string>

#include "VRKLnuLifecycle.h"
#include "VRKTestChild.h"
#include "nex_TextException.h"
#include "utl_CommandLine.h"

namespace {

// The text of what the call gives or raises.
template <class Call>
std::string Outcome(Call call) {
  try {
    return call().c_str();
  } catch (const nex_Exception& error) {
    return "raised: " + std::string(cow_String(error.AsString()).c_str());
  }
}

// The environment and the command line are the process's: the checks run in a child.
TEST(UtlJobFileName, NamesComeFromTheEnvironmentAndTheCommandLine) {
  if (VRKChildRole() == "job") {
    int tally = 0;
    VRKLnuBasicUtils_initialize(tally);
    char cwd[4096];
    ASSERT_NE(getcwd(cwd, sizeof cwd), nullptr);
    const std::string here = cwd;
    auto job = [] { return utl_JobFileName(".log"); };
    EXPECT_EQ(Outcome(job), "raised: Command line argument job is required.");
    setenv("SUPAUXNAME", "aux", 1);
    EXPECT_EQ(Outcome(job), "raised: Command line argument outdir is required.");
    char* argv[] = {const_cast<char*>("prog"),    const_cast<char*>("-job"),
                    const_cast<char*>("run1"),    const_cast<char*>("-outdir"),
                    const_cast<char*>("out/./x"), nullptr};
    utl_CommandLineSetup(5, argv);
    EXPECT_EQ(Outcome(job), here + "/out/x/aux.log");
    setenv("SUPAUXNAME", " aux", 1);  // a leading blank: not a name
    EXPECT_EQ(Outcome(job), here + "/out/x/run1.log");

    EXPECT_EQ(Outcome(utl_getDriverName), "raised: Failed to determine driver name");
    const std::pair<const char*, const char*> drivers[] = {{"C:\\apps\\bin\\launcher.exe", "lnq"},
                                                           {"/opt/suite/bin/solver", "solver"},
                                                           {"pre.1.sh", "pre.1"}};
    for (const auto& [command, name] : drivers) {
      setenv("LUN_COMMAND", command, 1);
      EXPECT_EQ(Outcome(utl_getDriverName), name) << command;
    }
    VRKLnuBasicUtils_finalize(tally);
    VRKChildExit(::testing::Test::HasFailure() ? 1 : 0);
  }
  VRKChild child("job");
  child.unset = {"SUPAUXNAME", "LUN_COMMAND"};
  const VRKChildResult result = child.Run();
  EXPECT_EQ(result.exitCode, 0) << result.out << result.err;
}

}  // namespace
