// A small chained hash table with a fixed number of buckets, used to number objects while
// they pass through binary filters.
//
//   HashTable<unsigned, void*> objects(2047);
//   objects.Insert(7, pointer);
//   void* found;
//   if (objects.LookUp(7, found)) use(found);
//
// The table doesn't grow. A key's bucket comes from `hash` (HashValue when null) and keys are
// matched with `equal` (== when null); a new key goes to the head of its bucket's chain, so the
// newest key of a bucket is found first. A walk goes by positions: a bucket and a place in its
// chain counted from 1, with (0, 0) for the end.
//
// Failure: a bucket array that can't be allocated throws HashTableBadAlloc, a std::bad_alloc
// with the text "bad allocation"; entries come from the memory layer and raise through it.
// A table belongs to one thread at a time.
#ifndef HASHTABLE_H
#define HASHTABLE_H

#include <cstring>
#include <new>

#include "HashValue.h"
#include "VRKBasExport.h"
#include "mem_Alloc.h"

class VRKLNU_EXPORT HashTableBadAlloc : public std::bad_alloc {
 public:
  const char* what() const noexcept override { return "bad allocation"; }
};

template <class K, class V>
struct HashTableEntry : public mem_AllocationOperators {
  HashTableEntry(const K& key, const V& value, HashTableEntry* next)
      : m_Key(key), m_Value(value), m_Next(next) {}

  K m_Key;
  V m_Value;
  HashTableEntry* m_Next;
};

template <class K, class V>
class HashTable : public mem_AllocationOperators {
 public:
  using Entry = HashTableEntry<K, V>;
  // The bucket of a key, below `buckets`.
  typedef unsigned (*HashFunction)(const K& key, unsigned buckets);
  // Whether the entry holds the key.
  typedef bool (*EqualFunction)(const Entry* entry, const K& key);

  // A bucket count of 0 is taken as 1.
  explicit HashTable(unsigned buckets) : m_BucketCount(buckets == 0 ? 1 : buckets) {
    m_Buckets = static_cast<Entry**>(mem_Malloc(sizeof(Entry*) * m_BucketCount));
    if (m_Buckets == nullptr) throw HashTableBadAlloc();
    std::memset(m_Buckets, 0, sizeof(Entry*) * m_BucketCount);
  }
  ~HashTable() {
    Clear();
    mem_Free(m_Buckets);
  }
  HashTable(const HashTable&) = delete;
  HashTable& operator=(const HashTable&) = delete;

  unsigned BucketCount() const { return m_BucketCount; }

  // Sets the value of the key, adding an entry at the head of its chain when it is absent.
  void Insert(const K& key, const V& value, HashFunction hash = nullptr,
              EqualFunction equal = nullptr) {
    Entry** head = Head(key, hash);
    if (Entry* entry = *Find(head, key, equal))
      entry->m_Value = value;
    else
      *head = new Entry(key, value, *head);
  }
  // True with the value in `value` when the key is present; otherwise `value` is left alone.
  bool LookUp(const K& key, V& value, HashFunction hash = nullptr,
              EqualFunction equal = nullptr) const {
    const Entry* entry = *Find(Head(key, hash), key, equal);
    if (entry == nullptr) return false;
    value = entry->m_Value;
    return true;
  }
  // Unlinks and frees the key's entry; an absent key is no failure.
  void Remove(const K& key, HashFunction hash = nullptr, EqualFunction equal = nullptr) {
    Entry** link = Find(Head(key, hash), key, equal);
    if (Entry* entry = *link) {
      *link = entry->m_Next;
      delete entry;
    }
  }

  // The first entry and its position, or null and (0, 0) for an empty table.
  const Entry* First(unsigned& bucket, unsigned& place) const {
    return FirstFrom(0, bucket, place);
  }
  // The entry after the position: the next in its chain, or else the first of the next bucket
  // that has one; null and (0, 0) at the end.
  const Entry* Next(unsigned& bucket, unsigned& place) const {
    if (place == 0 || bucket >= m_BucketCount) return FirstFrom(m_BucketCount, bucket, place);
    const Entry* entry = m_Buckets[bucket];
    for (unsigned i = 1; entry != nullptr && i < place; ++i)
      entry = entry->m_Next;
    if (entry == nullptr || entry->m_Next == nullptr) return FirstFrom(bucket + 1, bucket, place);
    ++place;
    return entry->m_Next;
  }

  // Frees all entries, bucket by bucket, head first; the buckets stay.
  void Clear() {
    for (unsigned bucket = 0; bucket < m_BucketCount; ++bucket) {
      while (Entry* entry = m_Buckets[bucket]) {
        m_Buckets[bucket] = entry->m_Next;
        delete entry;
      }
    }
  }

 private:
  // The link to the head of the key's chain. A hash outside the buckets is reduced to them.
  Entry** Head(const K& key, HashFunction hash) const {
    const unsigned bucket = hash ? hash(key, m_BucketCount) : HashValue(key, m_BucketCount);
    return &m_Buckets[bucket < m_BucketCount ? bucket : bucket % m_BucketCount];
  }
  // From `link` along the chain: the link to the key's entry, or the null link at the end.
  static Entry** Find(Entry** link, const K& key, EqualFunction equal) {
    while (*link != nullptr && !(equal ? equal(*link, key) : (*link)->m_Key == key))
      link = &(*link)->m_Next;
    return link;
  }
  const Entry* FirstFrom(unsigned from, unsigned& bucket, unsigned& place) const {
    for (bucket = from; bucket < m_BucketCount; ++bucket) {
      if (m_Buckets[bucket] != nullptr) {
        place = 1;
        return m_Buckets[bucket];
      }
    }
    bucket = place = 0;
    return nullptr;
  }

  Entry** m_Buckets;
  unsigned m_BucketCount;
};

#endif  // HASHTABLE_H
