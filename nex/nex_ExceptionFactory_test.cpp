#include "nex_ExceptionFactory.h"

#include <gtest/gtest.h>

#include <memory>

#include "VRKTestLibrary.h"

namespace {

class ExceptionFactoryTest : public VRKLibraryTest {};

TEST_F(ExceptionFactoryTest, RegexErrorsRaiseTheLibrarysErrorsAtTheFactorysSite) {
  try {
    VRKBasExceptionModel::RaisePatternError(4, "missing )");
    FAIL() << "returned";
  } catch (const VRKLnuRgxPatternException& error) {
    EXPECT_EQ(error.AsString(), "rgx_match: error in regex at offset 4: missing )");
    EXPECT_EQ(error.DynTypeId(), 0x1F0002u);  // it persists as a text error
    EXPECT_EQ(error.FromFile(), "nex_ExceptionFactory");
    // A copy is a plain text error: it keeps the stored text and the site.
    std::unique_ptr<nex_Exception> copy(error.Copy());
    EXPECT_EQ(copy->AsString(), "rgx match: error in regex at offset 4: missing )");
    EXPECT_EQ(copy->FromLine(), 14);
  }
  try {
    VRKBasExceptionModel::RaiseExecError(-7);
    FAIL() << "returned";
  } catch (const VRKLnuRgxExecException& error) {
    EXPECT_EQ(error.AsString(), "rgx_match: exec error: -7");
    EXPECT_EQ(error.FromLine(), 21);
  }
}

}  // namespace
