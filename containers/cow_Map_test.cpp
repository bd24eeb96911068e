#include "cow_Map.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "VRKBasSharedContainers.h"
#include "VRKTestLibrary.h"
#include "cow_ConstMapIterator.h"

namespace {

// Every test checks at its end that all memory went back.
using MapTest = VRKFootprintTest;

template <class K, class V>
std::vector<K> KeysInOrder(const cow_Map<K, V>& map) {
  std::vector<K> keys;
  cow_ConstMapIterator<K, V> it(map);
  for (it.First(); !it.IsDone(); it.Next())
    keys.push_back(it.CurrentKey());
  return keys;
}

TEST_F(MapTest, EmptyMapAndOverwrite) {
  cow_Map<cow_String, cow_String> map;
  EXPECT_FALSE(map.IsMember(""));
  EXPECT_FALSE(map.Remove(""));
  cow_ConstMapIterator<cow_String, cow_String> it(map);
  it.First();
  EXPECT_TRUE(it.IsDone());
  EXPECT_TRUE(map.Insert("mesh", "a"));
  EXPECT_TRUE(map.Insert("mesh", "b"));
  EXPECT_EQ(map.Count(), 1);
  map.Get("mesh") += "c";
  EXPECT_EQ(map.ConstGet("mesh"), "bc");
}

// Integer keys go down by their bits from the lowest; iteration is pre-order, 0 side first;
// removing a node with two children promotes from the 1 side.
TEST_F(MapTest, BitsChooseTheWayAndRemovalPromotes) {
  cow_Map<int, int> map;
  for (int key : {0, 1, 2, 4, 3, 6})
    map.Insert(key, key * 10);
  const auto& root = map.Root().ConstGet();
  EXPECT_EQ(root.m_Zero.ConstGet().m_One.ConstGet().m_Key, 6);
  EXPECT_EQ(KeysInOrder(map), (std::vector<int>{0, 2, 4, 6, 1, 3}));

  EXPECT_TRUE(map.Remove(0));  // 1 moves up, then 3 into 1's place
  EXPECT_EQ(KeysInOrder(map), (std::vector<int>{1, 2, 4, 6, 3}));
  EXPECT_EQ(map.ConstGet(1), 10);
  EXPECT_EQ(map.ConstGet(3), 30);

  cow_Map<int, int> single;
  single.Insert(5, 5);
  EXPECT_TRUE(single.Remove(5));
  EXPECT_EQ(single.Root().GetPtr(), nullptr);
}

TEST_F(MapTest, StringBitsComeFromBothEndsInTurn) {
  using Key = cow_MapKey<cow_String>;
  // 'a' and 'c' have the low bit set, 'b' not: bytes 0, 2, 1, then byte 1 again at depth 3.
  for (int depth : {0, 1, 2, 3, 4})
    EXPECT_EQ(Key::Bit("abc", depth), depth < 2) << depth;
  EXPECT_TRUE(Key::Bit("ca", 2));           // depth 2 == length reads byte 1
  EXPECT_FALSE(Key::Bit(cow_String(), 0));  // the terminator of the empty string
}

TEST_F(MapTest, CopiesShareUntilWrittenAndOnlyThePathIsCopied) {
  cow_Map<int, int> original;
  for (int key = 0; key < 64; ++key)
    original.Insert(key, key);
  cow_Map<int, int> copy = original;
  copy.Get(2) = -2;  // path 0 -> 2: the odd keys on the 1 side stay shared
  copy.Insert(100, 100);
  EXPECT_TRUE(copy.Remove(4));
  EXPECT_EQ(&copy.ConstGet(1), &original.ConstGet(1));
  EXPECT_NE(&copy.ConstGet(2), &original.ConstGet(2));

  cow_ConstMapIterator<int, int> it(original);
  original = copy;  // the iterator keeps the tree it was made from
  int listed = 0;
  for (it.First(); !it.IsDone(); it.Next(), ++listed)
    EXPECT_EQ(it.CurrentValue(), it.CurrentKey());
  EXPECT_EQ(listed, 64);

  cow_Map<cow_String, cow_String> names;
  for (const char* key : {"delta", "alpha", "charlie", "bravo"})
    names.Insert(key, key);
  cow_ConstMapSortedIt<cow_String, cow_String> sorted(names);
  std::vector<std::string> keys;
  for (sorted.First(); !sorted.IsDone(); sorted.Next())
    keys.push_back(sorted.CurrentKey().c_str());
  EXPECT_EQ(keys, (std::vector<std::string>{"alpha", "bravo", "charlie", "delta"}));
}

TEST(MapDeathTest, AbsentKeyIsAPreconditionThatStops) {
  cow_Map<int, int> map;
  map.Insert(1, 1);
  EXPECT_DEATH(map.ConstGet(2), "");
  EXPECT_DEATH(map.Get(2), "");
}

template <class K>
K MakeKey(int value);
template <>
int MakeKey<int>(int value) {
  return value;
}
// Most string keys are random letters, whose low bits spread them over the tree; the others
// are numbered names, which differ only in the parity of their digits and so form long
// chains.
template <>
cow_String MakeKey<cow_String>(int value) {
  static const std::vector<std::string> letters = [] {
    std::mt19937 random(7);
    std::vector<std::string> keys;
    for (int i = 0; i < 250; ++i) {
      keys.emplace_back();
      for (int c = 0; c < 10; ++c)
        keys.back() += static_cast<char>('a' + random() % 26);
    }
    return keys;
  }();
  return value < 250 ? cow_String(letters[value].c_str()) : cow_String("key ") + cow_String(value);
}

// Whether the node holding `key` has both children.
template <class K>
bool HasTwoChildren(const typename cow_Map<K, int>::Holder& holder, const K& key) {
  const cow_MapNode<K, int>* node = holder.GetPtr();
  if (node == nullptr) return false;
  if (node->m_Key == key) return node->m_Zero.GetPtr() && node->m_One.GetPtr();
  return HasTwoChildren(node->m_Zero, key) || HasTwoChildren(node->m_One, key);
}

template <class K>
::testing::AssertionResult Same(const cow_Map<K, int>& map, const std::map<K, int>& model) {
  if (map.Count() != static_cast<int>(model.size()))
    return ::testing::AssertionFailure() << "count " << map.Count();
  for (const auto& entry : model)
    if (!map.IsMember(entry.first)) return ::testing::AssertionFailure() << "key lost";
  std::vector<std::pair<K, int>> listed;
  cow_ConstMapIterator<K, int> it(map);
  for (it.First(); !it.IsDone(); it.Next())
    listed.emplace_back(it.CurrentKey(), it.CurrentValue());
  std::sort(listed.begin(), listed.end());
  if (listed != std::vector<std::pair<K, int>>(model.begin(), model.end()))
    return ::testing::AssertionFailure() << "iteration differs";
  return ::testing::AssertionSuccess();
}

template <class K>
class MapRandomTest : public MapTest {};
using KeyTypes = ::testing::Types<int, cow_String>;
TYPED_TEST_SUITE(MapRandomTest, KeyTypes);

// 10,000 mixed operations against std::map over a dense key range, so that many removals hit
// nodes with two children, compared after each one. Copies taken along the way must keep
// their contents and are written themselves.
TYPED_TEST(MapRandomTest, MatchesStdMapThroughMixedOperations) {
  using K = TypeParam;
  struct Copy {
    cow_Map<K, int> map;
    std::map<K, int> model;
  };
  std::mt19937 random(20240611);
  auto below = [&random](int n) { return static_cast<int>(random() % n); };
  cow_Map<K, int> map;
  std::map<K, int> model;
  std::vector<Copy> copies;
  int twoChildRemovals = 0;
  for (int step = 0; step < 10000; ++step) {
    const K key = MakeKey<K>(below(300));
    const int operation = below(10);
    switch (operation) {
      case 0:
      case 1:
      case 2:
        map.Insert(key, step);
        model[key] = step;
        break;
      case 3:
      case 4:
        twoChildRemovals += HasTwoChildren(map.Root(), key);
        ASSERT_EQ(map.Remove(key), model.erase(key) == 1);
        break;
      case 5:
        if (model.count(key)) {
          map.Get(key) = -step;
          model[key] = -step;
        }
        break;
      case 6:
        if (copies.size() < 6)
          copies.push_back({map, model});
        else
          copies[below(6)] = {map, model};
        break;
      case 7: {
        if (copies.empty()) break;
        Copy& copy = copies[below(static_cast<int>(copies.size()))];
        copy.map.Insert(key, step);
        copy.model[key] = step;
        const K other = MakeKey<K>(below(300));
        ASSERT_EQ(copy.map.Remove(other), copy.model.erase(other) == 1);
        break;
      }
      default:
        ASSERT_EQ(map.IsMember(key), model.count(key) == 1);
        break;
    }
    ASSERT_TRUE(Same(map, model)) << "step " << step << " operation " << operation;
    if (step % 16 != 0 && operation != 7) continue;
    for (const Copy& copy : copies)
      ASSERT_TRUE(Same(copy.map, copy.model)) << "step " << step;
  }
  EXPECT_GT(twoChildRemovals, 200);
}

}  // namespace
