#include "strnatcmp.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace {

int Sign(int value) {
  return (value > 0) - (value < 0);
}

// The switch that sorts the trees' string keys this way is off by default.
TEST(NaturalOrderTest, DigitRunsCompareByValue) {
  EXPECT_FALSE(atr_getNaturalOrder());
  EXPECT_LT(strnatcmp("file9", "file10"), 0);
  EXPECT_EQ(strnatcmp("step12b", "step12b"), 0);
  EXPECT_LT(strnatcmp("step12a", "step12b"), 0);
  EXPECT_GT(strnatcmp("x2y10", "x2y9z"), 0);
  EXPECT_LT(strnatcmp("a", "a1"), 0);
  EXPECT_LT(strnatcmp("", "a"), 0);
  EXPECT_EQ(strnatcmp(nullptr, ""), 0);
  EXPECT_LT(strnatcmp("abc", "abc\xe4"), 0);  // other bytes compare unsigned
  EXPECT_LT(strnatcmp("99999999999999999999", "100000000000000000000"), 0);
}

TEST(NaturalOrderTest, LeadingZerosDecideOnlyBetweenEqualValues) {
  EXPECT_LT(strnatcmp("v007", "v7"), 0);
  EXPECT_LT(strnatcmp("v007", "v8"), 0);
  EXPECT_LT(strnatcmp("v07a", "v7b"), 0);
  EXPECT_LT(strnatcmp("v7a", "v07b"), 0);  // a later difference outweighs the zeros
}

TEST(NaturalOrderTest, IsAConsistentOrder) {
  std::vector<std::string> names = {"img12", "img10", "img2", "img1", "img02", "IMG3",
                                    "img",   "img1a", "a",    "10",   "9",     "img002x"};
  for (const std::string& a : names) {
    EXPECT_EQ(strnatcmp(a.c_str(), a.c_str()), 0);
    for (const std::string& b : names) {
      EXPECT_EQ(Sign(strnatcmp(a.c_str(), b.c_str())), -Sign(strnatcmp(b.c_str(), a.c_str())))
          << a << " vs " << b;
    }
  }
  std::sort(names.begin(), names.end(), [](const std::string& a, const std::string& b) {
    return strnatcmp(a.c_str(), b.c_str()) < 0;
  });
  EXPECT_EQ(names, (std::vector<std::string>{"9", "10", "IMG3", "a", "img", "img1", "img1a",
                                             "img02", "img2", "img002x", "img10", "img12"}));
}

}  // namespace
