#include "utl_File.h"

#include <dirent.h>
#include <fcntl.h>
#include <pthread.h>
#include <signal.h>
#include <sys/mman.h>
#include <sys/resource.h>
#include <sys/statvfs.h>
#include <sys/wait.h>
#include <unistd.h>

#include <fstream>
#include <string>

#include "VRKTestChild.h"
#include "VRKTestLibrary.h"
#include "nex_AssertException.h"
#include "utl_DiskAttributes.h"
#include "utl_FileException.h"
#include "utl_SystemErrorHandler.h"

namespace {

class UtlFileTest : public VRKLibraryTest {
 protected:
  std::string Create(const std::string& name, const std::string& content) {
    const std::string path = m_Dir.File(name);
    std::ofstream(path, std::ios::binary) << content;
    return path;
  }

  VRKScratchDir m_Dir;
};

TEST_F(UtlFileTest, OpensAtFirstUseAndTellsAMissingFileFromOtherFailures) {
  const std::string missing = m_Dir.File("missing");
  utl_File reader(missing.c_str(), utl_AccessRead, utl_ShareDefault);  // touches nothing
  EXPECT_EQ(VRKFailureText<utl_FileExceptionNoFile>([&] { reader.FileSize(); }),
            "*** Error: No such file (utl_File: in OpenRead)\nfile name: " + missing);
  utl_File updater(missing.c_str(), utl_AccessUpdate, utl_ShareDefault);
  EXPECT_THROW(updater.Seek(0), utl_FileExceptionNoFile);

  // A missing directory is an open failure with the system's text, not a missing file.
  const std::string deeper = m_Dir.File("nodir/file");
  utl_File lost(deeper.c_str(), utl_AccessRead, utl_ShareDefault);
  EXPECT_EQ(VRKFailureText<utl_FileExceptionOpen>([&] { lost.Init(); }),
            "*** Error: File open failed (utl_File: CreateFile in OpenRead)\nerror: No such file "
            "or directory\nfile: " +
                deeper);
  utl_File directory(m_Dir.Path().c_str(), utl_AccessRead, utl_ShareDefault);
  EXPECT_THROW(directory.Init(), utl_FileExceptionOpen);

  // Write access creates, or truncates, at the first operation and not before.
  const std::string existing = Create("existing", "old content");
  {
    utl_File writer(existing.c_str(), utl_AccessWrite, utl_ShareDefault);
    utl_File creator(missing.c_str(), utl_AccessWrite, utl_ShareDefault);
    EXPECT_EQ(VRKReadFile(existing), "old content");
    EXPECT_NE(access(missing.c_str(), F_OK), 0);
    EXPECT_EQ(writer.FileSize().Value(), 0);
    EXPECT_EQ(creator.Location().Value(), 0);
    EXPECT_EQ(access(missing.c_str(), F_OK), 0);
    EXPECT_EQ(writer.Write("abc", 3), 3);
    // Open on an object already open keeps its file.
    writer.Open(missing.c_str(), utl_AccessUpdate, utl_ShareAll);
    EXPECT_EQ(writer.Write("de", 2), 2);
  }
  EXPECT_EQ(VRKReadFile(existing), "abcde");
  EXPECT_EQ(VRKReadFile(missing), "");
}

TEST_F(UtlFileTest, DescriptorsAreCloseOnExec) {
  const std::string path = Create("data", "x");
  utl_File file(path.c_str(), utl_AccessRead, utl_ShareDefault);
  file.Init();
  int checked = 0;
  DIR* fds = opendir("/proc/self/fd");
  while (dirent* entry = readdir(fds)) {
    char target[4096] = {};
    const std::string link = std::string("/proc/self/fd/") + entry->d_name;
    if (readlink(link.c_str(), target, sizeof target - 1) <= 0 || path != target) continue;
    EXPECT_NE(fcntl(atoi(entry->d_name), F_GETFD) & FD_CLOEXEC, 0);
    ++checked;
  }
  closedir(fds);
  EXPECT_EQ(checked, 1);
}

TEST_F(UtlFileTest, ReadsZeroFillWhatTheFileDoesNotHave) {
  utl_File file(Create("data", "0123456789abcd").c_str(), utl_AccessRead, utl_ShareDefault);
  char buffer[10];
  file.Seek(10);
  EXPECT_EQ(file.Read(buffer, 10), 4);
  EXPECT_EQ(std::string(buffer, 10), std::string("abcd\0\0\0\0\0\0", 10));
  std::fill(buffer, buffer + 10, 'x');
  EXPECT_EQ(file.Read(buffer, 10), 0);
  EXPECT_EQ(std::string(buffer, 10), std::string(10, '\0'));
}

TEST_F(UtlFileTest, ReadOnlyFilesRefuseWritesFlushesAndExtends) {
  const std::string path = Create("data", "keep");
  utl_File file(path.c_str(), utl_AccessRead, utl_ShareDefault);
  EXPECT_EQ(
      VRKFailureText<utl_FileExceptionWrite>([&] { file.Write("xx", 2); }),
      "*** Error: Write failed (utl_File: attempt to write to a read-only file.)\nfile name: " +
          path);
  EXPECT_EQ(
      VRKFailureText<utl_FileExceptionWrite>([&] { file.WriteShortAllowed("xx", 2); }),
      "*** Error: Write failed (utl_File: attempt to write to a read-only file.)\nfile name: " +
          path);
  EXPECT_EQ(
      VRKFailureText<utl_FileExceptionFlush>([&] { file.Flush(); }),
      "*** Error: Flush failed (utl_File: attempt to flush a read-only file.)\nfile name: " + path);
  EXPECT_EQ(VRKFailureText<nex_TextException>([&] { file.Extend(100); }),
            "utl_File::Extend - attempt to extend a read-only file.");
  EXPECT_EQ(VRKReadFile(path), "keep");
}

// The templates that no ordinary test reaches, each exactly.
TEST_F(UtlFileTest, FailureTextsFollowTheirTemplates) {
  const struct {
    std::string text, expected;
  } cases[] = {
      {utl_FileExceptionClose(EBADF, "f", nex_Translate("CloseHandle")).AsString().c_str(),
       "***ERROR: File close failed (utl_File: CloseHandle)\nerror: Bad file descriptor\nfile: f"},
      {utl_FileExceptionFull("f").AsString().c_str(),
       "*** Error: Free disk space depleted\nfile name: %2$s"},
      {utl_FileExceptionSize(EIO, "f", nex_Translate("GetFileSize")).AsString().c_str(),
       "*** Error: Get file size failed (utl_File: GetFileSize)\nerror: Input/output error\n"
       "file: f"},
      {utl_FileExceptionLocation(ESPIPE, "f", nex_Translate("SetFilePointer")).AsString().c_str(),
       "*** Error: Get file location failed (utl_File: SetFilePointer)\nerror: Illegal seek\n"
       "file: f"},
  };
  for (const auto& c : cases)
    EXPECT_EQ(c.text, c.expected);
  EXPECT_EQ(VRKFailureText<utl_FileExceptionSeek>([&] {
              utl_File file(Create("data", "").c_str(), utl_AccessRead, utl_ShareDefault);
              file.Seek(-1);
            }),
            "*** Error: Seek failed (utl_File: SetFilePointer)\nerror: Invalid argument\nfile: " +
                m_Dir.File("data"));
}

TEST_F(UtlFileTest, ExtendKeepsThePositionAndTheLastBytes) {
  const std::string path = Create("data", "0123456789");
  utl_File file(path.c_str(), utl_AccessUpdate, utl_ShareDefault);
  file.Seek(3);
  file.Extend(8);
  EXPECT_EQ(file.Location().Value(), 3);
  EXPECT_EQ(VRKReadFile(path), "01234567");
  file.Extend(12);
  EXPECT_EQ(VRKReadFile(path), std::string("01234567\0\0\0\0", 12));
  // Below four bytes the file is cut, then the step after fails.
  EXPECT_EQ(
      VRKFailureText<utl_FileExceptionExtend>([&] { file.Extend(2); }),
      "*** Error: Extend failed (utl_File: SetFilePointer 3)\nerror: Invalid argument\nfile: " +
          path);
  EXPECT_EQ(VRKReadFile(path), "01");
}

TEST_F(UtlFileTest, PositionsBeyondFourGibibytes) {
  const std::string path = m_Dir.File("big");
  const int64_t allOnes = 0x1FFFFFFFF;  // low 32 bits all ones
  utl_File file(path.c_str(), utl_AccessWrite, utl_ShareDefault);
  file.Seek(allOnes);
  EXPECT_EQ(file.Location().Value(), allOnes);
  EXPECT_EQ(file.Write("tail", 4), 4);
  EXPECT_EQ(file.FileSize().Value(), allOnes + 4);
  char buffer[8];
  file.Seek(allOnes - 2);
  EXPECT_EQ(file.Read(buffer, 8), 6);
  EXPECT_EQ(std::string(buffer, 8), std::string("\0\0tail\0\0", 8));
  file.Extend(int64_t{5} << 32);
  EXPECT_EQ(file.FileSize().Value(), int64_t{5} << 32);
  EXPECT_EQ(file.Location().Value(), allOnes + 4);
  struct stat status;
  ASSERT_EQ(stat(path.c_str(), &status), 0);
  EXPECT_LT(status.st_blocks * 512, 1 << 20) << "the file is not sparse";
}

TEST_F(UtlFileTest, DiffAsInt32HoldsToTheIntRange) {
  const struct {
    int64_t a, b;
    bool fits;
  } cases[] = {
      {2147483647, 0, true},
      {0, 2147483648, true},
      {2147483648, 0, false},
      {0, 2147483649, false},
      {int64_t{9} << 40, (int64_t{9} << 40) - 5, true},
      {INT64_MAX, INT64_MIN, false},
  };
  for (const auto& c : cases) {
    if (c.fits) {
      EXPECT_EQ(utl_FileOffset(c.a).DiffAsInt32(c.b), c.a - c.b);
    } else {
      EXPECT_EQ(VRKFailureText<nex_AssertException>([&] { utl_FileOffset(c.a).DiffAsInt32(c.b); }),
                "d >= INT_MIN && d <= INT_MAX");
    }
  }
}

TEST_F(UtlFileTest, DiskAttributesGiveTheSpaceFreeToTheCaller) {
  struct statvfs status;
  ASSERT_EQ(statvfs(m_Dir.Path().c_str(), &status), 0);
  const double expected = double(status.f_bavail) * status.f_frsize;
  const double reported = double(utl_DiskAttributes(m_Dir.Path().c_str()).GetFreeDiskSpace());
  EXPECT_NEAR(reported, expected, 64.0 * (1 << 20));
  const std::string missing = m_Dir.File("none");
  EXPECT_EQ(VRKFailureText<nex_TextException>(
                [&] { utl_DiskAttributes(missing.c_str()).GetFreeDiskSpace(); }),
            "error: 2:  could not get free space for \"" + missing + "\"\n");
}

// A full disk, as a file size limit, met by each way of writing.
TEST_F(UtlFileTest, AFullDiskFailsOrWarnsAsTheHandlerSays) {
  if (VRKChildRole() == "fulldisk") {
    rmdir(m_Dir.Path().c_str());  // the child works in its parent's directory
    const rlimit limit = {4096, 4096};
    setrlimit(RLIMIT_FSIZE, &limit);
    signal(SIGXFSZ, SIG_IGN);
    const std::string path = VRKChildArgs()[0];
    utl_File file(path.c_str(), utl_AccessWrite, utl_ShareDefault);
    const std::string block(3000, 'b');
    EXPECT_EQ(file.Write(block.data(), 3000), 3000);
    EXPECT_THROW(file.Write(block.data(), 3000), utl_FileExceptionFull);
    EXPECT_EQ(
        VRKFailureText<utl_FileExceptionWrite>([&] { file.Write(block.data(), 10); }),
        "*** Error: Write failed (utl_File: WriteFile)\nerror: File too large\nfile: " + path);
    file.Seek(4000);
    EXPECT_EQ(file.WriteShortAllowed(block.data(), 3000), 96);
    EXPECT_EQ(
        VRKFailureText<utl_FileExceptionExtend>([&] { file.Extend(8192); }),
        "*** Error: Extend failed (utl_File: SetEndOfFile)\nerror: File too large\nfile: " + path);
    utl_SystemErrorHandler::Instance().isActive = true;
    file.Seek(3000);
    EXPECT_EQ(file.Write(block.data(), 3000), 1096);  // prints instead
    VRKChildExit(::testing::Test::HasFailure() ? 1 : 0);
  }
  VRKChild child("fulldisk");
  child.args = {m_Dir.File("full")};
  const VRKChildResult result = child.Run();
  EXPECT_EQ(result.exitCode, 0) << result.out << result.err;
  EXPECT_EQ(result.out, "Lunara analysis error: No disk space available\n");
}

// Access and sharing of the holder (rows) and of a second opening (columns), in the order
// read, update, write, each with sharing default, read, all. '+': the second opening works.
const char* const kShareMatrix[9] = {
    "+++++++++", "+++------", "+++++++++",  // read
    "+-+------", "+-+------", "+-+--+--+",  // update
    "+-+------", "+-+------", "+-+--+--+",  // write
};

utl_FileAccess AccessOf(int mode) {
  return static_cast<utl_FileAccess>(mode / 3);
}
utl_FileSharing SharingOf(int mode) {
  return static_cast<utl_FileSharing>(mode % 3);
}

void WaitForFile(const std::string& path) {
  for (int i = 0; i < 30000 && access(path.c_str(), F_OK) != 0; ++i)
    usleep(1000);
}

// Whether an opening works; a refusal must say that the file is busy.
bool Opens(const std::string& path, int mode) {
  utl_File file(path.c_str(), AccessOf(mode), SharingOf(mode));
  try {
    file.Init();
    return true;
  } catch (const utl_FileExceptionOpen& failure) {
    EXPECT_NE(std::string(failure.AsString().c_str()).find("\nerror: Device or resource busy\n"),
              std::string::npos);
    return false;
  }
}

TEST_F(UtlFileTest, SharingModesHoldBetweenProcesses) {
  if (VRKChildRole() == "holder") {
    rmdir(m_Dir.Path().c_str());
    const std::vector<std::string> args = VRKChildArgs();
    const int mode = std::stoi(args[1]);
    utl_File file(args[0].c_str(), AccessOf(mode), SharingOf(mode));
    file.Init();
    std::ofstream(args[2]) << "ready";
    WaitForFile(args[3]);
    VRKChildExit(0);
  }
  const std::string path = m_Dir.File("shared");
  for (int holder = 0; holder < 9; ++holder) {
    Create("shared", "data");
    const std::string ready = m_Dir.File("ready" + std::to_string(holder));
    const std::string done = m_Dir.File("done" + std::to_string(holder));
    VRKChild child("holder");
    child.args = {path, std::to_string(holder), ready, done};
    const int pid = child.Start();
    WaitForFile(ready);
    std::string row;
    for (int opener = 0; opener < 9; ++opener)
      row += Opens(path, opener) ? '+' : '-';
    EXPECT_EQ(row, kShareMatrix[holder]) << "holder " << holder;
    // A refused creation leaves the file as it was.
    if (AccessOf(holder) != utl_AccessWrite && row.substr(6) == "---") {
      EXPECT_EQ(VRKReadFile(path), "data") << "holder " << holder;
    }
    std::ofstream(done) << "done";
    EXPECT_EQ(VRKChildWait(pid).exitCode, 0);
  }
}

// Two processes open one file at the same moment, 1,000 times: writers against writers, and
// a writer against a reader that refuses writers. Exactly one may win each round.
TEST_F(UtlFileTest, SimultaneousExclusiveOpensHaveOneWinner) {
  constexpr int kRounds = 1000;
  struct Shared {
    pthread_barrier_t barrier;
    char won[2][kRounds];
  };
  void* memory =
      mmap(nullptr, sizeof(Shared), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
  ASSERT_NE(memory, MAP_FAILED);
  Shared* shared = new (memory) Shared();
  pthread_barrierattr_t attributes;
  pthread_barrierattr_init(&attributes);
  pthread_barrierattr_setpshared(&attributes, PTHREAD_PROCESS_SHARED);
  pthread_barrier_init(&shared->barrier, &attributes, 2);
  const std::string path = Create("race", "x");

  const pid_t pid = fork();
  const int side = pid == 0 ? 1 : 0;
  for (int round = 0; round < kRounds; ++round) {
    const bool reader = side == 1 && round % 2 == 1;
    pthread_barrier_wait(&shared->barrier);
    utl_File file(path.c_str(), reader ? utl_AccessRead : utl_AccessUpdate,
                  reader ? utl_ShareRead : utl_ShareDefault);
    try {
      file.Init();
      shared->won[side][round] = 1;
    } catch (const utl_FileExceptionOpen&) {
    }
    pthread_barrier_wait(&shared->barrier);
  }
  if (pid == 0) _exit(0);
  int status = 0;
  waitpid(pid, &status, 0);
  EXPECT_EQ(status, 0);
  int wrong = 0;
  for (int round = 0; round < kRounds; ++round)
    wrong += shared->won[0][round] + shared->won[1][round] != 1;
  EXPECT_EQ(wrong, 0);
  pthread_barrier_destroy(&shared->barrier);
  munmap(memory, sizeof(Shared));
}

}  // namespace
