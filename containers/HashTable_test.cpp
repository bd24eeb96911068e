#include "HashTable.h"

#include <gtest/gtest.h>

#include <set>
#include <vector>

#include "VRKTestLibrary.h"

namespace {

// Every test checks at its end that all memory went back.
using HashTableTest = VRKFootprintTest;

template <class K, class V>
std::vector<K> Walk(const HashTable<K, V>& table) {
  std::vector<K> keys;
  unsigned bucket, place;
  for (auto* entry = table.First(bucket, place); entry; entry = table.Next(bucket, place))
    keys.push_back(entry->m_Key);
  EXPECT_EQ(bucket, 0u);
  EXPECT_EQ(place, 0u);
  return keys;
}

TEST_F(HashTableTest, SecondInsertReplacesTheValue) {
  HashTable<unsigned, void*> table(2047);
  int a, b;
  table.Insert(7, &a);
  table.Insert(7, &b);
  void* found = nullptr;
  EXPECT_TRUE(table.LookUp(7, found));
  EXPECT_EQ(found, &b);
  EXPECT_EQ(Walk(table).size(), 1u);
  EXPECT_FALSE(table.LookUp(8, found));
  EXPECT_EQ(found, &b);  // left alone
}

TEST_F(HashTableTest, OneBucketIsAListNewestFirst) {
  HashTable<unsigned, void*> table(1);
  for (unsigned key : {1u, 2u, 3u})
    table.Insert(key, nullptr);
  unsigned bucket, place;
  EXPECT_EQ(table.First(bucket, place)->m_Key, 3u);
  EXPECT_EQ(place, 1u);
  EXPECT_EQ(table.Next(bucket, place)->m_Key, 2u);
  EXPECT_EQ(table.Next(bucket, place)->m_Key, 1u);
  EXPECT_EQ(place, 3u);
  EXPECT_EQ(table.Next(bucket, place), nullptr);
  EXPECT_EQ(table.Next(bucket, place), nullptr);  // the end stays the end

  table.Remove(2);
  table.Remove(42);  // absent: no failure
  EXPECT_EQ(Walk(table), (std::vector<unsigned>{3, 1}));
}

TEST_F(HashTableTest, ClearEmptiesEveryBucket) {
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
  EXPECT_TRUE(Walk(table).empty());
}

// Keys that carry their bucket in the high bits; the hash may overshoot, which is reduced.
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
  table.Remove(0x10001, ByHighBits, SameLowBits);
  EXPECT_FALSE(table.LookUp(0x10001, value, ByHighBits, SameLowBits));
  EXPECT_EQ((HashTable<unsigned, int>(0).BucketCount()), 1u);
}

TEST(HashTableBadAllocTest, IsAStandardAllocationFailureWithItsText) {
  const std::bad_alloc& failure = HashTableBadAlloc();
  EXPECT_STREQ(failure.what(), "bad allocation");
}

}  // namespace
