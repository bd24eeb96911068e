// Command lines of any bytes, read by uti_Spawn::Parser and by uti_Redirection: each is read
// or refused with nex_Exception, and no text that is read holds a zero byte.
#include <cstdint>
#include <cstring>

#include "VRKFuzz.h"
#include "nex_Exception.h"
#include "uti_Spawn.h"

namespace {

void CheckText(const cow_String& text) {
  VRKFuzzCheck(std::strlen(text.c_str()) == static_cast<size_t>(text.Length()));
}

void CheckParsed(uti_Spawn::Parser& parser) {
  CheckText(parser.Command());
  for (int i = 0; i < parser.Arguments().Count(); ++i)
    CheckText(parser.Arguments()[i]);
  cow_ConstMapIterator<cow_String, cow_String> it(parser.EnvironmentOver(uti_Environment()));
  for (it.First(); !it.IsDone(); it.Next()) {
    CheckText(it.CurrentKey());
    CheckText(it.CurrentValue());
  }
  for (int stream = 0; stream < 3; ++stream) {
    const uti_Redirection::Redirector& slot = parser.Redirection().getRedirector(stream);
    VRKFuzzCheck(slot.handle.descriptor == -1 || slot.handle.descriptor == 1);
  }
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  VRKFuzzStartLibrary();
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size > 4096) return 0;
  const cow_String text(reinterpret_cast<const char*>(data), static_cast<int>(size));
  try {
    uti_Spawn::Parser parser(text);
    CheckParsed(parser);
  } catch (const nex_Exception&) {
  }
  try {
    uti_Redirection redirection(text);
  } catch (const nex_Exception&) {
  }
  return 0;
}
