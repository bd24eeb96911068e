#include "uti_PreCheckFile.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <string>

#include "VRKTestChild.h"
#include "VRKTestLibrary.h"

namespace {

// The name that the check returns, or "!" and the report of its exception.
std::string Checked(const std::string& name, uti_AccessModeEnm mode, const char* extension = "") {
  try {
    return uti_PreCheckFile(name.c_str(), mode, extension).c_str();
  } catch (const uti_PreCheckFileException& error) {
    return std::string("!") + cow_String(error.JournalMessage()).c_str();
  }
}

void MakeFile(const std::string& path, mode_t mode) {
  const int fd = ::open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC, mode);
  ASSERT_GE(fd, 0) << path;
  ::close(fd);
  ::chmod(path.c_str(), mode);
}

class PreCheckFileTest : public VRKLibraryTest {};

TEST_F(PreCheckFileTest, NamesAreCheckedInOrderAndTheResultGetsTheExtension) {
  VRKScratchDir dir;
  const std::string d = dir.Path();
  MakeFile(d + "/in.dat", 0644);
  ::mkdir((d + "/sub").c_str(), 0755);
  const std::string tooLong(256, 'n');
  const struct {
    std::string name;
    uti_AccessModeEnm mode;
    const char* extension;
    std::string expected;
  } cases[] = {
      {"", uti_AccessRead, ".dat", "!Empty filename"},
      {d + "/sub", uti_AccessRead, "", "!" + d + "/sub: Is a directory"},
      {d + "/sub/", uti_AccessWrite, "", "!" + d + "/sub: Is a directory"},
      {d + "/sub/..", uti_AccessReadWrite, "", "!" + d + ": Is a directory"},
      {d + "/in", uti_AccessRead, ".dat", d + "/in.dat"},
      {d + "/sub/../in", uti_AccessReadWrite, ".dat", d + "/in.dat"},
      {d + "/in.dat", uti_AccessWrite, ".inp", d + "/in.dat"},
      {d + "/no/x.dat", uti_AccessRead, "", "!" + d + "/no/x.dat: Directory not found"},
      {d + "/in.dat/x.dat", uti_AccessWrite, "", "!" + d + "/in.dat/x.dat: Directory not found"},
      {d + "/none.dat", uti_AccessRead, "", "!" + d + "/none.dat: File not found"},
      {d + "/none.dat", uti_AccessReadWrite, "", "!" + d + "/none.dat: File not found"},
      {d + "/new.dat", uti_AccessWrite, "", d + "/new.dat"},
      {d + "/" + tooLong, uti_AccessWrite, "", "!" + d + "/" + tooLong + ": Invalid filename"},
      {d + "/" + tooLong, uti_AccessRead, "", "!" + d + "/" + tooLong + ": File not found"},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(Checked(c.name, c.mode, c.extension), c.expected) << c.name << " mode " << c.mode;
  }
  EXPECT_NE(::access((d + "/new.dat").c_str(), F_OK), 0);  // checked, not created
}

TEST_F(PreCheckFileTest, AccessRightsAreCheckedAsAnOrdinaryUser) {
  if (VRKChildRole() == "unprivileged") {
    // The superuser reads and writes anything: the checks run as nobody.
    if (::geteuid() == 0 && (::setgid(65534) != 0 || ::setuid(65534) != 0)) VRKChildExit(2);
    const std::string d = VRKChildArgs().at(0);
    EXPECT_EQ(Checked(d + "/wo.dat", uti_AccessRead), "!" + d + "/wo.dat: Permission denied");
    EXPECT_EQ(Checked(d + "/wo.dat", uti_AccessReadWrite), "!" + d + "/wo.dat: Permission denied");
    EXPECT_EQ(Checked(d + "/wo.dat", uti_AccessWrite), d + "/wo.dat");
    EXPECT_EQ(Checked(d + "/ro.dat", uti_AccessWrite), "!" + d + "/ro.dat: Permission denied");
    EXPECT_EQ(Checked(d + "/ro.dat", uti_AccessRead), d + "/ro.dat");
    EXPECT_EQ(Checked(d + "/locked/new", uti_AccessWrite, ".dat"),
              "!" + d + "/locked: Directory permission denied");
    try {
      uti_PreCheckFile((d + "/ro.dat").c_str(), uti_AccessReadWrite, "");
    } catch (const uti_PreCheckFileException& error) {
      EXPECT_EQ(error.Reason(), uti_PreCheckFileException::WritePermissionDenied);
    }
    VRKChildExit(::testing::Test::HasFailure() ? 1 : 0);
  }
  VRKScratchDir dir;
  const std::string d = dir.Path();
  ::chmod(d.c_str(), 0755);
  MakeFile(d + "/wo.dat", 0222);
  MakeFile(d + "/ro.dat", 0444);
  ::mkdir((d + "/locked").c_str(), 0555);
  VRKChild child("unprivileged");
  child.args = {d};
  const VRKChildResult result = child.Run();
  EXPECT_EQ(result.exitCode, 0) << result.out << result.err;
}

TEST_F(PreCheckFileTest, AnUnknownReasonHasItsOwnText) {
  const uti_PreCheckFileException error(static_cast<uti_PreCheckFileException::ReasonEnm>(9), "x");
  EXPECT_EQ(error.AsString(), "PreCheckFile: Unknown file precheck error");
}

}  // namespace
