// Queries of the shared layer on the system, and its value records.
#include <gtest/gtest.h>

#include <sys/utsname.h>

#include <cerrno>
#include <cstring>
#include <fstream>

#include "VRKBasUtlNumFormat.h"
#include "VRKBasUtlPlatform.h"
#include "VRKBasUtlStat.h"
#include "VRKTestLibrary.h"
#include "cow_SystemErrorCode.h"
#include "omi_Timer.h"

namespace {

TEST(StatTest, DescribesFilesDirectoriesAndAbsence) {
  VRKScratchDir dir;
  std::ofstream(dir.File("five.txt")) << "12345";
  const VRKBasUtlStat file(cow_String(dir.File("five.txt").c_str()));
  EXPECT_TRUE(file.Exists());
  EXPECT_TRUE(file.IsFile());
  EXPECT_FALSE(file.IsDir());
  EXPECT_EQ(file.Size(), 5);
  EXPECT_NEAR(file.ModificationTime(), omi_gettimestamp(), 60.0);
  EXPECT_TRUE(VRKBasUtlStat(cow_String(dir.Path().c_str())).IsDir());
  const VRKBasUtlStat missing(cow_String(dir.File("none").c_str()));
  EXPECT_FALSE(missing.Exists());
  EXPECT_EQ(missing.Errno(), ENOENT);
}

TEST(NumFormatTest, FormatsByItsFourFields) {
  VRKBasUtlNumFormat general(VRKBasUtlGeneralFormat);
  EXPECT_EQ(general.Format(0.5), "0.5");
  VRKBasUtlNumFormat fixed(VRKBasUtlFixedFormat);
  fixed.m_Width = 10;
  fixed.m_Precision = 3;
  EXPECT_EQ(fixed.Format(3.14159), "     3.142");
  VRKBasUtlNumFormat scientific(VRKBasUtlScientificFormat);
  scientific.m_Precision = 2;
  EXPECT_EQ(scientific.Format(12345.0), "1.23e+04");
  general.m_ShowPoint = 1;
  general.m_Precision = 3;
  EXPECT_EQ(general.Format(2.0), "2.00");
  general.m_Notation = 99;
  EXPECT_EQ(general.Format(2.0), "2.00");
}

TEST(SystemErrorCodeTest, GivesTheSystemsText) {
  EXPECT_EQ(cow_SystemErrorCode(ENOENT).GetText(), "No such file or directory");
  errno = EACCES;
  const cow_SystemErrorCode captured;
  EXPECT_EQ(captured.GetText(), std::strerror(EACCES));
}

TEST(PlatformTest, NamesTheMachineAndCountsItsProcessors) {
  utsname name;
  ASSERT_EQ(::uname(&name), 0);
  const cow_String platform = VRKBasUtlGetPlatform();
  if (std::strcmp(name.machine, "x86_64") == 0) {
    EXPECT_EQ(platform, "linux86_64");
  } else {
    EXPECT_EQ(platform.Find("linux_"), 0);
  }
  EXPECT_GE(utl_getNumberCpusBase(), 1);
  EXPECT_GE(utl_getCpusClockSpeedBase(), 0);
}

}  // namespace
