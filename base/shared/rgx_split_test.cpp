#include "rgx_split.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "VRKBasExceptionModel.h"
#include "VRKTestLibrary.h"
#include "omi_FatalError.h"

namespace {

std::vector<std::string> Split(const char* text, const char* pattern) {
  const cow_List<cow_String> fields = rgx_split(text, pattern);
  std::vector<std::string> result;
  for (int i = 0; i < fields.Count(); ++i)
    result.emplace_back(fields.ConstGet(i).c_str());
  return result;
}

using Fields = std::vector<std::string>;
using RgxSplitTest = VRKFootprintTest;

TEST_F(RgxSplitTest, KeepsEveryFieldBetweenMatches) {
  EXPECT_EQ(Split("a, b,,c", ",\\s*"), (Fields{"a", "b", "", "c"}));
  EXPECT_EQ(Split(",x,", ","), (Fields{"", "x", ""}));
  EXPECT_EQ(Split("no separator", ";"), (Fields{"no separator"}));
  EXPECT_EQ(Split("", ";"), (Fields{""}));
  EXPECT_EQ(Split("a1b22c", "[0-9]+"), (Fields{"a", "b", "c"}));
  EXPECT_EQ(Split("abc", "x*"), (Fields{"abc"}));  // empty matches don't split
}

struct PatternRaised {
  int offset;
  std::string text;
};

class RaisingFactory : public VRKBasExceptionFactory {
 public:
  void RaisePatternError(int offset, const char* text) override {
    throw PatternRaised{offset, text};
  }
  void RaiseExecError(int) override {}
};

TEST_F(RgxSplitTest, BadPatternRaisesThroughTheExceptionModel) {
  try {
    rgx_split("text", "(unclosed");
    ADD_FAILURE() << "returned";
  } catch (const omi_FatalError& error) {
    EXPECT_NE(std::string(error.Text()).find("regular expression error"), std::string::npos);
  }

  RaisingFactory factory;
  VRKBasExceptionModel::setBehavior(&factory);
  try {
    rgx_split("text", "[a-");
    ADD_FAILURE() << "returned";
  } catch (const PatternRaised& raised) {
    EXPECT_EQ(raised.offset, -1);
    EXPECT_FALSE(raised.text.empty());
  }
  VRKBasExceptionModel::setBehavior(nullptr);
}

}  // namespace
