// Base64 decoding of any bytes, strict and lenient, with the vector paths held against the
// scalar rules; and encoding of any bytes, which must decode back.
#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

#include "VRKFuzz.h"
#include "utl_Base64.h"
#include "utl_Base64Codec.h"

namespace {

std::string Decoded(utl_Base64Isa isa, const std::string& text, bool strict) {
  std::vector<unsigned char> out(text.size() / 4 * 3 + 3 + kUtlBase64DecodeSlack);
  size_t length = 0;
  const utl_Base64Status status =
      utl_base64DecodeRun(isa, text.data(), text.size(), strict, out.data(), length);
  VRKFuzzCheck(length <= text.size() / 4 * 3 + 2);
  return std::to_string(static_cast<int>(status)) + std::string(out.begin(), out.begin() + length);
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  VRKFuzzStartLibrary();
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string input(reinterpret_cast<const char*>(data), size);
  const size_t first = input.find_first_not_of('\n');
  const std::string trimmed = first == std::string::npos
                                  ? ""
                                  : input.substr(first, input.find_last_not_of('\n') - first + 1);
  for (bool strict : {true, false}) {
    for (const std::string& text : {input, trimmed}) {
      const std::string expected = Decoded(utl_Base64Isa::kScalar, text, strict);
      if (__builtin_cpu_supports("ssse3"))
        VRKFuzzCheck(Decoded(utl_Base64Isa::kSsse3, text, strict) == expected);
      if (__builtin_cpu_supports("avx2"))
        VRKFuzzCheck(Decoded(utl_Base64Isa::kAvx2, text, strict) == expected);
    }
    // The public function trims the newlines at the ends first.
    const std::string expected = Decoded(utl_Base64Isa::kScalar, trimmed, strict);
    cow_String text(input.data(), static_cast<int>(size));
    try {
      const cow_String bytes = utl_base64Decode(text, strict);
      VRKFuzzCheck(expected[0] == '0' &&
                   std::string(bytes.c_str(), bytes.Length()) == expected.substr(1));
    } catch (const utl_Base64CodecError&) {
      VRKFuzzCheck(expected[0] != '0');
    }
  }

  cow_String bytes(input.data(), static_cast<int>(size));
  cow_String text = utl_base64Encode(bytes, false);
  VRKFuzzCheck(utl_base64Decode(text, true) == bytes);
  const cow_String lines = utl_base64Encode(bytes, true);
  VRKFuzzCheck(lines.Length() == text.Length() + static_cast<int>((size + 56) / 57));
  return 0;
}
