#include "nex_ExceptionFactory.h"

#include <gtest/gtest.h>

#include "VRKLnuLifecycle.h"
#include "VRKTestLibrary.h"
#include "omi_FatalError.h"

namespace {

class ExceptionFactoryTest : public VRKLibraryTest {};

TEST_F(ExceptionFactoryTest, PatternErrorsRaiseTheRegexErrorThatPersistsAsText) {
  try {
    VRKBasExceptionModel::RaisePatternError(4, "missing )");
  } catch (const VRKLnuRgxPatternException& error) {
    EXPECT_EQ(error.AsString(), "rgx_match: error in regex at offset 4: missing )");
    EXPECT_EQ(error.nex_TextException::AsString(),
              "rgx match: error in regex at offset 4: missing )");
    EXPECT_EQ(error.DynTypeId(), 0x1F0002u);
    EXPECT_EQ(error.FromFile(), "nex_ExceptionFactory");
    EXPECT_EQ(error.FromLine(), 14);
    // A copy is a plain text error: it keeps the stored text.
    std::unique_ptr<nex_Exception> copy(error.Copy());
    EXPECT_EQ(copy->AsString(), "rgx match: error in regex at offset 4: missing )");
    EXPECT_EQ(copy->FromLine(), 14);
  }
}

TEST_F(ExceptionFactoryTest, ExecErrorsRaiseTheRegexExecError) {
  try {
    VRKBasExceptionModel::RaiseExecError(-7);
  } catch (const nex_Exception& error) {
    EXPECT_EQ(error.AsString(), "rgx_match: exec error: -7");
    EXPECT_EQ(error.FromLine(), 21);
    EXPECT_NE(dynamic_cast<const VRKLnuRgxExecException*>(&error), nullptr);
  }
}

TEST(ExceptionFactoryLifecycle, TheFactoryIsThereOnlyWhilePackageNexIsUp) {
  int tally = 0;
  VRKLnuBasicUtils_initialize(tally);
  EXPECT_NE(dynamic_cast<nex_ExceptionFactory*>(VRKBasExceptionModel::getBehavior()), nullptr);
  VRKLnuBasicUtils_finalize(tally);
  EXPECT_EQ(VRKBasExceptionModel::getBehavior(), nullptr);
  EXPECT_THROW(VRKBasExceptionModel::RaiseExecError(1), omi_FatalError);
}

}  // namespace
