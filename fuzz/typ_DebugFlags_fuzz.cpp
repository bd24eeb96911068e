// Random text into the debug-flag parser, and the same text as a facility name.
#include <cstddef>
#include <cstdint>
#include <string>

#include "VRKLnuLifecycle.h"
#include "typ_DebugFlags.h"

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  int tally = 0;
  VRKLnuBasicUtils_initialize(tally);  // the facility names; up for the whole run
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string text(reinterpret_cast<const char*>(data), size);
  typ_DebugFlags::ParseDebugFlags(text.c_str());
  typ_DebugFlags::GetDebugFlags(text.c_str());
  return 0;
}
