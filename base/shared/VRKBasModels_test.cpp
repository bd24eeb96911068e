// The models through which the lower layers raise errors of the library above them.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "VRKBasExceptionModel.h"
#include "VRKBasUtlExceptionModel.h"
#include "omi_FatalError.h"

namespace {

using ::testing::AllOf;
using ::testing::Field;
using ::testing::Ne;
using ::testing::Property;
using ::testing::StrEq;
using ::testing::Throws;

struct PatternRaised {
  int offset;
};

class TestFactory : public VRKBasExceptionFactory {
 public:
  void RaisePatternError(int offset, const char*) override { throw PatternRaised{offset}; }
  void RaiseExecError(int) override {}  // returns: the model must still raise
};

auto FatalError(const char* text, ::testing::Matcher<int> errorNumber) {
  return Throws<omi_FatalError>(AllOf(Property(&omi_FatalError::Text, StrEq(text)),
                                      Property(&omi_FatalError::Errno, errorNumber)));
}

TEST(ExceptionModelTest, RaisesThroughTheFactoryOrAsFatalError) {
  EXPECT_THAT([] { VRKBasExceptionModel::RaisePatternError(4, "missing )"); },
              FatalError("regular expression error at offset 4: missing )", Ne(0)));
  TestFactory factory;
  EXPECT_TRUE(VRKBasExceptionModel::setBehavior(&factory));
  EXPECT_THAT([] { VRKBasExceptionModel::RaisePatternError(9, "x"); },
              Throws<PatternRaised>(Field(&PatternRaised::offset, 9)));
  EXPECT_THROW(VRKBasExceptionModel::RaiseExecError(3), omi_FatalError);
  VRKBasExceptionModel::setBehavior(nullptr);
}

TEST(ExceptionModelTest, SharedLayerRaisesSystemErrorsWithTheirText) {
  EXPECT_THAT([] { VRKBasUtlExceptionModel::RaiseSystemError(cow_SystemErrorCode(ENOENT)); },
              FatalError("No such file or directory", ENOENT));
}

}  // namespace
