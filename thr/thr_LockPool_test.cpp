#include "thr_LockPool.h"

#include <gtest/gtest.h>

#include <set>

#include "VRKTestLibrary.h"

namespace {

class LockPoolTest : public VRKLibraryTest {};

TEST_F(LockPoolTest, LendsDistinctLocksAndGrowsByTen) {
  thr_LockPool& pool = thr_LockPool::Instance();
  std::set<thr_PoolLock*> locks;
  for (int i = 0; i < 11; ++i)
    locks.insert(pool.GetLock());
  EXPECT_EQ(locks.size(), 11u);
  EXPECT_EQ(pool.Capacity(), 20);
  EXPECT_EQ(pool.LocksInUse(), 11);
  for (thr_PoolLock* lock : locks)
    pool.ReleaseLock(lock);
  pool.ReleaseLock(*locks.begin());  // not lent out any more: ignored
  pool.ReleaseLock(nullptr);
  EXPECT_EQ(pool.LocksInUse(), 0);
}

TEST_F(LockPoolTest, SearchGoesOnFromWhereItEndedAndWrapsAround) {
  thr_LockPool& pool = thr_LockPool::Instance();
  for (int i = 0; i < 3; ++i)
    pool.ReleaseLock(pool.GetLock());
  EXPECT_EQ(pool.GetLock()->Index(), 3);  // not 0: the search starts after the last one lent
  for (int i = 4; i < 10; ++i)
    EXPECT_EQ(pool.GetLock()->Index(), i);
  EXPECT_EQ(pool.GetLock()->Index(), 0);  // wrapped to the start
  EXPECT_EQ(pool.Capacity(), 10);
}

}  // namespace
