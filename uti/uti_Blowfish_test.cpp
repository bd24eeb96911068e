#include "uti_Blowfish.h"

#include <gtest/gtest.h>

#include <cstring>
#include <random>
#include <string>
#include <vector>

#include "VRKTestLibrary.h"
#include "nex_TextException.h"

namespace {

using Bytes = std::vector<unsigned char>;

Bytes FromHex(const std::string& hex) {
  Bytes bytes;
  for (size_t i = 0; i + 1 < hex.size(); i += 2)
    bytes.push_back(static_cast<unsigned char>(std::stoi(hex.substr(i, 2), nullptr, 16)));
  return bytes;
}

class BlowfishTest : public VRKLibraryTest {};

// The published single-block vectors: key, clear text, cipher text.
TEST_F(BlowfishTest, EncryptsAndDecryptsThePublishedBlocks) {
  const char* cases[][3] = {
      {"0000000000000000", "0000000000000000", "4EF997456198DD78"},
      {"FFFFFFFFFFFFFFFF", "FFFFFFFFFFFFFFFF", "51866FD5B85ECB8A"},
      {"3000000000000000", "1000000000000001", "7D856F9A613063F2"},
      {"1111111111111111", "1111111111111111", "2466DD878B963C9D"},
      {"0123456789ABCDEF", "1111111111111111", "61F9C3802281B096"},
      {"1111111111111111", "0123456789ABCDEF", "7D0CC630AFDA1EC7"},
      {"FEDCBA9876543210", "0123456789ABCDEF", "0ACEAB0FC6A0A28D"},
      {"7CA110454A1A6E57", "01A1D6D039776742", "59C68245EB05282B"},
      {"0131D9619DC1376E", "5CD54CA83DEF57DA", "B1B8CC0B250F09A0"},
      {"07A1133E4A0B2686", "0248D43806F67172", "1730E5778BEA1DA4"},
      {"3849674C2602319E", "51454B582DDF440A", "A25E7856CF2651EB"},
      {"04B915BA43FEB5B6", "42FD443059577FA2", "353882B109CE8F1A"},
      {"0113B970FD34F2CE", "059B5E0851CF143A", "48F4D0884C379918"},
      {"0170F175468FB5E6", "0756D8E0774761D2", "432193B78951FC98"},
      {"43297FAD38E373FE", "762514B829BF486A", "13F04154D69D1AE5"},
      {"07A7137045DA2A16", "3BDD119049372802", "2EEDDA93FFD39C79"},
      {"04689104C2FD3B2F", "26955F6835AF609A", "D887E0393C2DA6E3"},
      {"37D06BB516CB7546", "164D5E404F275232", "5F99D04F5B163969"},
      {"1F08260D1AC2465E", "6B056E18759F5CCA", "4A057A3B24D3977B"},
      {"584023641ABA6176", "004BD6EF09176062", "452031C1E4FADA8E"},
      {"025816164629B007", "480D39006EE762F2", "7555AE39F59B87BD"},
      {"49793EBC79B3258F", "437540C8698F3CFA", "53C55F9CB49FC019"},
      {"4FB05E1515AB73A7", "072D43A077075292", "7A8E7BFA937E89A3"},
      {"49E95D6D4CA229BF", "02FE55778117F12A", "CF9C5D7A4986ADB5"},
      {"018310DC409B26D6", "1D9D5C5018F728C2", "D1ABB290658BC778"},
      {"1C587F1C13924FEF", "305532286D6F295A", "55CB3774D13EF201"},
      {"0101010101010101", "0123456789ABCDEF", "FA34EC4847B268B2"},
      {"1F1F1F1F0E0E0E0E", "0123456789ABCDEF", "A790795108EA3CAE"},
      {"E0FEE0FEF1FEF1FE", "0123456789ABCDEF", "C39E072D9FAC631D"},
      {"0000000000000000", "FFFFFFFFFFFFFFFF", "014933E0CDAFF6E4"},
      {"FFFFFFFFFFFFFFFF", "0000000000000000", "F21E9A77B71C49BC"},
      {"0123456789ABCDEF", "0000000000000000", "245946885754369A"},
      {"FEDCBA9876543210", "FFFFFFFFFFFFFFFF", "6B5C5A9C5D9E0A5A"},
  };
  for (const auto& c : cases) {
    const Bytes key = FromHex(c[0]);
    const uti_Blowfish cipher(key.data(), key.size());
    Bytes block = FromHex(c[1]);
    cipher.EncryptECB(block.data(), block.size());
    EXPECT_EQ(VRKHex(block), c[2]) << "key " << c[0];
    cipher.DecryptECB(block.data(), block.size());
    EXPECT_EQ(VRKHex(block), c[1]) << "key " << c[0];
  }
}

// The published vectors for keys of growing length: the first n bytes of one long key.
TEST_F(BlowfishTest, TakesKeysOfEveryLengthFromFourBytes) {
  const Bytes key = FromHex("F0E1D2C3B4A5968778695A4B3C2D1E0F0011223344556677");
  const char* expected[] = {
      "BE1E639408640F05", "B39E44481BDB1E6E", "9457AA83B1928C0D", "8BB77032F960629D",
      "E87A244E2CC85E82", "15750E7A4F4EC577", "122BA70B3AB64AE0", "3A833C9AFFC537F6",
      "9409DA87A90F6BF2", "884F80625060B8B4", "1F85031C19E11968", "79D9373A714CA34F",
      "93142887EE3BE15C", "03429E838CE2D14B", "A4299E27469FF67B", "AFD5AED1C1BC96A8",
      "10851C0E3858DA9F", "E6F51ED79B9DB21F", "64A6E14AFD36B46F", "80C7D7D45A5479AD",
      "05044B62FA52D080",
  };
  for (size_t length = 4; length <= key.size(); ++length) {
    Bytes block = FromHex("FEDCBA9876543210");
    uti_Blowfish(key.data(), length).EncryptECB(block.data(), block.size());
    EXPECT_EQ(VRKHex(block), expected[length - 4]) << length << " key bytes";
  }
  for (size_t wrong : {size_t{0}, size_t{3}, size_t{57}}) {
    const Bytes longKey(wrong);
    EXPECT_THROW(uti_Blowfish(longKey.data(), longKey.size()), nex_TextException) << wrong;
  }
  EXPECT_NO_THROW(uti_Blowfish(Bytes(56).data(), 56));
}

TEST_F(BlowfishTest, ChainsBlocksAsInThePublishedExample) {
  const Bytes key = FromHex("0123456789ABCDEFF0E1D2C3B4A59687");
  const uti_Blowfish cipher(key.data(), key.size());
  const Bytes clear = FromHex("37363534333231204E6F77206973207468652074696D6520666F722000000000");
  const std::string expected = "6B77B4D63006DEE605B156E27403979358DEB9E7154616D959F1652BD5FF92CC";
  Bytes data = clear, iv = FromHex("FEDCBA9876543210");
  cipher.EncryptCBC(data.data(), data.size(), iv.data());
  EXPECT_EQ(VRKHex(data), expected);
  EXPECT_EQ(VRKHex(iv), expected.substr(48));

  // The same chain in two calls, the vector carried from one to the other.
  data = clear;
  iv = FromHex("FEDCBA9876543210");
  cipher.EncryptCBC(data.data(), 8, iv.data());
  cipher.EncryptCBC(data.data() + 8, 24, iv.data());
  EXPECT_EQ(VRKHex(data), expected);
  iv = FromHex("FEDCBA9876543210");
  cipher.DecryptCBC(data.data(), 16, iv.data());
  cipher.DecryptCBC(data.data() + 16, 16, iv.data());
  EXPECT_EQ(data, clear);
}

TEST_F(BlowfishTest, RefusesDataThatIsNotWholeBlocksWithoutTouchingIt) {
  const uti_Blowfish cipher(cow_String("a key"));
  Bytes data(15, 7), iv(8, 1);
  EXPECT_THROW(cipher.EncryptECB(data.data(), data.size()), nex_TextException);
  EXPECT_THROW(cipher.DecryptECB(data.data(), data.size()), nex_TextException);
  EXPECT_THROW(cipher.EncryptCBC(data.data(), data.size(), iv.data()), nex_TextException);
  EXPECT_THROW(cipher.DecryptCBC(data.data(), data.size(), iv.data()), nex_TextException);
  EXPECT_EQ(data, Bytes(15, 7));
  EXPECT_EQ(iv, Bytes(8, 1));
}

// Random keys, vectors and data, every whole-block length up to 1000 bytes, both modes.
TEST_F(BlowfishTest, RoundTripsRandomData) {
  std::mt19937 random(1994);
  const auto fill = [&](Bytes& bytes) {
    for (unsigned char& byte : bytes)
      byte = static_cast<unsigned char>(random());
  };
  for (size_t length = 0; length <= 1000; length += uti_Blowfish::kBlockSize) {
    Bytes key(4 + random() % 53), clear(length), iv(8);
    fill(key);
    fill(clear);
    fill(iv);
    const uti_Blowfish cipher(key.data(), key.size());
    Bytes data = clear;
    cipher.EncryptECB(data.data(), data.size());
    if (length > 0) {
      EXPECT_NE(data, clear);
    }
    cipher.DecryptECB(data.data(), data.size());
    EXPECT_EQ(data, clear) << "ECB, " << length << " bytes";
    Bytes chain = iv;
    cipher.EncryptCBC(data.data(), data.size(), chain.data());
    chain = iv;
    cipher.DecryptCBC(data.data(), data.size(), chain.data());
    EXPECT_EQ(data, clear) << "CBC, " << length << " bytes";
  }
}

}  // namespace
