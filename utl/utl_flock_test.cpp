#include "utl_flock.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <cerrno>

#include "VRKTestLibrary.h"

namespace {

// Each open of the file is a holder of its own.
TEST(UtlFlock, TakesAndReleasesWholeFileLocksByTheirBsdCodes) {
  VRKScratchDir dir;
  const std::string path = dir.File("locked");
  int fd[3];
  for (int& f : fd)
    f = open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0644);
  const struct {
    int holder, operation, result, error;
  } steps[] = {
      {0, 3, -1, EINVAL},      {0, 12, -1, EINVAL}, {0, 6, 0, 0}, {1, 6, -1, EWOULDBLOCK},
      {1, 5, -1, EWOULDBLOCK}, {0, 8, 0, 0},        {1, 5, 0, 0}, {2, 1, 0, 0},
      {0, 6, -1, EWOULDBLOCK}, {1, 8, 0, 0},        {2, 8, 0, 0}, {0, 8, 0, 0},
  };
  for (const auto& step : steps) {
    errno = 0;
    EXPECT_EQ(utl_flock(fd[step.holder], step.operation), step.result)
        << step.holder << " " << step.operation;
    EXPECT_EQ(errno, step.error) << step.holder << " " << step.operation;
  }
  EXPECT_EQ(utl_flock(-1, 1), -1);
  EXPECT_EQ(errno, EBADF);
  for (int f : fd)
    close(f);
}

}  // namespace
