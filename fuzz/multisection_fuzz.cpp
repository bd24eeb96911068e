// Feeds random bytes to the multisection file as a file: the directory is loaded, every
// section with one of a few common names is read, and read again after the file lost its
// second half. Failures of the library are expected; crashes, overruns and leaks are not.
#include <sys/mman.h>
#include <unistd.h>

#include <cstdint>
#include <string>
#include <vector>

#include "VRKLnuLifecycle.h"
#include "nex_Exception.h"
#include "utl_MultisectionFile.h"

namespace {

const char* const kNames[] = {"", "a", "b", "c", "data"};

void ReadSections(utl_MultisectionFile& file) {
  for (const char* name : kNames) {
    if (!file.hasSection(name)) continue;
    std::vector<char> body(static_cast<size_t>(file.getSectionLength(name)) + 1);
    try {
      file.getSectionData(name, body.data());
    } catch (const nex_Exception&) {
    }
  }
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  static int tally = 0;
  VRKLnuBasicUtils_initialize(tally);
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const int fd = memfd_create("multisection", MFD_CLOEXEC);
  if (fd < 0 || write(fd, data, size) != static_cast<ssize_t>(size)) abort();
  const std::string path = "/proc/self/fd/" + std::to_string(fd);
  try {
    utl_MultisectionFile file(path.c_str(), utl_AccessRead);
    ReadSections(file);
    if (ftruncate(fd, static_cast<off_t>(size / 2)) != 0) abort();
    ReadSections(file);
  } catch (const nex_Exception&) {
  }
  close(fd);
  return 0;
}
