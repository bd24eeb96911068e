#include "mrm_LargeBlockPool.h"

#include <gtest/gtest.h>

#include <cstring>

#include "VRKTestLibrary.h"
#include "mrm_Manager.h"

namespace {

// Blocks declared, blocks pinned, their bytes, and bytes unpinned with release type 0 and 1.
mrm_Consumption Held(int blocks, int pinned, double bytes, double unpinned0 = 0,
                     double unpinned1 = 0) {
  mrm_Consumption held;
  held.numBlocks = blocks;
  held.numPinned = pinned;
  held.pinnedBytes = bytes;
  held.unpinnedBytes0 = unpinned0;
  held.unpinnedBytes1 = unpinned1;
  return held;
}

// Pools started outside the schedule under the job phase, which is open from the start.
class LargeBlockPoolTest : public VRKLibraryTest {
 protected:
  void SetUp() override {
    VRKLibraryTest::SetUp();
    m_Pool = mrm_LargeBlockPoolFactory::SpotStartup(mrm_TestLabel(1, 0, 0), mrm_JobPhaseLabel(),
                                                    mrm_Capacity().SetLoHi(0, 1e6));
    ASSERT_NE(m_Pool, nullptr);
  }

  const mrm_Consumption Figures() const { return mrm_GetConsumption(*m_Pool); }

  mrm_LargeBlockPool* m_Pool = nullptr;
};

// Sizes are whole blocks. Acquire pins; Unpin moves the bytes to the figure of the release type
// and Pin back; Discard of an unpinned block takes its charge back and leaves the peak.
TEST_F(LargeBlockPoolTest, PinningMovesBytesBetweenTheFigures) {
  EXPECT_EQ(m_Pool->GetAltNumber(), -1);
  mrm_MemBlockID none = m_Pool->Declare(0);
  EXPECT_EQ(m_Pool->GetSize(none), 0);
  m_Pool->Release(none);
  mrm_MemBlockID id = m_Pool->Declare(100000);
  EXPECT_EQ(m_Pool->GetPointer(id), nullptr);  // declared, no memory yet
  EXPECT_FALSE(m_Pool->Acquire(id));
  std::memset(m_Pool->GetPointer(id), 1, m_Pool->GetSize(id));
  EXPECT_EQ(Figures(), Held(1, 1, 131072));
  EXPECT_FALSE(m_Pool->Unpin(id, mrm_ReleaseType1));
  EXPECT_EQ(m_Pool->GetPointer(id), nullptr);
  EXPECT_EQ(Figures(), Held(1, 0, 0, 0, 131072));
  EXPECT_FALSE(m_Pool->Pin(id));
  EXPECT_EQ(Figures(), Held(1, 1, 131072));
  m_Pool->Unpin(id, mrm_ReleaseType0);
  EXPECT_EQ(Figures(), Held(1, 0, 0, 131072));
  EXPECT_FALSE(m_Pool->Discard(id));
  EXPECT_EQ(Figures(), Held(1, 0, 0));
  EXPECT_EQ(Figures().peakPinnedBytes, 131072);
  EXPECT_EQ(mrm_Manager::Instance().ConstGetJobConsumption(), Held(1, 0, 0));

  EXPECT_FALSE(m_Pool->Acquire(id));  // a discarded block can be acquired again
  EXPECT_FALSE(m_Pool->Release(id));
  EXPECT_EQ(id, mrm_NoMemBlock);
  EXPECT_TRUE(Figures().IsZero());
}

// A released ID is never valid again, even once its slot holds another block: every
// operation on it does nothing.
TEST_F(LargeBlockPoolTest, ReleasedAndUnknownIdsChangeNothing) {
  mrm_MemBlockID first = m_Pool->Declare(1);
  const mrm_MemBlockID released = first;
  m_Pool->Release(first);
  mrm_MemBlockID second = m_Pool->Declare(2 * 65536);
  EXPECT_NE(second, released);
  m_Pool->Acquire(second);
  const mrm_Consumption before = Figures();
  for (mrm_MemBlockID id : {released, static_cast<mrm_MemBlockID>(999), mrm_NoMemBlock}) {
    EXPECT_TRUE(m_Pool->Acquire(id));
    EXPECT_FALSE(m_Pool->Unpin(id, mrm_ReleaseType1));
    EXPECT_FALSE(m_Pool->Pin(id));
    EXPECT_FALSE(m_Pool->Discard(id));
    mrm_MemBlockID copy = id;
    EXPECT_FALSE(m_Pool->Release(copy));
    EXPECT_EQ(copy, id);
    EXPECT_EQ(m_Pool->GetSize(id), 0);
    EXPECT_EQ(m_Pool->GetPointer(id), nullptr);
    EXPECT_TRUE(mrm_LargeBlockPool::TransferMemory(id, *m_Pool, *m_Pool));
  }
  void* memory = m_Pool->GetPointer(second);
  EXPECT_FALSE(m_Pool->Acquire(second));  // it keeps the memory it has
  EXPECT_EQ(m_Pool->GetPointer(second), memory);
  EXPECT_EQ(Figures(), before);
  EXPECT_NE(memory, nullptr);
  m_Pool->Release(second);
}

// The block and its figures move; the job's figures stay.
TEST_F(LargeBlockPoolTest, TransferMovesABlockBetweenPools) {
  mrm_LargeBlockPool* other = mrm_LargeBlockPoolFactory::SpotStartup(
      mrm_TestLabel(2, 0, 0), mrm_JobPhaseLabel(), mrm_Capacity());
  mrm_MemBlockID pinned = m_Pool->Declare(1);
  mrm_MemBlockID unpinned = m_Pool->Declare(1);
  m_Pool->Acquire(pinned);
  m_Pool->Acquire(unpinned);
  m_Pool->Unpin(unpinned, mrm_ReleaseType0);
  const mrm_Consumption job = mrm_Manager::Instance().ConstGetJobConsumption();
  EXPECT_TRUE(mrm_LargeBlockPool::TransferMemory(pinned, *m_Pool, *other));
  EXPECT_TRUE(mrm_LargeBlockPool::TransferMemory(unpinned, *m_Pool, *other));
  EXPECT_TRUE(Figures().IsZero());
  EXPECT_EQ(mrm_GetConsumption(*other), Held(2, 1, 65536, 65536));
  EXPECT_EQ(mrm_Manager::Instance().ConstGetJobConsumption(), job);
  other->Release(pinned);
  other->Release(unpinned);
  EXPECT_TRUE(mrm_Manager::Instance().ConstGetJobConsumption().IsZero());
}

}  // namespace
