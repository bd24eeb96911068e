#include "uti_Rotor.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include "VRKTestLibrary.h"
#include "nex_TextException.h"

namespace {

using Bytes = std::vector<unsigned char>;

class RotorTest : public VRKLibraryTest {};

// Cipher texts worked out from the definition by a separate program. The last case runs
// rotor 0 through position 0 (it starts at 207), so rotor 1 steps in it.
TEST_F(RotorTest, GivesTheKnownCipherTexts) {
  const struct {
    std::string key;
    int rotors;
    Bytes clear;
    const char* cipher;
    std::vector<int> starts;
  } cases[] = {
      {"", 1, Bytes(8), "27095AB97265E3EA", {78}},
      {"the key",
       6,
       Bytes{'s', 'o', 'm', 'e', ' ', 't', 'e', 'x', 't'},
       "E4E43771634FF2B0D6",
       {197, 191, 208, 122, 255, 139}},
      {std::string("long key \0 with a zero", 22),
       16,
       Bytes(12, 0xff),
       "9A895EA0F958078A0F6D6603",
       {201, 4, 85, 43, 214, 176, 206, 228, 234, 251, 15, 70, 197, 236, 222, 68}},
      {"k",
       2,
       Bytes(64),
       "070BA83B84B879BE29927D8D48AA0D440E1DED1879765CE9A8932F26574F3DB9820D86E6AB62681E2FF0244F4C"
       "DBF4DBCF0272565D1DA7625FA2E2A3E89F7A41",
       {207, 117}},
  };
  for (const auto& c : cases) {
    uti_Rotorobj machine(c.key.data(), c.key.size(), c.rotors);
    ASSERT_EQ(machine.RotorCount(), c.rotors);
    for (int i = 0; i < c.rotors; ++i)
      EXPECT_EQ(machine.Rotor(i).Position(), c.starts[i]) << c.key << ", rotor " << i;
    Bytes data = c.clear;
    machine.Encrypt(data.data(), data.size());
    EXPECT_EQ(VRKHex(data), c.cipher) << c.key;
  }
}

// Rotor 0 turns with every byte; rotor 1 once each time rotor 0 comes round to 0; rotor 2
// only when rotor 1 does too.
TEST_F(RotorTest, StepsLikeAnOdometer) {
  uti_Rotorobj machine(cow_String("k"), 3);
  const int start0 = machine.Rotor(0).Position(), start1 = machine.Rotor(1).Position(),
            start2 = machine.Rotor(2).Position();
  Bytes data(256 - start0 - 1);
  machine.Encrypt(data.data(), data.size());
  EXPECT_EQ(machine.Rotor(0).Position(), 255);
  EXPECT_EQ(machine.Rotor(1).Position(), start1);
  data.assign(1 + 256 * (255 - start1), 0);
  machine.Decrypt(data.data(), data.size());
  EXPECT_EQ(machine.Rotor(0).Position(), 0);
  EXPECT_EQ(machine.Rotor(1).Position(), 0);
  EXPECT_EQ(machine.Rotor(2).Position(), (start2 + 1) % 256);
  machine.Reset();
  EXPECT_EQ(machine.Rotor(0).Position(), start0);
  EXPECT_EQ(machine.Rotor(2).Position(), start2);
}

// Random keys, rotor counts and data of every length up to 1000 bytes: decrypting from the
// start positions gives the text back, in one piece or several.
TEST_F(RotorTest, RoundTripsRandomData) {
  std::mt19937 random(1918);
  for (size_t length = 0; length <= 1000; ++length) {
    std::string key(random() % 20, 0);
    for (char& c : key)
      c = static_cast<char>(random());
    Bytes clear(length);
    for (unsigned char& byte : clear)
      byte = static_cast<unsigned char>(random());
    uti_Rotorobj machine(key.data(), key.size(), 1 + static_cast<int>(random() % 16));
    Bytes data = clear;
    const size_t cut = length / 3;
    machine.Encrypt(data.data(), cut);
    machine.Encrypt(data.data() + cut, length - cut);
    if (length > 16) {
      EXPECT_NE(data, clear);
    }
    machine.Reset();
    machine.Decrypt(data.data(), length);
    ASSERT_EQ(data, clear) << length << " bytes";
  }
}

TEST_F(RotorTest, WorksOnStringsWithAnyBytes) {
  const cow_String text("a\0b\xff", 4);
  uti_Rotorobj machine(cow_String("key"));
  const cow_String secret = machine.Encrypt(text);
  uti_Rotorobj again(cow_String("key"));
  EXPECT_TRUE(again.Decrypt(secret) == text);
}

TEST_F(RotorTest, RefusesBadWiringsAndRotorCounts) {
  unsigned char wiring[256];
  for (int i = 0; i < 256; ++i)
    wiring[i] = static_cast<unsigned char>(255 - i);
  const uti_Rotor reversed(wiring, 300);
  EXPECT_EQ(reversed.Position(), 44);
  EXPECT_EQ(reversed.Forward(0), static_cast<unsigned char>(255 - 44 - 44));
  EXPECT_EQ(reversed.Backward(reversed.Forward(123)), 123);
  wiring[7] = wiring[8];
  EXPECT_THROW(uti_Rotor(wiring, 0), nex_TextException);
  EXPECT_THROW(uti_Rotorobj(cow_String("k"), 0), nex_TextException);
  EXPECT_THROW(uti_Rotorobj(cow_String("k"), uti_Rotorobj::kMaxRotors + 1), nex_TextException);
}

}  // namespace
