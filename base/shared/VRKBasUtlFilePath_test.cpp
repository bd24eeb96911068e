#include "VRKBasUtlFilePath.h"

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

#include <climits>
#include <fstream>
#include <string>

#include "VRKTestLibrary.h"

namespace {

std::string Cwd() {
  char buffer[PATH_MAX];
  return ::getcwd(buffer, sizeof buffer);
}

VRKBasUtlFilePath Path(const char* directory, const char* file) {
  return VRKBasUtlFilePath(cow_String(directory), cow_String(file));
}

TEST(FilePathTest, JoinsAndSplits) {
  EXPECT_EQ(Path("out", "run.log").PathName(), "out/run.log");
  EXPECT_EQ(Path("out/", "run.log").PathName(), "out/run.log");
  EXPECT_EQ(Path("", "run.log").PathName(), "run.log");
  EXPECT_EQ(Path("dir", "").PathName(), "dir");
  EXPECT_EQ(VRKBasUtlFilePath().PathName(), "");

  const VRKBasUtlFilePath split(cow_String("/data/job/model.dat"));
  EXPECT_EQ(split.FileName(), "model.dat");
  EXPECT_EQ(split.PathName(), "/data/job/model.dat");
  EXPECT_EQ(VRKBasUtlFilePath(cow_String("/top")).PathName(), "/top");
  EXPECT_EQ(VRKBasUtlFilePath(cow_String("plain")).FileName(), "plain");
}

TEST(FilePathTest, AbsoluteFormsResolveTheText) {
  const std::string cwd = Cwd();
  EXPECT_EQ(Path("a/./b/../c", "f").AbsolutePathName(), (cwd + "/a/c/f").c_str());
  EXPECT_EQ(Path("/x//y/..", "z").AbsolutePathName(), "/x/z");
  EXPECT_EQ(Path("/..", "").AbsolutePathName(), "/");
  EXPECT_EQ(Path("", "f").AbsoluteDirectoryPath(), cwd.c_str());
  EXPECT_EQ(Path("/a/b/", "f").AbsoluteDirectoryPath(), "/a/b");
}

TEST(FilePathTest, AsksTheSystemAboutTheFile) {
  VRKScratchDir dir;
  const cow_String directory(dir.Path().c_str());
  std::ofstream(dir.File("data.txt")) << "x";
  std::ofstream(dir.File("tool.sh")) << "#!/bin/sh\n";
  ::chmod(dir.File("tool.sh").c_str(), 0700);
  ::chmod(dir.File("data.txt").c_str(), 0400);

  const VRKBasUtlFilePath data(directory, cow_String("data.txt"));
  const VRKBasUtlFilePath tool(directory, cow_String("tool.sh"));
  const VRKBasUtlFilePath missing(directory, cow_String("missing"));
  EXPECT_TRUE(data.Exists());
  EXPECT_FALSE(data.IsDir());
  EXPECT_TRUE(data.IsReadable());
  EXPECT_FALSE(data.IsExecutable());
  EXPECT_TRUE(tool.IsExecutable());
  EXPECT_TRUE(VRKBasUtlFilePath(directory, cow_String("")).IsDir());
  EXPECT_FALSE(missing.Exists());
  EXPECT_FALSE(missing.IsReadable());
  EXPECT_FALSE(missing.IsWriteable());
  if (::geteuid() != 0) {
    EXPECT_FALSE(data.IsWriteable());  // root may write anything
  }
}

TEST(FilePathTest, PortableFormUsesForwardSlashes) {
  VRKBasUtlFilePath path(cow_String(".\\results\\\\run1/./x"), cow_String("a\\b.txt"));
  EXPECT_EQ(path.Portable().PathName(), "results/run1/x/a/b.txt");
}

}  // namespace
