#include "uti_CoordCont3D.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "VRKTestMemento.h"
#include "aio_ostrstream.h"
#include "cls_MetadataRegistrar.h"
#include "pdc_PPerrMementoWrite.h"
#include "pnt_PrettyPrint.h"

namespace {

using ::testing::ElementsAre;

using CoordTest = VRKStoreTest;

// The record the printer makes of `object`, on a printer of width 78 and step 2.
template <class T>
std::string Printed(const T& object) {
  aio_ostrstream out;
  pnt_PrettyPrint printer(out, 78, 2);
  {
    const cls_ClassRegistrar& registry = cls_MetadataRegistrar::Instance().GetWorkingSet();
    cls_WriteVisitor root(new pdc_PPerrMementoWrite(&registry, object.DynTypeId(), &printer));
    object.DBWrite(root);
  }
  printer.Flush();
  return out.str().c_str();
}

TEST_F(CoordTest, APointIsThreeCoordinatesWithAnIdentity) {
  const uti_Coord3D p(1.0f, 2.5f, -3.0f);
  const uti_Coord3D copy = p;
  EXPECT_EQ(p[1], 2.5f);
  EXPECT_EQ(p.Z(), -3.0f);
  EXPECT_TRUE(copy == p);
  EXPECT_TRUE(copy.Uid() == p.Uid());
  EXPECT_TRUE(uti_Coord3D() != p);

  store.WriteField("p", p);
  EXPECT_THAT(
      store.Take(),
      ElementsAre("root: MakeWriteObjWithPtr p 2001c#1", "2001c#1: MakeWriteObjWithPtr c 230001#2",
                  "2001c#1: CheckCollectionType 53 c", "230001#2: MakeListPrim<float> 1",
                  "230001#2: Append 1", "230001#2: Append 2.5", "230001#2: Append -3"));
  const uti_Coord3D back = store.ReadField<uti_Coord3D>("p");
  EXPECT_TRUE(back == p);
  EXPECT_TRUE(back.Uid() == p.Uid());
  EXPECT_EQ(Printed(p),
            "\n<< CLASS NAME: uti_Coord3D\n  c: \n  [\n    1.\n    2.5\n    -3.\n  ]\n>>\n\n");
}

TEST_F(CoordTest, AContainerIsFlatUntilAPointChanges) {
  const float xyz[] = {0, 0, 0, 1, 2, 3};
  uti_CoordCont3D nodes(xyz, 2);
  ASSERT_NE(nodes.ConstFlat(), nullptr);
  EXPECT_EQ(nodes.Count(), 2);
  EXPECT_EQ(nodes.ConstGet(1, 2), 3.0f);
  EXPECT_TRUE(nodes.ConstGet(1) == uti_Coord3D(1, 2, 3));
  const uti_CoordCont3D flat = nodes;
  nodes.Append(uti_Coord3D(4, 5, 6));
  EXPECT_EQ(nodes.ConstFlat(), nullptr);
  EXPECT_EQ(nodes.Count(), 3);
  EXPECT_EQ(flat.Count(), 2);  // the copy keeps its contents
  nodes.Set(2, uti_Coord3D(1, 2, 3));
  EXPECT_EQ(nodes.ConstGet(2, 0), 1.0f);
  uti_CoordCont3D list;
  list.Append(uti_Coord3D(0, 0, 0));
  list.Append(uti_Coord3D(1, 2, 3));
  EXPECT_TRUE(list == flat);
  EXPECT_FALSE(list == nodes);
}

TEST_F(CoordTest, AContainerStoresItsCoordinatesThroughAListOfFloats) {
  const float xyz[] = {0.5f, 0, 0, 1, 2, 3};
  const uti_CoordCont3D flat(xyz, 2);
  store.WriteField("flat", flat);
  EXPECT_THAT(
      store.Take(),
      ElementsAre("root: MakeWriteObjWithPtr flat 2001d#1", "2001d#1: Write(int) numCoord=2",
                  "2001d#1: MakeWriteObjWithPtr tempCoord 230001#2",
                  "2001d#1: CheckCollectionType 53 tempCoord", "230001#2: MakeAgentList<float> 3",
                  "230001#2: agent Flush", "230001#2: agent Write 0+6", "230001#2: agent Flush",
                  "230001#2: agent deleted"));
  uti_CoordCont3D list;
  list.Append(uti_Coord3D(7, 8, 9));
  store.WriteField("list", list);  // one value at a time
  EXPECT_THAT(store.Take(), ::testing::Contains("230001#4: agent Write 2+1"));

  const uti_CoordCont3D back = store.ReadField<uti_CoordCont3D>("flat");
  EXPECT_THAT(store.Take(),
              ElementsAre("root: MakeReadObj flat", "2001d#1: Read numCoord", "2001d#1: GetUid",
                          "2001d#1: MakeReadObj tempCoord", "230001#2: MakeAgentList<float>",
                          "230001#2: GetUid", "230001#2: agent Read 0+6", "230001#2: agent Flush",
                          "230001#2: agent deleted"));
  EXPECT_TRUE(back == flat);
  EXPECT_TRUE(back.Uid() == flat.Uid());
  EXPECT_TRUE(store.ReadField<uti_CoordCont3D>("list") == list);

  EXPECT_EQ(Printed(flat),
            "\n<< CLASS NAME: uti_CoordCont3D\n  numCoord: 2\n  tempCoord: FLOAT LIST\n>>\n\n");
}

}  // namespace
