// The text form of a bit mask, read from lines of any shape; what is read must write out and
// read back to the same vector.
#include <cstdint>
#include <cstdlib>
#include <string>

#include "VRKFuzz.h"
#include "utl_BlkBitUtils.h"

namespace {

// Words the runs of the text may cover, kept small so that each input stays quick: a run may
// rightly reach the end of the bit range, half a gigabyte of words.
bool Small(const std::string& text) {
  long long words = 0;
  for (size_t colon = text.find(':'); colon != std::string::npos;
       colon = text.find(':', colon + 1)) {
    const long long run = std::strtoll(text.c_str() + colon + 1, nullptr, 10);
    if (run > (1 << 16) || (words += run > 0 ? run : 0) > (1 << 16)) return false;
  }
  return true;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string input(reinterpret_cast<const char*>(data), size);
  if (!Small(input)) return 0;
  cow_List<cow_String> lines;
  for (size_t start = 0; start <= size;) {
    size_t end = input.find('\n', start);
    if (end == std::string::npos) end = size;
    lines.Append(cow_String(input.data() + start, static_cast<int>(end - start)));
    start = end + 1;
  }
  omi_BlkBitVect mask;
  utl_BlkBitUtils::GetMaskFromString(lines, mask);
  omi_BlkBitVect back;
  utl_BlkBitUtils::GetMaskFromString(utl_BlkBitUtils::GetMaskString(mask), back);
  VRKFuzzCheck(back.Count() == mask.Count() && mask.Count() == omi_BlkBitVect(mask).Recount());
  unsigned bit = 0;
  omi_BlkBitVectTrav walk(&mask);
  for (bool found = walk.First(bit); found; found = walk.Next(bit))
    VRKFuzzCheck(back.IsSet(bit));
  return 0;
}
