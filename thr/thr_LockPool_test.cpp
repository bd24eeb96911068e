#include "thr_LockPool.h"

#include <gtest/gtest.h>

#include <set>
#include <vector>

#include "VRKTestLibrary.h"

namespace {

class LockPoolTest : public VRKLibraryTest {
 protected:
  void SetUp() override {
    VRKLibraryTest::SetUp();
    pool = &thr_LockPool::Instance();
  }

  std::vector<thr_PoolLock*> Take(int count) {
    std::vector<thr_PoolLock*> locks;
    for (int i = 0; i < count; ++i)
      locks.push_back(pool->GetLock());
    return locks;
  }
  void Give(const std::vector<thr_PoolLock*>& locks) {
    for (thr_PoolLock* lock : locks)
      pool->ReleaseLock(lock);
  }

  thr_LockPool* pool = nullptr;
};

TEST_F(LockPoolTest, LendsDistinctLocksAndGrowsByTen) {
  const std::vector<thr_PoolLock*> locks = Take(11);
  std::set<int> places;
  for (thr_PoolLock* lock : locks)
    places.insert(lock->Index());
  EXPECT_EQ(places.size(), 11u);
  EXPECT_EQ(pool->Capacity(), 20);
  EXPECT_EQ(pool->LocksInUse(), 11);
  locks[3]->Lock();
  locks[3]->Unlock();
  Give(locks);
  EXPECT_EQ(pool->LocksInUse(), 0);
}

TEST_F(LockPoolTest, SearchGoesOnFromWhereItEndedAndWrapsAround) {
  Give(Take(3));
  EXPECT_EQ(pool->GetLock()->Index(), 3);  // not 0: the search starts after the last one lent
  const std::vector<thr_PoolLock*> rest = Take(6);  // places 4 to 9: the pool is full
  EXPECT_EQ(rest.back()->Index(), 9);
  EXPECT_EQ(pool->GetLock()->Index(), 0);  // wrapped to the start
  EXPECT_EQ(pool->Capacity(), 10);
}

TEST_F(LockPoolTest, ReleaseIgnoresWhatIsNotLentOut) {
  thr_PoolLock* lock = pool->GetLock();
  pool->ReleaseLock(lock);
  pool->ReleaseLock(lock);
  pool->ReleaseLock(nullptr);
  EXPECT_EQ(pool->LocksInUse(), 0);
  pool->GetLock();
  EXPECT_EQ(pool->LocksInUse(), 1);
}

}  // namespace
