#include "rgx_split.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "VRKBasExceptionModel.h"
#include "VRKTestLibrary.h"
#include "omi_FatalError.h"

namespace {

using Fields = std::vector<std::string>;

Fields Split(const char* text, const char* pattern) {
  const cow_List<cow_String> fields = rgx_split(text, pattern);
  Fields result;
  for (int i = 0; i < fields.Count(); ++i)
    result.emplace_back(fields.ConstGet(i).c_str());
  return result;
}

using RgxSplitTest = VRKFootprintTest;

TEST_F(RgxSplitTest, KeepsEveryFieldBetweenMatches) {
  EXPECT_EQ(Split("a, b,,c", ",\\s*"), (Fields{"a", "b", "", "c"}));
  EXPECT_EQ(Split(",x,", ","), (Fields{"", "x", ""}));
  EXPECT_EQ(Split("", ";"), (Fields{""}));
  EXPECT_EQ(Split("a1b22c", "[0-9]+"), (Fields{"a", "b", "c"}));
  EXPECT_EQ(Split("abc", "x*"), (Fields{"abc"}));  // empty matches don't split
}

class RaisingFactory : public VRKBasExceptionFactory {
 public:
  void RaisePatternError(int offset, const char* text) override {
    throw std::to_string(offset) + " " + text;
  }
  void RaiseExecError(int) override {}
};

TEST_F(RgxSplitTest, BadPatternRaisesThroughTheExceptionModel) {
  EXPECT_THROW(rgx_split("text", "(unclosed"), omi_FatalError);
  RaisingFactory factory;
  VRKBasExceptionModel::setBehavior(&factory);
  EXPECT_THAT([] { rgx_split("text", "[a-"); },
              ::testing::Throws<std::string>(::testing::StartsWith("-1 ")));
  VRKBasExceptionModel::setBehavior(nullptr);
}

}  // namespace
