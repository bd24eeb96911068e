#include "utl_Base64.h"

#include <gtest/gtest.h>

#include <memory>
#include <random>
#include <string>
#include <vector>

#include "VRKTestLibrary.h"
#include "utl_Base64Codec.h"

namespace {

using Base64Test = VRKLibraryTest;

std::string Encode(const std::string& bytes, bool lineBreaks = false) {
  cow_String text(bytes.data(), static_cast<int>(bytes.size()));
  return utl_base64Encode(text, lineBreaks).c_str();
}

// The decoded bytes, or the failure's text.
std::string Decode(const std::string& text, bool strict) {
  cow_String input(text.data(), static_cast<int>(text.size()));
  try {
    const cow_String bytes = utl_base64Decode(input, strict);
    return std::string(bytes.c_str(), bytes.Length());
  } catch (const utl_Base64CodecError& error) {
    return std::string("error: ") + error.AsString().c_str();
  }
}

TEST_F(Base64Test, EncodesWithTheBangAlphabetAndBreaksLinesAfter57Bytes) {
  const std::pair<std::string, std::string> cases[] = {
      {"", ""},
      {"f", "Zg=="},
      {"foo", "Zm9v"},
      {"foob", "Zm9vYg=="},
      {"foobar", "Zm9vYmFy"},
      {"\xfb\xff", "+!8="},
      {"\xff\xff\xff", "!!!!"},
  };
  for (const auto& [bytes, text] : cases)
    EXPECT_EQ(Encode(bytes), text) << bytes;

  const std::string line57(57, 'x'), line58(58, 'x');
  const std::string text57 = Encode(line57);
  EXPECT_EQ(Encode(line57, true), text57 + "\n");
  EXPECT_EQ(Encode(line58, true), text57 + "\n" + Encode("x") + "\n");
  EXPECT_EQ(Encode(line57 + line57, true), text57 + "\n" + text57 + "\n");
}

TEST_F(Base64Test, DecodesByTheCodecsExactRules) {
  const struct {
    std::string text;
    bool strict;
    std::string result;
  } cases[] = {
      {"Zm9vYmFy", true, "foobar"},
      {"Zm9vYg==", true, "foob"},
      {"Zm9vYmE=", true, "fooba"},
      {"+!8=", true, "\xfb\xff"},
      {"\n\nZm9v\n", true, "foo"},                  // newlines at the ends are trimmed
      {"Zm9vYg==rest", true, "foob"},               // decoding ends at the padding
      {std::string("Zm9v\0Zm9v", 9), true, "foo"},  // and at a NUL
      {"Zm9/", true, "error: strict checking failure"},
      {"Zm9\nv", true, "error: strict checking failure"},
      // A skipped byte still takes a place: the group after it comes out shifted.
      {"Zm9v*Zm9", false, "foo\x01\x99\xbd"},
      {"Zm9vY", true, "error: padding error"},
      {"Zm9vYm=", true, "error: padding error"},
      {"Zm9v=", true, "error: padding error"},
  };
  for (const auto& c : cases)
    EXPECT_EQ(Decode(c.text, c.strict), c.result) << c.text;

  cow_String text("\nZm9vY\n\n");
  try {
    utl_base64Decode(text, true);
  } catch (const utl_Base64CodecError& error) {
    std::unique_ptr<nex_Exception> copy(error.Copy());  // of the exact class
    EXPECT_NE(dynamic_cast<utl_Base64CodecError*>(copy.get()), nullptr);
  }
  EXPECT_EQ(text, "Zm9vY");  // trimmed in place
}

// The result of the raw decoder, as bytes and status.
std::string DecodeRun(utl_Base64Isa isa, const std::string& text, bool strict) {
  std::vector<unsigned char> out(text.size() / 4 * 3 + 3 + kUtlBase64DecodeSlack);
  size_t length = 0;
  const utl_Base64Status status =
      utl_base64DecodeRun(isa, text.data(), text.size(), strict, out.data(), length);
  return std::to_string(static_cast<int>(status)) + ":" +
         std::string(reinterpret_cast<char*>(out.data()), length);
}

TEST(Base64Codec, VectorPathsAgreeWithTheScalarRulesForEveryLengthAndBadByte) {
  std::mt19937 random(15);
  std::vector<utl_Base64Isa> isas;
  if (__builtin_cpu_supports("ssse3")) isas.push_back(utl_Base64Isa::kSsse3);
  if (__builtin_cpu_supports("avx2")) isas.push_back(utl_Base64Isa::kAvx2);
  const char bad[] = {'/', '\n', '=', '\0', '\x80', '*'};
  for (size_t n = 0; n <= 300; ++n) {
    SCOPED_TRACE("length " + std::to_string(n));
    std::string bytes(n, '\0');
    for (char& b : bytes)
      b = static_cast<char>(random());
    std::string text((n + 2) / 3 * 4, '\0');
    utl_base64EncodeRun(utl_Base64Isa::kScalar, reinterpret_cast<unsigned char*>(&bytes[0]), n,
                        &text[0]);
    ASSERT_EQ(DecodeRun(utl_Base64Isa::kScalar, text, true), "0:" + bytes);
    for (utl_Base64Isa isa : isas) {
      std::string vector(text.size(), '\0');
      utl_base64EncodeRun(isa, reinterpret_cast<unsigned char*>(&bytes[0]), n, &vector[0]);
      ASSERT_EQ(vector, text);
      ASSERT_EQ(DecodeRun(isa, text, true), "0:" + bytes);
    }
    for (size_t at = 0; at < text.size(); ++at) {
      std::string broken = text;
      broken[at] = bad[(at + n) % sizeof bad];
      for (bool strict : {true, false}) {
        const std::string expected = DecodeRun(utl_Base64Isa::kScalar, broken, strict);
        for (utl_Base64Isa isa : isas)
          ASSERT_EQ(DecodeRun(isa, broken, strict), expected) << "bad byte at " << at;
      }
    }
  }
}

}  // namespace
