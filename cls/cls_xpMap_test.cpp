#include "cls_xpMap.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "VRKTestMemento.h"
#include "cls_xoMap.h"

namespace {

using ::testing::ElementsAre;

using XpMapTest = VRKStoreTest;

TEST_F(XpMapTest, MapsOfValuesRoundTripValueBeforeKey) {
  cls_xpMapString2Float weights;
  weights.Insert("steel", 7.85f);
  store.WriteField("w", weights);
  EXPECT_THAT(store.Take(),
              ElementsAre("root: MakeWriteObjWithPtr w 230002#1", "root: CheckCollectionType 63 w",
                          "230002#1: MakeMapString2Prim<float>", "230002#1: Put steel=7.85"));
  const cls_xpMapString2Float back = store.ReadField<cls_xpMapString2Float>("w");
  EXPECT_THAT(store.Take(), ElementsAre("root: MakeReadObj w", "230002#1: GetUid",
                                        "230002#1: MakeMapString2Prim<float>", "230002#1: Value",
                                        "230002#1: Key"));
  EXPECT_EQ(back.ConstGet("steel"), 7.85f);
  EXPECT_TRUE(back.Uid() == weights.Uid());

  cls_xpMapInt2Int ints;
  for (int key : {-1, 0, 1 << 20})
    ints.Insert(key, key * 2);
  store.WriteField("i", ints);
  const cls_xpMapInt2Int intsBack = store.ReadField<cls_xpMapInt2Int>("i");
  EXPECT_EQ(intsBack.Count(), 3);
  EXPECT_EQ(intsBack.ConstGet(-1), -2);
  EXPECT_EQ(intsBack.ConstGet(1 << 20), 1 << 21);

  cls_xpMapString2String names;
  names.Insert("a", "alpha");
  store.WriteField("n", names);
  EXPECT_EQ(store.ReadField<cls_xpMapString2String>("n").ConstGet("a"), "alpha");

  cls_xpBtreeString2Uint ids;
  ids.InsertUnlessMember("mesh", 4000000000u);
  ids.InsertUnlessMember("load", 1);
  store.WriteField("b", ids);
  EXPECT_THAT(store.Take(), ::testing::Contains("root: CheckCollectionType 66 b"));
  const cls_xpBtreeString2Uint idsBack = store.ReadField<cls_xpBtreeString2Uint>("b");
  EXPECT_EQ(idsBack.Size(), 2);
  EXPECT_EQ(idsBack.ConstFind("mesh"), 4000000000u);

  cls_xpMapInt2Int assigned = ints;
  EXPECT_TRUE(assigned.Uid() == ints.Uid());
  assigned = cow_Map<int, int>();
  EXPECT_FALSE(assigned.Uid() == ints.Uid());
}

TEST_F(XpMapTest, MapsOfObjectsWriteEachElementThroughARequestAndReadItBeforeItsKey) {
  cls_xoMap<int, cls_xp1DArrayListInt> lists;
  lists.Insert(7, cls_xp1DArrayListInt(1));
  store.WriteField("o", lists);
  EXPECT_THAT(store.Take(),
              ElementsAre("root: MakeWriteObjWithPtr o 230002#1", "root: CheckCollectionType 3 o",
                          "230002#1: MakeMapInt2Obj", "230002#1: MakeWriteObjWithPtr 7 230001#2",
                          "230001#2: MakeListPrim<int> 1", "230001#2: Append 0"));
  const auto back = store.ReadField<cls_xoMap<int, cls_xp1DArrayListInt>>("o");
  EXPECT_THAT(store.Take(),
              ElementsAre("root: MakeReadObj o", "230002#1: GetUid", "230002#1: MakeMapInt2Obj",
                          "230002#1: MakeReadObj", "230001#2: GetUid",
                          "230001#2: MakeListPrim<int>", "230001#2: Next", "230002#1: Key"));
  ASSERT_TRUE(back.IsMember(7));
  EXPECT_EQ(back.ConstGet(7), lists.ConstGet(7));
  EXPECT_TRUE(back.ConstGet(7).Uid() == lists.ConstGet(7).Uid());

  cls_xoMap<cow_String, cls_xp1DArrayListFloat> floats;
  floats.Insert("f", cls_xp1DArrayListFloat(2));
  cls_xoMap<cow_String, cls_xp2DArrayDouble> arrays;
  arrays.Insert("s", cls_xp2DArrayDouble(1, 2));
  arrays.Insert("t", cls_xp2DArrayDouble(3, 1));
  store.WriteField("f", floats);
  store.WriteField("a", arrays);
  EXPECT_THAT(store.Take(), ::testing::Contains("root: CheckCollectionType 2 a"));
  EXPECT_EQ(store.ReadField<decltype(floats)>("f").ConstGet("f").Count(), 2);
  const auto arraysBack = store.ReadField<decltype(arrays)>("a");
  EXPECT_EQ(arraysBack.Count(), 2);
  EXPECT_EQ(arraysBack.ConstGet("t").Rows(), 3);
}

}  // namespace
