#include "omi_BlkBitVect.h"

#include <gtest/gtest.h>

#include <random>
#include <set>
#include <vector>

namespace {

// The set bits in the order of a walk: up from First, or down from Last.
std::vector<unsigned> Walk(const omi_BlkBitVect& vector, bool up) {
  std::vector<unsigned> bits;
  omi_BlkBitVectTrav walk(&vector);
  unsigned bit;
  for (bool found = up ? walk.First(bit) : walk.Last(bit); found;
       found = up ? walk.Next(bit) : walk.Prev(bit)) {
    bits.push_back(bit);
  }
  return bits;
}

std::vector<unsigned> Forward(const omi_BlkBitVect& vector) {
  return Walk(vector, true);
}

TEST(BitVectorTest, RandomChangesMatchASet) {
  std::mt19937 random(12345);
  std::uniform_int_distribution<unsigned> wide(0, 300000);
  omi_BlkBitVect vector;
  std::set<unsigned> expected;
  for (int step = 0; step < 20000; ++step) {
    const unsigned bit = step % 7 == 0 ? wide(random) : wide(random) % 5000;
    if (random() % 3 == 0) {
      vector.UnsetBit(bit);
      expected.erase(bit);
    } else {
      vector.SetBit(bit);
      expected.insert(bit);
    }
    ASSERT_EQ(vector.Count(), expected.size());
  }
  const std::vector<unsigned> ascending(expected.begin(), expected.end());
  EXPECT_EQ(Forward(vector), ascending);
  EXPECT_EQ(Walk(vector, false), std::vector<unsigned>(expected.rbegin(), expected.rend()));
  for (unsigned bit = 0; bit < 6000; ++bit)
    ASSERT_EQ(vector.IsSet(bit), expected.count(bit) == 1);
  EXPECT_EQ(vector.Recount(), expected.size());

  omi_BlkBitVect copy(vector);
  vector.Clear();
  EXPECT_EQ(vector.Count(), 0u);
  EXPECT_TRUE(Forward(vector).empty());
  EXPECT_EQ(Forward(copy), ascending);
  vector = copy;
  EXPECT_EQ(Forward(vector), ascending);
}

TEST(BitVectorTest, TraversalAtTheEdgesOfTheRange) {
  omi_BlkBitVect vector;
  unsigned bit = 123;
  omi_BlkBitVectTrav walk(&vector);
  EXPECT_FALSE(walk.First(bit));
  EXPECT_FALSE(walk.Last(bit));

  vector.SetBit(0);
  vector.SetBit(31);
  vector.SetBit(32);
  vector.SetBit(0xffffffffu);
  EXPECT_EQ(vector.Count(), 4u);
  EXPECT_TRUE(walk.Last(bit));
  EXPECT_EQ(bit, 0xffffffffu);
  EXPECT_FALSE(walk.Next(bit));
  EXPECT_TRUE(walk.Prev(bit));
  EXPECT_EQ(bit, 32u);
  bit = 0;
  EXPECT_FALSE(walk.Prev(bit));
  EXPECT_EQ(Forward(vector), (std::vector<unsigned>{0, 31, 32, 0xffffffffu}));
}

TEST(BitVectorTest, WordsCarryTheCount) {
  omi_BlkBitVect vector;
  vector.SetWord(3, 0xff);
  vector.SetWord(100000, 0x80000001u);
  EXPECT_EQ(vector.Count(), 10u);
  EXPECT_TRUE(vector.IsSet(3 * 32 + 7));
  EXPECT_TRUE(vector.IsSet(100000u * 32 + 31));
  vector.SetWord(3, 0x1);
  EXPECT_EQ(vector.Count(), 3u);
  EXPECT_EQ(vector.GetWord(3), 0x1u);
  EXPECT_EQ(vector.GetWord(4), 0u);
  EXPECT_EQ(vector.GetWord(4000000), 0u);
}

}  // namespace
