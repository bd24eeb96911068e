#include "utl_DirObject.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <fstream>
#include <string>
#include <vector>

#include "VRKTestLibrary.h"

namespace {

using DirObjectTest = VRKLibraryTest;

// The file names of the paths, sorted.
std::vector<std::string> Names(const cow_List<VRKBasUtlFilePath>& paths) {
  std::vector<std::string> names;
  for (int i = 0; i < paths.Count(); ++i)
    names.push_back(paths.ConstGet(i).FileName().c_str());
  std::sort(names.begin(), names.end());
  return names;
}

using V = std::vector<std::string>;

TEST_F(DirObjectTest, ListsFilesAndDirectoriesAndSelectsByName) {
  VRKScratchDir scratch;
  for (const char* file : {"abcd", "x.log", "y.LOG", "noext"})
    std::ofstream(scratch.File(file)) << "x";
  for (const char* dir : {"sub", "abc_dir"})
    mkdir(scratch.File(dir).c_str(), 0755);
  ASSERT_EQ(symlink("sub", scratch.File("link").c_str()), 0);

  const utl_DirObject dir(VRKBasUtlFilePath(cow_String(scratch.Path().c_str()), cow_String()));
  EXPECT_EQ(Names(dir.GetAllFileNames()), (V{"abcd", "noext", "x.log", "y.LOG"}));
  EXPECT_EQ(Names(dir.GetAllDirNames()), (V{".", "..", "abc_dir", "link", "sub"}));
  const cow_List<VRKBasUtlFilePath> all = dir.GetAllEntries();
  ASSERT_EQ(all.Count(), 9);
  for (int i = 0; i < all.Count(); ++i) {
    EXPECT_EQ(i < 5, all.ConstGet(i).IsDir()) << "directories first";
    EXPECT_EQ(all.ConstGet(i).PathName(),
              cow_String(scratch.File("").c_str()) + all.ConstGet(i).FileName());
  }

  EXPECT_EQ(Names(dir.PrefixMatchFilenames("bc", false)), V{"abcd"});  // anywhere in the name
  EXPECT_EQ(Names(dir.PrefixMatchFilenames("BC", true)), V{"abcd"});
  EXPECT_EQ(Names(dir.PrefixMatchDirNames("bc")), V{"abc_dir"});
  EXPECT_EQ(Names(dir.PrefixMatchAllEntries("b")), (V{"abc_dir", "abcd", "sub"}));
  EXPECT_EQ(Names(dir.FindFileNamesWithExtension(".log")), V{"x.log"});
  EXPECT_EQ(Names(dir.FindFileNamesWithExtension(".LOG")), V{"y.LOG"});
  EXPECT_EQ(Names(dir.FindFileNamesWithExtension("")), (V{"abcd", "noext"}));

  const utl_DirObject missing(VRKBasUtlFilePath(cow_String(scratch.File("none").c_str())));
  EXPECT_EQ(missing.GetAllEntries().Count(), 0);
}

}  // namespace
