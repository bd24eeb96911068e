#include "utl_ExceptionFactory.h"

#include <errno.h>
#include <gtest/gtest.h>

#include <memory>

#include "VRKLnuLifecycle.h"
#include "omi_FatalError.h"

namespace {

TEST(UtlExceptionFactory, SystemErrorsRaiseTheLibrarysErrorOnlyWhilePackageUtlIsUp) {
  int tally = 0;
  VRKLnuBasicUtils_initialize(tally);
  try {
    VRKBasUtlExceptionModel::RaiseSystemError(cow_SystemErrorCode(ENOENT));
  } catch (const VRKLnuSystemErrorException& error) {
    EXPECT_EQ(error.AsString(), "System Error: No such file or directory");
    EXPECT_EQ(error.ErrorCode().m_CRTErrorCode, ENOENT);
    EXPECT_EQ(error.DynTypeId(), nex_TextException::TypeId());  // it persists as text
    EXPECT_EQ(error.FromFile(), "utl_ExceptionFactory");
    EXPECT_EQ(error.FromLine(), 12);
    // A copy is the plain text error, holding the system's text.
    std::unique_ptr<nex_Exception> copy(error.Copy());
    EXPECT_EQ(copy->AsString(), "No such file or directory");
  }
  VRKLnuBasicUtils_finalize(tally);
  EXPECT_THROW(VRKBasUtlExceptionModel::RaiseSystemError(cow_SystemErrorCode(EIO)), omi_FatalError);
}

}  // namespace
