#include "cls_PTrie.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <map>
#include <random>
#include <utility>
#include <vector>

#include "VRKTestLibrary.h"

namespace {

typedef cls_PTrie<int, int, 1> Trie;
typedef cls_PTrieIter<int, int, 1> Iter;

// The keys in iteration order; unsigned order is the trie's order.
std::vector<std::pair<int, int>> Walk(const Trie& trie) {
  std::vector<std::pair<int, int>> entries;
  for (Iter it(trie); !it.IsDone(); it.Next())
    entries.emplace_back(it.CurrentKey(), it.CurrentValue());
  return entries;
}

TEST(PTrieKeyTest, FirstDifferenceIsTheHighestDifferingBitAtOrBelowTheStart) {
  typedef cls_PTrieKey<int, 1> Key;
  EXPECT_EQ(Key(0).FirstDifference(Key(-1), 31), 31);
  EXPECT_EQ(Key(0).FirstDifference(Key(-1), 4), 4);
  EXPECT_EQ(Key(0x50).FirstDifference(Key(0x10), 31), 6);
  EXPECT_EQ(Key(7).FirstDifference(Key(7), 31), -1);
  EXPECT_EQ(Key(0).FirstDifference(Key(1), -1), -1);
  EXPECT_EQ(Key(0x80000000).Bit(31), 1);
  EXPECT_EQ(Key(-5).Value(), -5);
}

TEST(PTrieTest, EdgeCases) {
  Trie trie;
  EXPECT_EQ(trie.ConstGetPtr(0), nullptr);
  EXPECT_EQ(trie.IsMember(0), 0);
  EXPECT_TRUE(Iter(trie).IsDone());
  trie.Remove(3);  // nothing to remove

  // One leaf: iterated once.
  trie.Insert(0, 10);
  EXPECT_EQ(Walk(trie), (std::vector<std::pair<int, int>>{{0, 10}}));
  // 0 and -1 branch at the root on bit 31; negative keys come last.
  trie.Insert(-1, 11);
  EXPECT_EQ(Walk(trie), (std::vector<std::pair<int, int>>{{0, 10}, {-1, 11}}));
  // Inserting a key again keeps the size and replaces the value, which Insert returns.
  int& stored = trie.Insert(-1, 12);
  EXPECT_EQ(stored, 12);
  EXPECT_EQ(trie.Size(), 2);
  EXPECT_EQ(trie.ConstGet(-1), 12);
  // A key that shares a prefix with a stored key, but is absent, removes nothing.
  trie.Remove(-2);
  EXPECT_EQ(trie.Size(), 2);
  trie.Remove(0);
  trie.Remove(-1);
  EXPECT_EQ(trie.Size(), 0);
  EXPECT_EQ(trie.ConstGetPtr(-1), nullptr);
  trie.Insert(5, 50);
  EXPECT_EQ(trie.ConstGet(5), 50);

  // Multiples of 2048, as the arrays' block keys are, in unsigned order.
  Trie blocks;
  for (int key : {4096, 0, 2048 * 1000, 2048, -2048})
    blocks.Insert(key, key / 2048);
  EXPECT_EQ(Walk(blocks), (std::vector<std::pair<int, int>>{
                              {0, 0}, {2048, 1}, {4096, 2}, {2048 * 1000, 1000}, {-2048, -1}}));
}

// Random inserts, removals and look-ups against std::map, with keys from a small range (so
// that keys meet again) and from the whole int range, negative ones included.
TEST(PTrieTest, AgreesWithStdMapOverRandomOperations) {
  std::mt19937 random(20240613);
  Trie trie;
  std::map<uint32_t, int> model;  // unsigned keys: the trie's order
  for (int step = 0; step < 100000; ++step) {
    const int key =
        step % 2 ? static_cast<int>(random()) : static_cast<int>(random() % 2000) - 1000;
    const int value = static_cast<int>(random());
    switch (random() % 4) {
      case 0:
      case 1:
        ASSERT_EQ(trie.Insert(key, value), value);
        model[static_cast<uint32_t>(key)] = value;
        break;
      case 2:
        trie.Remove(key);
        model.erase(static_cast<uint32_t>(key));
        break;
      default: {
        const auto found = model.find(static_cast<uint32_t>(key));
        const int* got = trie.ConstGetPtr(key);
        ASSERT_EQ(got != nullptr, found != model.end()) << "key " << key;
        if (got) {
          ASSERT_EQ(*got, found->second);
        }
      }
    }
    ASSERT_EQ(trie.Size(), static_cast<int>(model.size()));
    if (step % 5000 == 0) {
      std::vector<std::pair<int, int>> expected;
      for (const auto& entry : model)
        expected.emplace_back(static_cast<int>(entry.first), entry.second);
      ASSERT_EQ(Walk(trie), expected);
    }
  }
}

using PTrieUidTest = VRKLibraryTest;

TEST_F(PTrieUidTest, LeavesShareTheirValues) {
  cls_PTrie<int, cls_Uid, 1> uids;
  cls_Uid uid;
  uids.Insert(4096, uid);
  EXPECT_EQ(uid.UseCount(), 2);
  uids.Remove(4096);
  EXPECT_EQ(uid.UseCount(), 1);
}

}  // namespace
