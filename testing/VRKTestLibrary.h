// Test helpers: fixtures that bring the whole library up for each test and down after it,
// or check that a test gives back all its memory, and a scratch directory that is removed
// with everything in it.
#ifndef VRKTESTLIBRARY_H
#define VRKTESTLIBRARY_H

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

// Base of test fixtures that need the library up.
class VRKLibraryTest : public ::testing::Test {
 protected:
  void SetUp() override;
  void TearDown() override;

  int m_Tally = 0;
};

// Base of test fixtures whose objects must give back all their memory: each test checks at
// its end that the memory layer holds what it held at the start.
class VRKFootprintTest : public ::testing::Test {
 protected:
  void SetUp() override;
  void TearDown() override;

  unsigned long m_Footprint = 0;
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

// Waits up to ten seconds for the condition, looking every millisecond; whether it held.
bool VRKEventually(const std::function<bool()>& condition);

// The bytes as upper-case hex digits, two a byte.
std::string VRKHex(const std::vector<unsigned char>& bytes);

// The whole content of a file, empty when it can't be read.
std::string VRKReadFile(const std::string& path);

// The text of the failure that `call` raises, which must be of the library's exception class
// Failure; a test failure and "" when nothing is raised.
template <class Failure, class Call>
std::string VRKFailureText(Call call) {
  try {
    call();
  } catch (const Failure& failure) {
    return failure.AsString().c_str();
  }
  ADD_FAILURE() << "nothing was raised";
  return "";
}

// The lines of a text, without their newlines.
std::vector<std::string> VRKLines(const std::string& text);

// Sets the library's command line to "prog" followed by `arguments`, as a program's main does
// with utl_CommandLineSetup.
void VRKSetCommandLine(std::vector<std::string> arguments);

// The descriptors open in this process, in ascending order, as "0 1 2 ..." (the one used to
// list them left out).
std::string VRKOpenDescriptors();

#endif  // VRKTESTLIBRARY_H
