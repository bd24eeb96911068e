#include "mrm_Pool.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <limits>
#include <vector>

#include "VRKTestLibrary.h"
#include "mrm_Manager.h"

namespace {

using PoolTest = VRKLibraryTest;

mrm_Pool* SpotPool(const mrm_SmallBlockCapacity& capacity) {
  return mrm_PoolFactory::SpotStartup(mrm_TestLabel(1, 0, 0), mrm_JobPhaseLabel(), capacity);
}

double Charged(const mrm_Pool& pool) {
  return mrm_GetConsumption(pool.ConstGetProvider()).pinnedBytes;
}

// The provider is charged a block at the first piece and no more until what is out, times the
// overhead factor, crosses the next 64 KiB; Free gives nothing back to it.
TEST_F(PoolTest, ProviderChargeIsAHighWaterMarkInWholeBlocks) {
  mrm_Pool* pool = SpotPool(mrm_SmallBlockCapacity().SetOutToClientLoHi(0, 100));
  ASSERT_NE(pool, nullptr);
  EXPECT_EQ(pool->ConstGetLabel(), mrm_TestLabel(1, 0, 0));
  EXPECT_EQ(pool->ConstGetProvider().GetAltNumber(), -1);
  EXPECT_EQ(mrm_GetCapacity(pool->ConstGetProvider()).hi, 65536);  // 100 + 115, whole block
  void* first = pool->Alloc(10);
  void* second = pool->Alloc(10);
  EXPECT_EQ(Charged(*pool), 65536);
  EXPECT_EQ(reinterpret_cast<uintptr_t>(first) % 8, 0u);
  std::memset(first, 0xab, 10);
  pool->Free(first);
  pool->Free(second);
  EXPECT_EQ(mrm_GetConsumption(*pool).numAllocs, 0);
  EXPECT_EQ(mrm_GetConsumption(*pool).outToClient, 0);
  EXPECT_EQ(Charged(*pool), 65536);

  // Far beyond the plan: no refusal, and the charge follows in whole blocks, as one block.
  std::vector<void*> pieces;
  for (int i = 0; i < 1000; ++i)
    pieces.push_back(pool->Alloc(100));  // 100000 out, 115000 with the overhead
  EXPECT_EQ(Charged(*pool), 131072);
  EXPECT_EQ(mrm_GetConsumption(pool->ConstGetProvider()).numBlocks, 1);
  EXPECT_EQ(mrm_GetConsumption(pool->ConstGetProvider()).numPinned, 1);
  for (void* piece : pieces)
    pool->Free(piece);

  mrm_PoolFactory::Shutdown(pool);
  EXPECT_TRUE(mrm_Manager::Instance().ConstGetJobConsumption().IsZero());
  EXPECT_EQ(mrm_PoolFactory::GetPool(mrm_TestLabel(1, 0, 0)), nullptr);
}

// A size whose header arithmetic would overflow, or that the 32-bit size in the header can't
// hold, is refused with null and changes nothing.
TEST_F(PoolTest, SizesOutsideTheHeaderAreRefusedWithoutAnyChange) {
  mrm_Pool* pool = SpotPool(mrm_SmallBlockCapacity());
  for (int64_t size :
       {int64_t{-1}, int64_t{-8}, std::numeric_limits<int64_t>::min(), int64_t{0x7fffffff} - 7,
        int64_t{0xfffffff8}, int64_t{0xffffffff}, std::numeric_limits<int64_t>::max()}) {
    EXPECT_EQ(pool->Alloc(size), nullptr) << size;
    EXPECT_EQ(mrm_GetConsumption(*pool).numAllocs, 0) << size;
    EXPECT_EQ(mrm_GetConsumption(*pool).outToClient, 0) << size;
    EXPECT_EQ(Charged(*pool), 0) << size;
  }
  mrm_PoolFactory::Shutdown(pool);
}

// A restart takes the new capacity and starts from nothing, on the same pool; the overhead
// minimum sets the first charge.
TEST_F(PoolTest, RestartTakesTheNewCapacityAndStartsFromNothing) {
  mrm_Pool* pool = SpotPool(mrm_SmallBlockCapacity());
  void* kept = pool->Alloc(1);
  mrm_PoolFactory::Shutdown(pool);
  const mrm_SmallBlockCapacity next = mrm_SmallBlockCapacity().SetOverheadMin(200000);
  EXPECT_EQ(SpotPool(next), pool);
  EXPECT_EQ(mrm_GetCapacity(*pool), next);
  EXPECT_EQ(mrm_GetConsumption(*pool).numAllocs, 0);
  pool->Free(pool->Alloc(1));
  EXPECT_EQ(Charged(*pool), 262144);
  pool->Free(kept);
  mrm_PoolFactory::Shutdown(pool);
}

}  // namespace
