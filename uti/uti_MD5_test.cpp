#include "uti_MD5.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

namespace {

std::string Hex(const uti_MD5& md5) {
  return md5.HexDigest().c_str();
}

TEST(MD5Test, GivesTheDigestsOfTheStandardsTestSuite) {
  const struct {
    std::string message;
    const char* digest;
  } cases[] = {
      {"", "d41d8cd98f00b204e9800998ecf8427e"},
      {"a", "0cc175b9c0f1b6a831c399e269772661"},
      {"abc", "900150983cd24fb0d6963f7d28e17f72"},
      {"message digest", "f96b697d7cb7938d525a2f31aaf161d0"},
      {"abcdefghijklmnopqrstuvwxyz", "c3fcd3d76192e4007dfb496cca67e13b"},
      {"ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789",
       "d174ab98d277d9f5a5611c2c9f419d9f"},
      {"1234567890123456789012345678901234567890123456789012345678901234567890123456789"
       "0",
       "57edf4a22be3c955ac49da2e2107b67a"},
      {std::string(1000000, 'a'), "7707d6ae4e027c70eea2a935c2296f21"},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(uti_MD5::HexDigestOf(c.message.data(), c.message.size()).c_str(),
              std::string(c.digest))
        << c.message.size() << " bytes";
  }
}

// Pieces of every size from 1 to 130 bytes cross the 64-byte blocks and the 56-byte end of
// the padding at every offset.
TEST(MD5Test, PiecesOfAnySizeGiveTheDigestOfTheWhole) {
  std::mt19937 random(19);
  std::vector<unsigned char> data(1000);
  for (unsigned char& byte : data)
    byte = static_cast<unsigned char>(random());
  for (size_t length = 0; length <= data.size(); length += 37) {
    const std::string whole = uti_MD5::HexDigestOf(data.data(), length).c_str();
    for (size_t piece = 1; piece <= 130; ++piece) {
      uti_MD5 md5;
      for (size_t at = 0; at < length; at += piece)
        md5.Update(data.data() + at, std::min(piece, length - at));
      ASSERT_EQ(Hex(md5), whole) << length << " bytes in pieces of " << piece;
    }
  }
}

TEST(MD5Test, ADigestLeavesTheComputationToGoOnAndResetStartsAgain) {
  uti_MD5 md5;
  md5.Update("message ", 8);
  EXPECT_EQ(Hex(md5), uti_MD5::HexDigestOf("message ", 8).c_str());
  uti_MD5 copy(md5);
  md5.Update("digest", 6);
  EXPECT_EQ(Hex(md5), "f96b697d7cb7938d525a2f31aaf161d0");
  EXPECT_EQ(Hex(copy), uti_MD5::HexDigestOf("message ", 8).c_str());
  md5.Reset();
  EXPECT_EQ(Hex(md5), "d41d8cd98f00b204e9800998ecf8427e");
}

}  // namespace
