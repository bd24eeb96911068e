// The value of the command line's `error` option, read as a dictionary of debug levels, and
// the option read as a number: any shape of text.
#include <cstdint>
#include <string>

#include "VRKFuzz.h"
#include "utl_CommandLine.h"

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  VRKFuzzStartLibrary();
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  std::string value(reinterpret_cast<const char*>(data), size);
  char* argv[] = {const_cast<char*>("prog"), const_cast<char*>("-error"), &value[0], nullptr};
  utl_CommandLineSetup(3, argv);
  const utl_CommandLine& line = utl_CommandLine::Instance();
  if (line.IsMember("error")) {
    const cow_Map<cow_String, cow_String> levels = line.ConstGetValueAsDictionary("error");
    cow_ConstMapIterator<cow_String, cow_String> it(levels);
    for (it.First(); !it.IsDone(); it.Next()) {
      const cow_String& key = it.CurrentKey();
      VRKFuzzCheck(key.Find(",") == key.Length() && key.Find("=") == key.Length());
    }
    try {
      line.ConstGetValueAsInt("error", 0);
      line.ConstGetValueAsSizeT("error", 0);
    } catch (const utl_CmdLineArgFormatException&) {
    }
  }
  utl_CommandLine::Finalize();
  return 0;
}
