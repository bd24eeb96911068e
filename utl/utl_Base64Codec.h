// The Base64 codec behind utl_base64Encode and utl_base64Decode, on the caller's buffers and
// with the instruction set chosen by the caller: for a caller that codes into memory it
// already has, and for checking the vector paths against the scalar one (all give the same
// bytes and status). Safe from any thread on distinct buffers; no failure is raised.
#ifndef UTL_BASE64CODEC_H
#define UTL_BASE64CODEC_H

#include <cstddef>

#include "VRKBasExport.h"

enum class utl_Base64Isa { kScalar, kSsse3, kAvx2 };

enum class utl_Base64Status { kDone, kStrictFailure, kPaddingError };

// Extra bytes that a decode may write past its result, which the output buffer must have.
constexpr size_t kUtlBase64DecodeSlack = 32;

// The fastest instruction set this processor has.
VRKLNU_EXPORT utl_Base64Isa utl_base64BestIsa();

// Writes the 4 * ceil(n / 3) characters of `n` bytes, the last group padded; no terminator.
VRKLNU_EXPORT void utl_base64EncodeRun(utl_Base64Isa isa, const unsigned char* in, size_t n,
                                       char* out);

// Decodes the `n` characters of `in`, read as if a NUL followed them, into `out`, which holds
// (n / 4) * 3 + 3 + kUtlBase64DecodeSlack bytes, and stores the length of the result.
VRKLNU_EXPORT utl_Base64Status utl_base64DecodeRun(utl_Base64Isa isa, const char* in, size_t n,
                                                   bool strict, unsigned char* out, size_t& length);

#endif  // UTL_BASE64CODEC_H
