// The models through which the lower layers raise errors of the library above them.
#include <gtest/gtest.h>

#include "VRKBasExceptionModel.h"
#include "VRKBasUtlExceptionModel.h"
#include "omi_FatalError.h"

namespace {

struct PatternRaised {
  int offset;
};

class TestFactory : public VRKBasExceptionFactory {
 public:
  void RaisePatternError(int offset, const char*) override { throw PatternRaised{offset}; }
  void RaiseExecError(int) override {}  // returns: the model must still raise
};

TEST(ExceptionModelTest, RaisesThroughTheFactoryOrAsFatalError) {
  try {
    VRKBasExceptionModel::RaisePatternError(4, "missing )");
  } catch (const omi_FatalError& error) {
    EXPECT_STREQ(error.Text(), "regular expression error at offset 4: missing )");
    EXPECT_NE(error.Errno(), 0);
  }

  TestFactory factory;
  EXPECT_TRUE(VRKBasExceptionModel::setBehavior(&factory));
  try {
    VRKBasExceptionModel::RaisePatternError(9, "x");
    ADD_FAILURE() << "returned";
  } catch (const PatternRaised& raised) {
    EXPECT_EQ(raised.offset, 9);
  }
  EXPECT_THROW(VRKBasExceptionModel::RaiseExecError(3), omi_FatalError);
  VRKBasExceptionModel::setBehavior(nullptr);
}

TEST(ExceptionModelTest, SharedLayerRaisesSystemErrorsWithTheirText) {
  try {
    VRKBasUtlExceptionModel::RaiseSystemError(cow_SystemErrorCode(ENOENT));
    ADD_FAILURE() << "returned";
  } catch (const omi_FatalError& error) {
    EXPECT_STREQ(error.Text(), "No such file or directory");
    EXPECT_EQ(error.Errno(), ENOENT);
  }
}

}  // namespace
