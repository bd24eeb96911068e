#include "cls_SimpleArrayPrim.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "VRKTestMemento.h"

namespace {

using ::testing::ElementsAre;

using SimpleArrayPrimTest = VRKStoreTest;

TEST_F(SimpleArrayPrimTest, WritesAndReadsMoveThroughTheAgentAtAPosition) {
  cls_Uid kept;
  cls_SimpleArrayPrim<int> array(kept, 3);
  const int values[] = {1, 2, 3, 4, 5};
  testing::internal::CaptureStderr();
  array.Write(values, 5);
  EXPECT_EQ(array.Read(nullptr, 5), 0);
  EXPECT_EQ(testing::internal::GetCapturedStderr(),
            "cls_SimpleArrayPrim::AppendBlock: Collection must be associated with a database for "
            "this method.\n"
            "cls_SimpleArrayPrim::ReadBlock: Collection must be associated with a database for "
            "this method.\n");
  EXPECT_EQ(array.Size(), 0);

  store.WriteField("a", array);
  array.Write(values, 5);
  array.Write(values, 0);
  EXPECT_THAT(store.Take(),
              ElementsAre("root: MakeWriteObjWithPtr a 230001#1", "root: CheckCollectionType 54 a",
                          "230001#1: MakeAgentList<int> 3", "230001#1: agent Flush",
                          "230001#1: agent Write 0+5"));
  EXPECT_EQ(array.Size(), 5);
  array.Seek(2);
  int read[10] = {};
  EXPECT_EQ(array.Read(read, 10), 3);
  EXPECT_EQ(read[2], 5);
  EXPECT_EQ(array.Position(), 5);
  array.Seek(99);
  EXPECT_EQ(array.Position(), 5);
  array.Seek(-1);
  EXPECT_EQ(array.Position(), 0);

  // Read back into a local array, which hands the stored identity home when it goes.
  cls_Uid home;
  {
    cls_ReadVisitor root(store.NewReader());
    cls_SimpleArrayPrim<int> back(cls_ReadVisitor(root, cls_FieldHandle(0, "a")), &home);
    EXPECT_EQ(back.ExtentQuantum(), 3);
    EXPECT_EQ(back.Size(), 5);
    const cls_SimpleArrayPrim<int> copy(back);  // shares the agent, with no home
    const cls_SimpleArrayPrim<int> renamed(cls_Uid(), back);
    EXPECT_TRUE(copy.Uid() == back.Uid());
    EXPECT_FALSE(renamed.Uid() == back.Uid());
    EXPECT_EQ(store.LastAgent<int>()->Owners(), 3);
  }
  EXPECT_EQ(store.Agents().deleted, 1);
  EXPECT_TRUE(home == array.Uid());
  EXPECT_TRUE(kept == array.Uid());
}

}  // namespace
