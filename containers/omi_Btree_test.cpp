#include "omi_Btree.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <map>
#include <random>
#include <utility>
#include <vector>

#include "VRKBasSharedContainers.h"
#include "VRKTestLibrary.h"

namespace {

// Every test checks at its end that all memory went back.
using BtreeTest = VRKFootprintTest;

template <class K, class V>
std::vector<std::pair<K, V>> Entries(const omi_Btree<K, V>& tree) {
  std::vector<std::pair<K, V>> entries;
  for (omi_BtreeIterator<K, V> it(tree); !it.IsDone(); it.Next())
    entries.emplace_back(it.CurrentKey(), it.CurrentValue());
  return entries;
}

std::vector<int> Keys(const omi_Btree<int, int>& tree) {
  std::vector<int> keys;
  for (const auto& entry : Entries(tree))
    keys.push_back(entry.first);
  return keys;
}

// A second insert keeps the first value; copies clone, and keep the not-found value.
TEST_F(BtreeTest, InsertKeepsTheFirstValueAndCopiesClone) {
  omi_Btree<int, int> tree(-1);
  EXPECT_FALSE(tree.Remove(3));
  EXPECT_TRUE(tree.Insert(3, 30));
  EXPECT_FALSE(tree.Insert(3, 31));
  EXPECT_EQ(tree.Size(), 1);
  EXPECT_EQ(tree.ConstFind(3), 30);
  omi_Btree<int, int> copy(tree);
  EXPECT_TRUE(tree.Remove(3));
  EXPECT_EQ(tree.Root(), nullptr);
  EXPECT_EQ(tree.Size(), 0);
  EXPECT_EQ(copy.ConstFind(3), 30);
  tree = copy;
  tree = *&tree;
  EXPECT_EQ(Keys(tree), std::vector<int>{3});
  EXPECT_EQ(tree.ConstFind(4), -1);
}

// 1, 2, 3 stay a chain: a missing child weighs as a leaf, so the root is skewed by one only.
// The fourth key skews it by two, and one left rotation makes 2 the root.
TEST_F(BtreeTest, AscendingKeysRotateLeftAtTheRoot) {
  omi_Btree<int, int> tree;
  for (int key = 1; key <= 3; ++key)
    tree.Insert(key, key);
  EXPECT_EQ(tree.Root()->m_Key, 1);
  tree.Insert(4, 4);
  const auto* root = tree.Root();
  EXPECT_EQ(root->m_Key, 2);
  EXPECT_EQ(root->m_Left->m_Key, 1);
  EXPECT_EQ(root->m_Right->m_Key, 3);
  EXPECT_EQ(root->m_Right->m_Right->m_Key, 4);
  EXPECT_EQ(root->m_Height, 2);

  for (int key = 5; key <= 1000; ++key)
    tree.Insert(key, key);
  const std::vector<int> keys = Keys(tree);
  EXPECT_EQ(keys.size(), 1000u);
  EXPECT_TRUE(std::is_sorted(keys.begin(), keys.end()));
  EXPECT_LE(tree.Root()->m_Height, 20);  // single rotations suffice for an ascending run
}

// 20 has two children and its successor 30 is its right child: 30 moves up with its own right
// subtree (40) and takes over 10. Then the root 30, whose successor 40 is a leaf, goes.
TEST_F(BtreeTest, RemovalMovesTheSuccessorUpWithItsRightSubtree) {
  omi_Btree<int, int> tree;
  for (int key : {20, 10, 30, 40})
    tree.Insert(key, key * 10);
  ASSERT_TRUE(tree.Remove(20));
  const auto* root = tree.Root();
  EXPECT_EQ(root->m_Key, 30);
  EXPECT_EQ(root->m_Left->m_Key, 10);
  EXPECT_EQ(root->m_Right->m_Key, 40);
  EXPECT_EQ(tree.ConstFind(40), 400);

  // A successor deeper down: 50's leftmost right descendant is 55, whose right child 57 moves
  // up to 55's old parent.
  omi_Btree<int, int> deep;
  for (int key : {50, 30, 60, 20, 40, 58, 70, 55, 59, 57})
    deep.Insert(key, key);
  ASSERT_TRUE(deep.Remove(50));
  EXPECT_EQ(Keys(deep), (std::vector<int>{20, 30, 40, 55, 57, 58, 59, 60, 70}));
  EXPECT_EQ(deep.Root()->m_Key, 55);
  EXPECT_EQ(deep.Size(), 9);
}

// Keys more than 2^31 apart order by their wrapped difference.
TEST_F(BtreeTest, IntegerKeysCompareByTheirThirtyTwoBitDifference) {
  omi_Btree<int, int> tree;
  tree.Insert(INT_MIN, 0);
  tree.Insert(INT_MAX, 0);
  EXPECT_EQ(Keys(tree), (std::vector<int>{INT_MAX, INT_MIN}));
}

// With natural order on, "step10" sorts after "step9"; bytewise, before it.
TEST_F(BtreeTest, StringKeysFollowTheNaturalOrderSwitch) {
  const bool natural = atr_getNaturalOrder();
  for (bool on : {false, true}) {
    atr_setNaturalOrder(on);
    omi_Btree<cow_String, int> tree;
    for (const char* name : {"step10", "step9", "Step"})
      tree.Insert(name, 1);
    const auto entries = Entries(tree);
    EXPECT_EQ(entries[0].first, "Step");
    EXPECT_EQ(entries[2].first, on ? "step10" : "step9");
  }
  atr_setNaturalOrder(natural);
}

// 10,000 mixed inserts and removes over a small key range, so that removals often meet nodes
// with two children, checked against std::map after each step.
TEST_F(BtreeTest, MatchesStdMapThroughRandomInsertsAndRemoves) {
  std::mt19937 random(4242);
  omi_Btree<int, int> tree(-1);
  std::map<int, int> model;
  for (int step = 0; step < 10000; ++step) {
    const int key = static_cast<int>(random() % 400) - 200;
    if (random() % 5 < 3) {
      EXPECT_EQ(tree.Insert(key, step), model.emplace(key, step).second);
    } else {
      EXPECT_EQ(tree.Remove(key), model.erase(key) == 1);
    }
    ASSERT_EQ(tree.Size(), static_cast<int>(model.size())) << "step " << step;
    ASSERT_EQ(Entries(tree), (std::vector<std::pair<int, int>>(model.begin(), model.end())))
        << "step " << step;
  }
}

}  // namespace
