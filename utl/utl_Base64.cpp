#include "utl_Base64.h"

#include <climits>
#include <cstdint>

#include "mem_Alloc.h"
#include "utl_Base64Codec.h"

template class nex_ConcreteException<utl_Base64CodecError, 0x1F0002, nex_TextException>;

utl_Base64CodecError::~utl_Base64CodecError() = default;

namespace {

constexpr size_t kLineBytes = 57;

[[noreturn]] void Fail(const char* message) {
  NEX_THROW(utl_Base64CodecError(nex_Translate(message)));
}

// A block of the memory layer with room for `length` characters and a terminator, or null;
// sizes past what a string can hold get none.
char* Allocate(uint64_t length) {
  return length < INT_MAX ? static_cast<char*>(mem_Malloc(length + 1)) : nullptr;
}

}  // namespace

cow_String utl_base64Encode(cow_String& text, bool lineBreaks) {
  const size_t n = static_cast<size_t>(text.Length());
  if (n == 0) return cow_String();
  const uint64_t lines = lineBreaks ? (n + kLineBytes - 1) / kLineBytes : 0;
  const uint64_t length = (n + 2) / 3 * 4 + lines;
  char* block = Allocate(length);
  if (block == nullptr) Fail("memory allocation failure");
  const utl_Base64Isa isa = utl_base64BestIsa();
  const unsigned char* in = reinterpret_cast<const unsigned char*>(text.c_str());
  if (!lineBreaks) {
    utl_base64EncodeRun(isa, in, n, block);
  } else {
    char* out = block;
    for (size_t done = 0; done < n; done += kLineBytes) {
      const size_t bytes = n - done < kLineBytes ? n - done : kLineBytes;
      utl_base64EncodeRun(isa, in + done, bytes, out);
      out += (bytes + 2) / 3 * 4;
      *out++ = '\n';
    }
  }
  block[length] = '\0';
  return cow_String(block, static_cast<int>(length), cow_String::Adopt);
}

cow_String utl_base64Decode(cow_String& text, bool strict) {
  char* block = Allocate(static_cast<uint64_t>(text.Length()) / 4 * 3 + 2 + kUtlBase64DecodeSlack);
  if (block == nullptr) Fail("malloc failure");
  text.Trim("\n");
  size_t length = 0;
  const utl_Base64Status status =
      utl_base64DecodeRun(utl_base64BestIsa(), text.c_str(), static_cast<size_t>(text.Length()),
                          strict, reinterpret_cast<unsigned char*>(block), length);
  if (status != utl_Base64Status::kDone) {
    mem_Free(block);
    Fail(status == utl_Base64Status::kStrictFailure ? "strict checking failure" : "padding error");
  }
  block[length] = '\0';
  return cow_String(block, static_cast<int>(length), cow_String::Adopt);
}
