#include "utl_PathFinder.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <fstream>
#include <string>

#include "VRKLnuLifecycle.h"
#include "VRKTestChild.h"
#include "VRKTestLibrary.h"
#include "nex_TextException.h"

namespace {

void MakeFile(const std::string& path, mode_t mode) {
  std::ofstream(path) << "x";
  chmod(path.c_str(), mode);
}

std::string Thrown(cow_String (*find)()) {
  try {
    return std::string("found ") + find().c_str();
  } catch (const nex_TextException& error) {
    return cow_String(error.AsString()).c_str();
  }
}

// The environment and the working directory are the process's: the checks run in a child,
// as an unprivileged user, so that a file without read permission can't be read.
TEST(UtlPathFinder, SearchesTheDirectoriesOfAVariableAndFindsTheShells) {
  if (VRKChildRole() == "search") {
    const std::string root = getenv("VRK_ROOT");
    ASSERT_EQ(chdir(root.c_str()), 0);
    if (geteuid() == 0) {
      ASSERT_EQ(setuid(65534), 0);
    }
    int tally = 0;
    VRKLnuBasicUtils_initialize(tally);
    // VRK_PATH is "a::b/:c".
    using F = utl_PathFinder;
    EXPECT_EQ(F::getPath("VRK_PATH", "inB", false, true, true), "b//inB");
    EXPECT_EQ(F::getPath("VRK_PATH", "/inB", false, false, false), "b//inB");
    EXPECT_EQ(F::getPath("VRK_PATH", "both", true, false, false), "a/both");
    EXPECT_EQ(F::getSubDirPath("VRK_PATH", "sub", "deep", true, false, false), "c/sub/deep");
    // The first hit decides, even when it can't be read and a later one can.
    EXPECT_EQ(F::getPath("VRK_PATH", "locked", true, false, false), "");
    EXPECT_EQ(F::getPath("VRK_PATH", "locked", false, false, false), "a/locked");
    EXPECT_EQ(F::getPath("VRK_PATH", "none", false, false, false) +
                  F::getPath("VRK_PATH", "", false, false, false) +
                  F::getPath("VRK_EMPTY", "both", false, false, false) +
                  F::getPath("VRK_UNSET", "both", false, false, false),
              "");

    // rsh in any directory before remsh in any; the relative directories from here.
    EXPECT_EQ(Thrown(remoteShellCommand), "found usr/bsd/rsh");
    ASSERT_EQ(unlink("usr/bsd/rsh"), 0);
    if (access("/usr/bin/rsh", X_OK) != 0) {
      EXPECT_EQ(Thrown(remoteShellCommand), "found usr/net/remsh");
    }
    VRKLnuBasicUtils_finalize(tally);
    VRKChildExit(::testing::Test::HasFailure() ? 1 : 0);
  }
  VRKScratchDir scratch;
  const std::string root = scratch.Path();
  chmod(root.c_str(), 0777);
  for (const char* dir : {"a", "b", "c", "c/sub", "usr", "usr/ucb", "usr/net", "usr/bsd"}) {
    mkdir((root + "/" + dir).c_str(), 0777);
    chmod((root + "/" + dir).c_str(), 0777);
  }
  // usr/ucb/rsh isn't executable; a/locked can't be read.
  const std::pair<const char*, mode_t> files[] = {
      {"b/inB", 0644},       {"a/both", 0644},        {"c/both", 0644},
      {"c/sub/deep", 0644},  {"c/locked", 0644},      {"a/locked", 0},
      {"usr/ucb/rsh", 0644}, {"usr/net/remsh", 0755}, {"usr/bsd/rsh", 0755}};
  for (const auto& [file, mode] : files)
    MakeFile(root + "/" + file, mode);
  VRKChild child("search");
  child.env = {{"VRK_ROOT", root}, {"VRK_PATH", "a::b/:c"}, {"VRK_EMPTY", ""}};
  child.unset = {"VRK_UNSET"};
  const VRKChildResult result = child.Run();
  EXPECT_EQ(result.exitCode, 0) << result.out << result.err;
}

}  // namespace
