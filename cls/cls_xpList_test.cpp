#include "cls_xpList.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <initializer_list>

#include "VRKTestMemento.h"
#include "cls_xp2DArray.h"

namespace {

using ::testing::ElementsAre;

template <class T>
cow_List<T> List(std::initializer_list<T> values) {
  cow_List<T> list;
  for (const T& value : values)
    list.Append(value);
  return list;
}

cow_2DArray<float> Grid(int rows, int columns) {
  cow_2DArray<float> grid(rows, columns);
  for (int i = 0; i < rows * columns; ++i)
    grid.Get(i / columns, i % columns) = i + 0.5f;
  return grid;
}

bool operator==(const cow_2DArray<float>& a, const cow_2DArray<float>& b) {
  if (a.Rows() != b.Rows() || a.Columns() != b.Columns()) return false;
  return std::equal(a.ConstData(), a.ConstData() + a.Rows() * a.Columns(), b.ConstData());
}

// Makes the value from its contents, writes it in a field of its own and reads it back: same
// contents, same identity.
template <class X, class C>
void ExpectRoundTrip(VRKTestStore& store, const char* field, X (*make)(const C&),
                     const C& contents) {
  const X value = make(contents);
  store.WriteField(field, value);
  const X back = store.ReadField<X>(field);
  EXPECT_TRUE(static_cast<const C&>(back) == contents) << field;
  EXPECT_TRUE(back.Uid() == value.Uid()) << field;
}

using XpListTest = VRKStoreTest;

TEST_F(XpListTest, EveryListClassRoundTrips) {
  ExpectRoundTrip(store, "i", cls_xpListIntFromCow, List({1, -2}));
  ExpectRoundTrip(store, "f", cls_xpListFloatFromCow, List({0.1f}));
  ExpectRoundTrip(store, "d", cls_xpListDoubleFromCow, List({1e300, -0.5}));
  ExpectRoundTrip(store, "s", cls_xpListStringFromCow, List<cow_String>({"a b", ""}));
  ExpectRoundTrip(store, "bl", cls_xp1DArrayListBoolFromCow, List({true, false}));
  ExpectRoundTrip(store, "dl", cls_xp1DArrayListDoubleFromCow, List({2.25}));
  ExpectRoundTrip(store, "fl", cls_xp1DArrayListFloatFromCow, List({-3.5f}));
  ExpectRoundTrip(store, "il", cls_xp1DArrayListIntFromCow, List({7, 8, 9}));
  ExpectRoundTrip(store, "sl", cls_xp1DArrayListStringFromCow, List<cow_String>({"x"}));
  ExpectRoundTrip(store, "ul", cls_xp1DArrayListUintFromCow, List({4000000000u}));
  ExpectRoundTrip(store, "e", cls_xp1DArrayIntFromCow, cow_List<int>());
  ExpectRoundTrip(store, "g", cls_xp2DArrayFloatFromCow, Grid(2, 3));
  ExpectRoundTrip(store, "g0", cls_xp2DArrayFloatFromCow, Grid(0, 0));
  const cls_xp2DArrayDouble doubles(2, 1);
  store.WriteField("gd", doubles);
  EXPECT_EQ(store.ReadField<cls_xp2DArrayDouble>("gd").Rows(), 2);
  const cls_xp2DArrayInt ints = cls_xp2DArrayIntFromCow(cow_2DArray<int>(1, 4));
  store.WriteField("gi", ints);
  EXPECT_EQ(store.ReadField<cls_xp2DArrayInt>("gi").Columns(), 4);
}

TEST_F(XpListTest, AListAndAnArrayGoOutValueByValueThroughOneCursor) {
  store.WriteField("l", cls_xpListIntFromCow(List({1, 2})));
  store.WriteField("e", cls_xpListString());  // an empty list still makes its cursor
  store.WriteField("g", cls_xp2DArrayFloatFromCow(Grid(2, 2)));
  EXPECT_THAT(store.Take(),
              ElementsAre("root: MakeWriteObjWithPtr l 230001#1", "root: CheckCollectionType 54 l",
                          "230001#1: MakeListPrim<int> 1", "230001#1: Append 1",
                          "230001#1: Append 2", "root: MakeWriteObjWithPtr e 230001#2",
                          "root: CheckCollectionType 55 e", "230001#2: MakeListPrim<cow_String> 1",
                          "root: MakeWriteObjWithPtr g 230001#3", "root: CheckCollectionType 83 g",
                          "230001#3: MakeListPrim<float> 2", "230001#3: Append 0.5",
                          "230001#3: Append 1.5", "230001#3: Append 2.5", "230001#3: Append 3.5"));
  store.ReadField<cls_xpListInt>("l");
  EXPECT_THAT(store.Take(),
              ElementsAre("root: MakeReadObj l", "230001#1: GetUid", "230001#1: MakeListPrim<int>",
                          "230001#1: Next", "230001#1: Next"));

  // A record with fewer values than a row, or with no columns, reads as 0 by 0.
  store.Record("g").items.resize(1);
  store.Record("g").width = 2;
  EXPECT_EQ(store.ReadField<cls_xp2DArrayFloat>("g").Rows(), 0);
  store.Record("g").width = 0;
  EXPECT_EQ(store.ReadField<cls_xp2DArrayFloat>("g").Columns(), 0);
}

TEST_F(XpListTest, IdentitiesFollowTheContents) {
  cls_xpListInt list = cls_xpListIntFromCow(List({1}));
  const cls_xpListInt copy(list);
  EXPECT_TRUE(copy.Uid() == list.Uid());
  list = List({2});  // new contents: a new stored object
  EXPECT_FALSE(copy.Uid() == list.Uid());
  const cls_Uid uid = list.Uid();
  list = static_cast<const cow_List<int>&>(list);
  EXPECT_TRUE(list.Uid() == uid);
  EXPECT_FALSE(cls_xpListIntFromCow(list).Uid() == uid);

  EXPECT_EQ(cls_xpListDouble(3), List({3.0}));  // one element, not three
  EXPECT_EQ(cls_xp1DArrayListDouble(3), List({0.0, 0.0, 0.0}));

  // A value read with a uid home hands it the stored identity when it dies; without a home
  // the identity dies with it.
  const cls_xp1DArrayListFloat floats = cls_xp1DArrayListFloatFromCow(List({1.5f}));
  store.WriteField("f", floats);
  cls_Uid home;
  {
    cls_ReadVisitor root(store.NewReader());
    const cls_xp1DArrayListFloat back(cls_ReadVisitor(root, cls_FieldHandle(0, "f")), &home);
    EXPECT_FALSE(home == floats.Uid());
    const cls_xp1DArrayListFloat copy(back);  // a copy has no home
  }
  EXPECT_TRUE(home == floats.Uid());
  EXPECT_EQ(floats.Uid().UseCount(), 3);  // floats, home and the store's table
  store.ReadField<cls_xp1DArrayListFloat>("f");
  EXPECT_EQ(floats.Uid().UseCount(), 3);
}

}  // namespace
