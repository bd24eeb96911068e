#include "cls_ArrayPrim.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "VRKTestMemento.h"
#include "cls_2dArrayPrim.h"

namespace {

using ::testing::ElementsAre;

using ArrayPrimTest = VRKStoreTest;

TEST_F(ArrayPrimTest, AMillionElementsPageThroughOneResidentBlock) {
  store.LogAgents(false);
  const VRKTestAgentCounts& counts = store.Agents();
  cls_ArrayPrim<double> array;
  store.WriteField("a", array);  // attaches the empty array
  ASSERT_TRUE(array.IsAttached());

  const int size = 1000000;
  const int blocks = (size + 2047) / 2048;
  for (int i = 0; i < size; ++i) {
    array.Append(i * 0.5);
    ASSERT_LE(array.BlocksInMemory(), 1) << i;
  }
  // Each full block went to the store when the next one began; growth read nothing.
  EXPECT_EQ(counts.writes, blocks - 1);
  EXPECT_EQ(counts.reads, 0);
  array.Flush();
  EXPECT_EQ(counts.writes, blocks);
  const std::vector<double>& stored = store.AgentData<double>("a");
  ASSERT_EQ(stored.size(), static_cast<size_t>(size));
  EXPECT_EQ(stored[size - 1], (size - 1) * 0.5);

  // Reading walks the blocks one at a time, each read once, none written (all clean).
  for (int i = 0; i < size; i += 1021) {
    ASSERT_EQ(array.ConstGet(i), i * 0.5);
    ASSERT_LE(array.BlocksInMemory(), 1);
  }
  EXPECT_EQ(counts.reads, blocks);
  EXPECT_EQ(counts.writes, blocks);

  // A changed element goes back when its block leaves memory, and comes back with it.
  array.Get(5000) = -1;
  EXPECT_EQ(array.ConstGet(0), 0.0);
  EXPECT_EQ(counts.writes, blocks + 1);
  EXPECT_EQ(stored[5000], -1.0);
  EXPECT_EQ(array.ConstGet(5000), -1.0);

  // Another array over the stored list sees it all.
  const cls_ArrayPrim<double> back = store.ReadField<cls_ArrayPrim<double>>("a");
  EXPECT_EQ(back.Size(), size);
  EXPECT_EQ(back.ConstGet(size - 1), (size - 1) * 0.5);
  EXPECT_TRUE(back.Uid() == array.Uid());
}

TEST_F(ArrayPrimTest, BlockBoundariesAndTheLastBlockTransferOnlyWhatIsStored) {
  cls_ArrayPrim<int> array;
  store.WriteField("a", array);
  store.Take();
  for (int i = 0; i < 2049; ++i)
    array.Append(i);  // 2048 starts a new block: no read
  array.Flush();
  EXPECT_THAT(store.Take(), ElementsAre("230001#1: agent Write 0+2048",
                                        "230001#1: agent Write 2048+1", "230001#1: agent Flush"));
  EXPECT_EQ(array.ConstGet(7), 7);
  EXPECT_THAT(store.Take(), ElementsAre("230001#1: agent Read 0+2048"));
  EXPECT_EQ(array.ConstGet(2048), 2048);
  EXPECT_THAT(store.Take(), ElementsAre("230001#1: agent Read 2048+1"));

  // AppendBlock goes straight to the store between two flushes, even with nothing to add.
  const int more[] = {-1, -2, -3};
  array.AppendBlock(more, 3);
  array.AppendBlock(more, 0);
  EXPECT_THAT(store.Take(), ElementsAre("230001#1: agent Flush", "230001#1: agent Write 2049+3",
                                        "230001#1: agent Flush", "230001#1: agent Flush",
                                        "230001#1: agent Flush"));
  EXPECT_EQ(array.Size(), 2052);
  EXPECT_EQ(array.ConstGet(2050), -2);  // the block of the old end is read again
  EXPECT_THAT(store.Take(), ElementsAre("230001#1: agent Read 2048+4"));

  // A second DBWrite of an attached array, even to a store that takes it, makes no agent.
  VRKTestStore other;
  other.WriteField("b", array);
  EXPECT_THAT(other.Take(), ElementsAre("root: MakeWriteObjWithPtr b 230001#1",
                                        "root: CheckCollectionType 54 b"));
}

TEST_F(ArrayPrimTest, WritingIntoAListWithElementsReportsTheConflictAndOverwritesItsStart) {
  cls_ArrayPrim<int> stored;
  store.WriteField("a", stored);
  stored.AppendBlock(std::vector<int>(3000, 9).data(), 3000);

  cls_ArrayPrim<int> array;
  array.Append(1);
  array.Append(2);
  testing::internal::CaptureStderr();
  array.DBWriteBody(cls_WriteVisitor(new VRKTestMementoWrite(store, store.Record("a"))));
  EXPECT_EQ(testing::internal::GetCapturedStderr(),
            "cls_ArrayPrim::DBWrite: Index conflicts(s) in list.\n");
  EXPECT_THAT(
      std::vector<int>(store.AgentData<int>("a").begin(), store.AgentData<int>("a").begin() + 3),
      ElementsAre(1, 2, 9));
  EXPECT_EQ(array.Size(), 2);
}

TEST_F(ArrayPrimTest, CopiesShareTheAgentAndTheLastOneOutDeletesIt) {
  const VRKTestAgentCounts& counts = store.Agents();
  cls_ArrayPrim<float> array;
  array.Append(1.5f);
  store.WriteField("a", array);
  {
    cls_ArrayPrim<float> copy(array);
    cls_ArrayPrim<float> assigned;
    assigned = array;
    EXPECT_EQ(store.LastAgent<float>()->Owners(), 3);
    EXPECT_EQ(store.LastAgent<float>()->RefCount(), 3);
    copy.Get(0) = 2.5f;  // the copies share the blocks too
    EXPECT_EQ(assigned.ConstGet(0), 2.5f);
    assigned.Detach();  // not the last: the identity stays
    EXPECT_TRUE(assigned.Uid() == array.Uid());
    EXPECT_FALSE(assigned.IsAttached());
  }
  EXPECT_EQ(counts.deleted, 0);
  VRKTestAgent<float>* agent = store.LastAgent<float>();
  EXPECT_EQ(agent->Owners(), 1);

  // The store says its list changed: the array takes its size and drops its blocks.
  array.Flush();
  agent->Data().push_back(7.0f);
  agent->MarkChanged();
  EXPECT_EQ(array.Refresh(), 1);
  EXPECT_EQ(array.Refresh(), 0);
  EXPECT_EQ(array.Size(), 2);
  EXPECT_EQ(array.BlocksInMemory(), 0);
  EXPECT_EQ(array.ConstGet(1), 7.0f);

  // A read-only agent is not flushed.
  const int flushes = counts.flushes;
  agent->SetReadOnly(true);
  array.Flush();
  EXPECT_EQ(counts.flushes, flushes);
  agent->SetReadOnly(false);

  const cls_Uid before = array.Uid();
  array.Detach();  // the last owner flushes, deletes the agent and takes a new identity
  EXPECT_EQ(counts.deleted, 1);
  EXPECT_EQ(counts.flushes, flushes + 1);
  EXPECT_FALSE(array.Uid() == before);
  EXPECT_EQ(array.ConstGet(1), 7.0f);  // the block in memory stays
}

TEST_F(ArrayPrimTest, MisuseIsReportedAndExecutionGoesOn) {
  cls_ArrayPrim<cow_String> array;
  for (int i = 0; i < 5000; ++i)
    array.Append(cow_String("x"));
  array.Release();  // unattached: every block stays
  EXPECT_EQ(array.BlocksInMemory(), 3);
  EXPECT_EQ(array.ConstGet(4999), "x");
  EXPECT_EQ(array.ConstGet(5000), "");  // the slot past the end passes the range test

  cls_2dArrayPrim<double> grid;
  grid.SetWidth(3);
  for (int i = 0; i < 6; ++i)
    grid.Append(i);
  EXPECT_EQ(grid.ConstGet(1, 2), 5.0);
  grid.Get(0, 1) = 9;
  EXPECT_EQ(grid.ConstGet(1), 9.0);

  testing::internal::CaptureStderr();
  array.Get(-1);
  array.ConstGet(5001);
  array.AppendBlock(nullptr, 4);
  grid.Get(3, 0);
  grid.ConstGet(-1, 0);
  grid.AppendBlock(nullptr, 4);
  EXPECT_EQ(testing::internal::GetCapturedStderr(),
            "In cls_ArrayPrim::Get() Index out of range.\n"
            "In cls_ArrayPrim::ConstGet() Index out of range.\n"
            "cls_ArrayPrim::AppendBlock: Collection must be associated with a database for this "
            "method.\n"
            "In cls_2dArrayPrim::Get() Index out of range.\n"
            "In cls_2dArrayPrim::ConstGet() Index out of range.\n"
            "cls_2dArrayPrim::AppendBlock: Collection must be associated with a database for this "
            "method.\n");
  EXPECT_EQ(array.Size(), 5000);

  // An attached array that lost its agent finds blocks missing.
  store.WriteField("g", grid);
  EXPECT_THAT(store.Take(), ::testing::Contains("root: CheckCollectionType 82 g"));
  grid.Release();
  grid.Detach();
  testing::internal::CaptureStderr();
  EXPECT_EQ(grid.ConstGet(4), 0.0);
  EXPECT_EQ(testing::internal::GetCapturedStderr(),
            "In cls_2dArrayPrim::GetBuffer() Missing agent.\n");
}

TEST(PCDeathTest, ABaseObjectCanNeitherFlushNorDetach) {
  EXPECT_DEATH(cls_PC().Flush(), "Can't flush non-specialized cls_PC object.");
  EXPECT_DEATH(cls_PC().Detach(), "Can't detach non-specialized cls_PC object.");
}

TEST(PCTest, LinkMovesAnObjectFromItsRingToStandBeforeAnother) {
  VRKTestOwners a, b, c;
  a.Link(&b);
  a.Link(&c);  // a, b, c
  EXPECT_EQ(a.Count(), 2);
  EXPECT_EQ(a.Next(), &b);
  EXPECT_EQ(a.Previous(), &c);
  VRKTestOwners d;
  d.Link(&b);  // b leaves a's ring
  EXPECT_EQ(a.Count(), 1);
  EXPECT_EQ(d.Count(), 1);
  c.Unlink();
  EXPECT_TRUE(a.IsLone());
  EXPECT_TRUE(c.IsLone());
}

}  // namespace
