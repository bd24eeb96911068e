// Test helpers: a fixture that brings the whole library up for each test and down after
// it, and a scratch directory that is removed with everything in it.
#ifndef VRKTESTLIBRARY_H
#define VRKTESTLIBRARY_H

#include <gtest/gtest.h>

#include <string>

// Base of test fixtures that need the library up.
class VRKLibraryTest : public ::testing::Test {
 protected:
  void SetUp() override;
  void TearDown() override;

  int m_Tally = 0;
};

// A fresh directory under the system's temporary directory, removed at destruction.
class VRKScratchDir {
 public:
  VRKScratchDir();
  ~VRKScratchDir();
  VRKScratchDir(const VRKScratchDir&) = delete;
  VRKScratchDir& operator=(const VRKScratchDir&) = delete;

  const std::string& Path() const { return m_Path; }
  // The path of `name` inside the directory.
  std::string File(const std::string& name) const { return m_Path + "/" + name; }

 private:
  std::string m_Path;
};

// The whole content of a file, empty when it can't be read.
std::string VRKReadFile(const std::string& path);

#endif  // VRKTESTLIBRARY_H
