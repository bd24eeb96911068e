#include "VRKTestLibrary.h"

#include <dirent.h>
#include <ftw.h>
#include <stdlib.h>
#include <unistd.h>

#include <chrono>
#include <fstream>
#include <set>
#include <sstream>
#include <thread>

#include "VRKLnuLifecycle.h"
#include "mem_Alloc.h"
#include "utl_CommandLine.h"

void VRKLibraryTest::SetUp() {
  VRKLnuBasicUtils_initialize(m_Tally);
}

void VRKLibraryTest::TearDown() {
  VRKLnuBasicUtils_finalize(m_Tally);
}

void VRKFootprintTest::SetUp() {
  m_Footprint = mem_Footprint();
}

void VRKFootprintTest::TearDown() {
  EXPECT_EQ(mem_Footprint(), m_Footprint) << "memory was not given back";
}

VRKScratchDir::VRKScratchDir() {
  const char* base = getenv("TMPDIR");
  std::string pattern = std::string(base && *base ? base : "/tmp") + "/vrk_test_XXXXXX";
  if (mkdtemp(&pattern[0]) == nullptr) ADD_FAILURE() << "cannot make a scratch directory";
  m_Path = pattern;
}

VRKScratchDir::~VRKScratchDir() {
  nftw(
      m_Path.c_str(),
      [](const char* path, const struct stat*, int, struct FTW*) { return ::remove(path); }, 16,
      FTW_DEPTH | FTW_PHYS);
}

bool VRKEventually(const std::function<bool()>& condition) {
  const auto limit = std::chrono::steady_clock::now() + std::chrono::seconds(10);
  while (!condition()) {
    if (std::chrono::steady_clock::now() > limit) return false;
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
  }
  return true;
}

std::string VRKHex(const std::vector<unsigned char>& bytes) {
  static const char kDigits[] = "0123456789ABCDEF";
  std::string hex;
  for (unsigned char byte : bytes)
    hex += {kDigits[byte >> 4], kDigits[byte & 15]};
  return hex;
}

std::string VRKReadFile(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  std::ostringstream text;
  text << in.rdbuf();
  return text.str();
}

std::vector<std::string> VRKLines(const std::string& text) {
  std::vector<std::string> lines;
  std::istringstream in(text);
  for (std::string line; std::getline(in, line);)
    lines.push_back(line);
  return lines;
}

void VRKSetCommandLine(std::vector<std::string> arguments) {
  std::vector<char*> argv = {const_cast<char*>("prog")};
  for (std::string& argument : arguments)
    argv.push_back(&argument[0]);
  argv.push_back(nullptr);
  utl_CommandLineSetup(static_cast<int>(argv.size()) - 1, argv.data());
}

std::string VRKOpenDescriptors() {
  DIR* listing = opendir("/proc/self/fd");
  if (listing == nullptr) return "?";
  std::set<int> open;
  while (const dirent* entry = readdir(listing)) {
    if (entry->d_name[0] != '.') open.insert(atoi(entry->d_name));
  }
  open.erase(dirfd(listing));
  closedir(listing);
  std::string text;
  for (int fd : open)
    text += (text.empty() ? "" : " ") + std::to_string(fd);
  return text;
}
