#include "utl_RegionMassProps.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "VRKTestMemento.h"

namespace {

using RegionMassPropsTest = VRKStoreTest;

TEST_F(RegionMassPropsTest, RegionsCombineAboutTheirCommonCentre) {
  // Two point masses of 1 and 3 at x = 0 and x = 4: centre at x = 3; about it the moments
  // are 1*9 + 3*1 = 12 around y and z, none around x.
  const utl_RegionMassProps left(1, {0, 0, 0}, {0, 0, 0, 0, 0, 0});
  utl_RegionMassProps both(3, {4, 0, 0}, {0, 0, 0, 0, 0, 0});
  both += left;
  EXPECT_EQ(both.Mass(), 4);
  EXPECT_EQ(both.Center(0), 3);
  EXPECT_EQ(both.Inertia(0, 0), 0);
  EXPECT_EQ(both.Inertia(1, 1), 12);
  EXPECT_EQ(both.Inertia(2, 2), 12);

  // Off the axes the products of inertia appear, with their sign reversed, symmetrically.
  utl_RegionMassProps diagonal(1, {1, 1, 0}, {0.5, 0.5, 0.5, 0, 0, 0});
  diagonal += utl_RegionMassProps(1, {-1, -1, 0}, {0.5, 0.5, 0.5, 0, 0, 0});
  EXPECT_EQ(diagonal.Inertia(0, 1), -2);
  EXPECT_EQ(diagonal.Inertia(1, 0), -2);
  EXPECT_EQ(diagonal.Inertia(2, 2), 1 + 4);
  EXPECT_EQ(diagonal.Inertia(0, 2), 0);

  utl_RegionMassProps none;
  none += utl_RegionMassProps();
  EXPECT_TRUE(none == utl_RegionMassProps());
}

TEST_F(RegionMassPropsTest, RoundTripsFieldByField) {
  const utl_RegionMassProps plate(12.5, {0.5, 0.25, -1}, {0.3, 1.1, 1.4, 0.01, -0.02, 0.03});
  store.WriteField("mp", plate);
  EXPECT_EQ(store.Take().size(), 11u);  // the record and ten doubles
  EXPECT_EQ(store.Root().nested.at("mp")->values.at("m_Inertia.zx"), "0.03");
  const utl_RegionMassProps back = store.ReadField<utl_RegionMassProps>("mp");
  EXPECT_TRUE(back == plate);
  EXPECT_TRUE(back.Uid() == plate.Uid());
  store.Record("mp").values.erase("m_Mass");  // an absent field reads as 0
  EXPECT_EQ(store.ReadField<utl_RegionMassProps>("mp").Mass(), 0);
}

}  // namespace
