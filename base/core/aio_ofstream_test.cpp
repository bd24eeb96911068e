#include "aio_ofstream.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <unistd.h>

#include <string>

#include "VRKTestLibrary.h"

namespace {

class FileStreamTest : public ::testing::Test {
 protected:
  VRKScratchDir dir;
  const std::string name = dir.File("out.txt");
};

TEST_F(FileStreamTest, WritesTruncatesAndAppends) {
  {
    aio_ofstream file(name.c_str());
    ASSERT_TRUE(file.is_open());
    file << "first " << 1 << aio_endl;
  }
  {
    aio_ofstream file(name.c_str(), aio_ios::out | aio_ios::app);
    file << "second " << 2.5 << '\n';
  }
  EXPECT_EQ(VRKReadFile(name), "first 1\nsecond 2.5\n");
  {
    aio_ofstream file(name.c_str());
    file << "over";
    EXPECT_TRUE(file.close());
    EXPECT_FALSE(file.is_open());
  }
  EXPECT_EQ(VRKReadFile(name), "over");
}

TEST_F(FileStreamTest, LargeOutputPassesTheBufferInOrder) {
  std::string expected;
  {
    aio_ofstream file(name.c_str());
    const std::string chunk(3000, 'x');
    const std::string huge(3 * aio_ofstream::kBufferSize, 'y');
    for (int i = 0; i < 10; ++i) {
      file << i;
      file.write(chunk.c_str(), static_cast<int>(chunk.size()));
      expected += std::to_string(i) + chunk;
    }
    file.write(huge.c_str(), static_cast<int>(huge.size()));
    expected += huge;
  }
  EXPECT_EQ(VRKReadFile(name), expected);
}

TEST_F(FileStreamTest, SeekpRewritesInPlace) {
  {
    aio_ofstream file(name.c_str());
    file << "0123456789";
    file.seekp(2, aio_ios::beg) << "ab";
    file.seekp(-1, aio_ios::end) << "Z";
    EXPECT_TRUE(file.good());
  }
  EXPECT_EQ(VRKReadFile(name), "01ab45678Z");
}

TEST_F(FileStreamTest, FailuresLeaveTheStreamFailedAndQuiet) {
  aio_ofstream missing("/nonexistent-directory/file.txt");
  EXPECT_FALSE(missing.is_open());
  EXPECT_TRUE(missing.fail());
  missing << "discarded" << 42 << aio_endl;
  EXPECT_TRUE(missing.fail());

  aio_ofstream full("/dev/full");
  ASSERT_TRUE(full.is_open());
  full << "no room";
  full.flush();
  EXPECT_TRUE(full.fail());
  EXPECT_FALSE(full.close());
}

TEST_F(FileStreamTest, AttachedDescriptorIsFlushedButNotClosed) {
  const int descriptor = ::open(name.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0600);
  ASSERT_GE(descriptor, 0);
  {
    aio_ofstream stream(descriptor);
    stream << "through a descriptor";
  }
  EXPECT_EQ(::write(descriptor, "!", 1), 1);  // still open
  ::close(descriptor);
  EXPECT_EQ(VRKReadFile(name), "through a descriptor!");
}

TEST_F(FileStreamTest, StandardErrorReachesItsDescriptorAtOnce) {
  ::testing::internal::CaptureStderr();
  aio_cerr << "unit-buffered " << 7;
  EXPECT_EQ(::testing::internal::GetCapturedStderr(), "unit-buffered 7");
}

}  // namespace
