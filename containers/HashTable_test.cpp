#include "HashTable.h"

#include <gtest/gtest.h>

#include <set>
#include <vector>

#include "VRKTestLibrary.h"

namespace {

// Every test checks at its end that all memory went back.
using HashTableTest = VRKFootprintTest;

// The keys in walking order; the walk must end at (0, 0).
template <class K, class V>
std::vector<K> Walk(const HashTable<K, V>& table) {
  std::vector<K> keys;
  unsigned bucket, place;
  for (auto* entry = table.First(bucket, place); entry; entry = table.Next(bucket, place))
    keys.push_back(entry->m_Key);
  EXPECT_EQ(bucket + place, 0u);
  return keys;
}

TEST_F(HashTableTest, OneBucketIsAListNewestFirst) {
  HashTable<unsigned, void*> table(1);
  int a, b;
  for (unsigned key : {1u, 2u, 3u})
    table.Insert(key, &a);
  table.Insert(2, &b);  // replaces, adds no entry
  void* found = nullptr;
  EXPECT_TRUE(table.LookUp(2, found));
  EXPECT_EQ(found, &b);
  EXPECT_FALSE(table.LookUp(4, found));
  EXPECT_EQ(found, &b);  // left alone
  unsigned bucket, place;
  table.First(bucket, place);
  EXPECT_EQ(table.Next(bucket, place)->m_Key, 2u);
  EXPECT_EQ(place, 2u);
  EXPECT_EQ(Walk(table), (std::vector<unsigned>{3, 2, 1}));
  table.Remove(2);
  table.Remove(42);  // absent: no failure
  EXPECT_EQ(Walk(table), (std::vector<unsigned>{3, 1}));
}

TEST_F(HashTableTest, WalkAndClearCoverEveryBucket) {
  HashTable<void*, unsigned> table(13);
  table.Clear();
  std::vector<int> objects(100);
  for (unsigned i = 0; i < objects.size(); ++i)
    table.Insert(&objects[i], i);
  const std::vector<void*> keys = Walk(table);
  EXPECT_EQ(std::set<void*>(keys.begin(), keys.end()).size(), objects.size());
  table.Clear();
  unsigned value = 0;
  for (int& object : objects)
    EXPECT_FALSE(table.LookUp(&object, value));
}

// Keys that carry their bucket in the high bits, matched on the low bits; the hash may
// overshoot the buckets, which is reduced.
unsigned ByHighBits(const unsigned& key, unsigned) {
  return key >> 16;
}
bool SameLowBits(const HashTableEntry<unsigned, int>* entry, const unsigned& key) {
  return (entry->m_Key & 0xffff) == (key & 0xffff);
}

TEST_F(HashTableTest, CallerHashAndEquality) {
  HashTable<unsigned, int> table(4);
  table.Insert(0x10001, 1, ByHighBits, SameLowBits);
  table.Insert(0x50001, 5, ByHighBits, SameLowBits);  // bucket 5 reduces to 1: same entry
  int value = 0;
  EXPECT_TRUE(table.LookUp(0x90001, value, ByHighBits, SameLowBits));
  EXPECT_EQ(value, 5);
  EXPECT_EQ(Walk(table), (std::vector<unsigned>{0x10001}));
  EXPECT_EQ((HashTable<unsigned, int>(0).BucketCount()), 1u);
}

}  // namespace
