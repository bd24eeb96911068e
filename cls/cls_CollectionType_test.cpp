#include "cls_CollectionType.h"

#include <gtest/gtest.h>

#include "cow_String.h"

namespace {

template <class T>
int Fix(int family) {
  return cls_CollectionTypeFix(static_cast<cls_CollectionType>(family), static_cast<T*>(nullptr));
}

TEST(CollectionTypeFix, CombinesEveryFamilyWithEveryElement) {
  // bool, double, float, int, cow_String, unsigned; the unsigned column skips 56 and 86.
  const int expected[][7] = {
      {50, 51, 52, 53, 54, 55, 57},        {60, 61, 62, 63, 64, 65, 66},
      {70, 71, 72, 73, 74, 75, 76},        {80, 81, 82, 83, 84, 85, 87},
      {90, 91, 92, 93, 94, 95, 96},        {100, 101, 102, 103, 104, 105, 106},
      {110, 111, 112, 113, 114, 115, 116},
  };
  for (const auto& row : expected) {
    const int family = row[0];
    SCOPED_TRACE(family);
    EXPECT_EQ(Fix<bool>(family), row[1]);
    EXPECT_EQ(Fix<double>(family), row[2]);
    EXPECT_EQ(Fix<float>(family), row[3]);
    EXPECT_EQ(Fix<int>(family), row[4]);
    EXPECT_EQ(Fix<cow_String>(family), row[5]);
    EXPECT_EQ(Fix<unsigned>(family), row[6]);
  }
}

TEST(CollectionTypeFix, MapsObjectMapsOnlyByIntAndStringKeysAndLeavesOtherValues) {
  EXPECT_EQ(Fix<int>(5), 3);
  EXPECT_EQ(Fix<cow_String>(5), 2);
  EXPECT_EQ(Fix<double>(5), 5);
  EXPECT_EQ(Fix<float>(53), 53);  // a tag already combined
  EXPECT_EQ(Fix<int>(120), 120);
}

TEST(CollectionsMatch, GenericObjectMapsSatisfyExactDeclarationsOnlyOneWay) {
  // {have, want}: the same tag, or a wanted generic object map (2 by string key, 3 by int key)
  // that a family with a fitting key satisfies; never the reverse.
  const int matching[][2] = {{53, 53}, {4, 2}, {90, 2}, {93, 2}, {116, 2}, {103, 3}};
  const int other[][2] = {{53, 54}, {97, 2}, {2, 93}, {103, 2}, {93, 3}, {107, 3}};
  for (const auto& m : matching)
    EXPECT_TRUE(cls_CollectionsMatch(m[0], m[1])) << m[0] << " " << m[1];
  for (const auto& m : other)
    EXPECT_FALSE(cls_CollectionsMatch(m[0], m[1])) << m[0] << " " << m[1];
}

}  // namespace
