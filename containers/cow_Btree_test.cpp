#include "cow_Btree.h"

#include <gtest/gtest.h>

#include <vector>

#include "VRKBasSharedContainers.h"
#include "VRKTestLibrary.h"

namespace {

// Every test checks at its end that all memory went back.
using CowBtreeTest = VRKFootprintTest;

std::vector<cow_String> Names(const cow_Btree<cow_String, unsigned>& tree) {
  std::vector<cow_String> names;
  cow_BtreeIterator<cow_String, unsigned> it(tree);
  for (it.First(); !it.IsDone(); it.Next())
    names.push_back(it.CurrentKey());
  return names;
}

TEST_F(CowBtreeTest, CopiesShareUntilOneInserts) {
  cow_Btree<cow_String, unsigned> ids(0u);
  EXPECT_TRUE(ids.InsertUnlessMember("mesh", 12));
  EXPECT_FALSE(ids.InsertUnlessMember("mesh", 13));
  EXPECT_EQ(ids.ConstFind("mesh"), 12u);
  EXPECT_EQ(ids.ConstFind("load"), 0u);
  EXPECT_EQ((cow_Btree<cow_String, int>().ConstFind("x")), 0);  // value-initialized by default

  cow_Btree<cow_String, unsigned> copy = ids;
  EXPECT_FALSE(copy.InsertUnlessMember("mesh", 14));  // present: still shared
  EXPECT_EQ(&copy.ConstGetTree(), &ids.ConstGetTree());

  cow_BtreeIterator<cow_String, unsigned> walk(copy);
  EXPECT_TRUE(copy.InsertUnlessMember("load", 13));
  EXPECT_NE(&copy.ConstGetTree(), &ids.ConstGetTree());
  EXPECT_EQ(ids.Size(), 1);
  EXPECT_EQ(Names(copy), (std::vector<cow_String>{"load", "mesh"}));
  EXPECT_EQ(walk.CurrentKey(), "mesh");  // the iterator keeps the entries it started on
  walk.Next();
  EXPECT_TRUE(walk.IsDone());
}

}  // namespace
