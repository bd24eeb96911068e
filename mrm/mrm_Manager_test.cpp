#include "mrm_Manager.h"

#include <gtest/gtest.h>

#include "VRKTestLibrary.h"
#include "mrm_LargeBlockPool.h"
#include "mrm_Pool.h"
#include "mrm_Schedule.h"

namespace {

enum { kMatrix = 1, kBuffer, kSpot, kInner, kSmall };

// Labels are built with the library up: building one asks the manager for its printer.
mrm_TestLabel L(int name) {
  return mrm_TestLabel(name, 0, 0);
}

// Step 1 holds the phase kInner with kMatrix (alternatives of 10 and 20); a second step under
// the same label holds kBuffer and the small-block pool kSmall. Finalized on milestone 1, which
// takes alternative 1 of kMatrix and kSmall.
class ManagerTest : public VRKLibraryTest {
 protected:
  void SetUp() override {
    VRKLibraryTest::SetUp();
    mrm_Schedule plan;
    plan.NameMilestone(0, "lean");
    plan.NameMilestone(1, "rich");
    plan.DefMilestone(1, L(kMatrix), 1);
    plan.DefMilestone(1, L(kSmall), 1);
    plan.BeginPhase(mrm_StepPhaseLabel(1));
    plan.BeginPhase(L(kInner));
    plan.AddLargeBlockPool(L(kMatrix), mrm_Capacity().SetLoHi(0, 10), 0);
    plan.AddLargeBlockPool(L(kMatrix), mrm_Capacity().SetLoHi(0, 20), 1);
    plan.EndPhase();
    plan.EndPhase();
    plan.BeginPhase(mrm_StepPhaseLabel(1));
    plan.AddLargeBlockPool(L(kBuffer), mrm_Capacity().SetLoHi(0, 5), 0);
    plan.AddPool(L(kSmall), mrm_SmallBlockCapacity().SetOutToClientLoHi(0, 1e5), 0);
    plan.AddPool(L(kSmall), mrm_SmallBlockCapacity().SetOutToClientLoHi(0, 1e6), 1);
    plan.EndPhase();
    plan.Analyze();
    plan.Finalize(1);
    mrm_Manager::Instance().Adopt(plan);
  }
};

// Steps are taken in the order of the calls, whatever their numbers; a pool is reachable only
// while its phase is open, and starts at the selected alternative.
TEST_F(ManagerTest, PhasesFollowTheAdoptedSchedule) {
  mrm_Manager& manager = mrm_Manager::Instance();
  EXPECT_TRUE(manager.ConstGetJobConsumption().IsZero());
  manager.BeginPhase(L(kInner));  // not a step: refused under the job
  EXPECT_EQ(mrm_LargeBlockPoolFactory::Startup(L(kMatrix)), nullptr);
  manager.BeginPhase(mrm_StepPhaseLabel(1));
  EXPECT_EQ(mrm_LargeBlockPoolFactory::Startup(L(kMatrix)), nullptr);  // L(kInner) is not open
  manager.BeginPhase(L(kInner));
  mrm_LargeBlockPool* matrix = mrm_LargeBlockPoolFactory::Startup(L(kMatrix));
  ASSERT_NE(matrix, nullptr);
  EXPECT_EQ(matrix->GetAltNumber(), 1);
  EXPECT_EQ(mrm_GetCapacity(*matrix).hi, 20);
  EXPECT_EQ(mrm_LargeBlockPoolFactory::Startup(L(kMatrix)), nullptr);  // active already
  EXPECT_EQ(mrm_LargeBlockPoolFactory::GetPool(L(kMatrix)), matrix);
  EXPECT_EQ(mrm_PoolFactory::Startup(L(kMatrix)), nullptr);  // not a small-block pool

  manager.EndPhase(mrm_StepPhaseLabel(1));  // not the innermost: stays open
  mrm_LargeBlockPoolFactory::Shutdown(matrix);
  EXPECT_EQ(mrm_LargeBlockPoolFactory::GetPool(L(kMatrix)), nullptr);
  manager.EndPhase(L(kInner));
  EXPECT_EQ(mrm_LargeBlockPoolFactory::Startup(L(kMatrix)), nullptr);  // its phase is closed
  manager.EndPhase(mrm_StepPhaseLabel(1));

  manager.BeginPhase(mrm_StepPhaseLabel(1));  // the second step
  EXPECT_NE(mrm_LargeBlockPoolFactory::Startup(L(kBuffer)), nullptr);
  mrm_Pool* small = mrm_PoolFactory::Startup(L(kSmall));
  ASSERT_NE(small, nullptr);
  EXPECT_EQ(mrm_GetCapacity(*small).outToClientHi, 1e6);
  EXPECT_EQ(mrm_GetCapacity(small->ConstGetProvider()).hi, mrm_RoundToBlock(2150000));
  manager.EndPhase(mrm_StepPhaseLabel(1));
  manager.BeginPhase(mrm_StepPhaseLabel(3));  // past the last step: refused
  EXPECT_EQ(mrm_LargeBlockPoolFactory::SpotStartup(L(kSpot), mrm_StepPhaseLabel(3), mrm_Capacity()),
            nullptr);

  manager.TestResetSchedule();
  manager.BeginPhase(mrm_StepPhaseLabel(9));  // the first step again, by order
  manager.BeginPhase(L(kInner));
  EXPECT_EQ(mrm_LargeBlockPoolFactory::Startup(L(kMatrix)), matrix);  // restarted, kept
}

// Spot phases and pools stand beside the schedule. A pool whose phase has ended can't be shut
// down; it stays active.
TEST_F(ManagerTest, SpotPhasesAndPoolsNeedNoSchedule) {
  mrm_Manager& manager = mrm_Manager::Instance();
  manager.SpotBeginPhase(L(kInner));
  mrm_LargeBlockPool* spot =
      mrm_LargeBlockPoolFactory::SpotStartup(L(kSpot), L(kInner), mrm_Capacity().SetLoHi(0, 1));
  ASSERT_NE(spot, nullptr);
  EXPECT_EQ(spot->GetAltNumber(), -1);
  EXPECT_EQ(mrm_LargeBlockPoolFactory::Startup(L(kSpot)), nullptr);
  mrm_MemBlockID id = spot->Declare(1);
  spot->Acquire(id);
  manager.EndPhase(L(kInner));
  mrm_LargeBlockPoolFactory::Shutdown(spot);
  EXPECT_EQ(mrm_LargeBlockPoolFactory::GetPool(L(kSpot)), spot);
  EXPECT_EQ(manager.ConstGetJobConsumption().pinnedBytes, 65536);
  spot->Release(id);

  manager.TestReboot();  // a fresh manager: no pools, the job phase open again
  EXPECT_EQ(mrm_LargeBlockPoolFactory::GetPool(L(kSpot)), nullptr);
  EXPECT_NE(mrm_LargeBlockPoolFactory::SpotStartup(L(kSpot), mrm_JobPhaseLabel(), mrm_Capacity()),
            nullptr);
  manager.BeginPhase(mrm_StepPhaseLabel(1));  // no schedule any more: ignored
  EXPECT_EQ(mrm_LargeBlockPoolFactory::Startup(L(kBuffer)), nullptr);
}

}  // namespace
