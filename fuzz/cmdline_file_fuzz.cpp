// The command line read from an arguments file ("-clargsfile"): lines of any length, NUL
// bytes, no final newline, too many lines. The line that results must keep the file's rules.
#include <stdlib.h>
#include <unistd.h>

#include <cstdint>
#include <cstdio>
#include <string>

#include "VRKFuzz.h"
#include "utl_CommandLine.h"

namespace {

std::string path;

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  VRKFuzzStartLibrary();
  char name[] = "/tmp/cmdline_file_fuzz_XXXXXX";
  const int fd = mkstemp(name);
  VRKFuzzCheck(fd >= 0);
  close(fd);
  path = name;
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  FILE* file = std::fopen(path.c_str(), "wb");
  VRKFuzzCheck(file != nullptr && std::fwrite(data, 1, size, file) == size);
  std::fclose(file);
  char* argv[] = {const_cast<char*>("prog"), const_cast<char*>("-clargsfile"), &path[0], nullptr};
  utl_CommandLineSetup(3, argv);
  const utl_CommandLine& line = utl_CommandLine::Instance();
  VRKFuzzCheck(line.Size() >= 1 && line.Size() <= 1024);
  VRKFuzzCheck(line.ConstGet(0) == "prog");
  for (int i = 1; i < line.Size(); ++i) {
    const cow_String argument = line.ConstGet(i);
    VRKFuzzCheck(argument.Length() <= 1023 && argument.Find("\n") == argument.Length());
  }
  if (line.IsMember("error")) line.ConstGetValueAsDictionary("error");
  utl_CommandLine::Finalize();
  return 0;
}
