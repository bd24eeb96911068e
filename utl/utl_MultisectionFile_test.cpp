#include "utl_MultisectionFile.h"

#include <signal.h>
#include <sys/resource.h>
#include <unistd.h>

#include <chrono>
#include <fstream>
#include <string>
#include <vector>

#include "VRKTestChild.h"
#include "VRKTestLibrary.h"
#include "utl_FileException.h"

namespace {

std::string Int(uint32_t value) {
  return {char(value), char(value >> 8), char(value >> 16), char(value >> 24)};
}
std::string Header(int count) {
  return std::string("\x28\xC1\x1D\xAF", 4) + Int(1) + Int(count);
}
std::string Entry(const std::string& name, int length, uint32_t checksum) {
  return Int(static_cast<uint32_t>(name.size())) + name + Int(length) + Int(checksum);
}

constexpr uint32_t kHelloCrc = 0xE6CE9AC2;  // of "hello"
constexpr uint32_t kWorldCrc = 0x46CF84EB;  // of "world!"
constexpr uint32_t kHiCrc = 0x65764BDD;     // of "hi"
constexpr uint32_t kTailCrc = 0x9BE4F2C9;   // of "tail"
const std::string kTwoSections =
    Header(2) + Entry("ab", 5, kHelloCrc) + Entry("c", 6, kWorldCrc) + "hello" + "world!";

class UtlMultisectionFileTest : public VRKLibraryTest {
 protected:
  std::string Write(const std::string& content) {
    std::ofstream(m_Path, std::ios::binary | std::ios::trunc) << content;
    return m_Path;
  }
  std::string Section(utl_MultisectionFile& file, const char* name) {
    std::string body(static_cast<size_t>(file.getSectionLength(name)), '\0');
    file.getSectionData(name, &body[0]);
    return body;
  }
  // The text of the class's failure that `call` raises.
  template <class Call>
  std::string Failure(Call call) {
    try {
      call();
    } catch (const nex_TextException& failure) {
      return failure.AsString().c_str();
    }
    return "no failure";
  }
  std::string Reason(const std::string& reason) const { return "\"" + m_Path + "\": " + reason; }
  bool Exists(const std::string& path) const { return access(path.c_str(), F_OK) == 0; }
  // In a child: works on the parent's file, in place of its own scratch directory.
  void UseParentsFile() {
    rmdir(m_Dir.Path().c_str());
    m_Path = VRKChildArgs()[0];
  }

  VRKScratchDir m_Dir;
  std::string m_Path = m_Dir.File("data.msf");
  std::string m_Lock = m_Path + ".lock";
};

TEST_F(UtlMultisectionFileTest, WritesTheExactByteImage) {
  {
    utl_MultisectionFile file(m_Path.c_str(), utl_AccessWrite);
    EXPECT_TRUE(Exists(m_Lock));
    EXPECT_FALSE(Exists(m_Path));  // created at the commit
    file.saveChanges();
    EXPECT_EQ(VRKReadFile(m_Path), Header(0));
    file.setSectionData("ab", "first", 5);
    file.setSectionData("c", "world!", 6);
    file.setSectionData("ab", "hello", 5);  // only the last body counts
    file.setSectionData("", "", 0);
    file.saveChanges();
  }
  EXPECT_FALSE(Exists(m_Lock));
  EXPECT_EQ(VRKReadFile(m_Path), Header(3) + Entry("ab", 5, kHelloCrc) + Entry("c", 6, kWorldCrc) +
                                     Entry("", 0, 0xFFFFFFFF) + "hello" + "world!");
  utl_MultisectionFile reader(m_Path.c_str(), utl_AccessRead);
  EXPECT_EQ(Section(reader, "c"), "world!");
  EXPECT_TRUE(reader.hasSection(""));
  EXPECT_EQ(reader.getSectionLength(""), 0);
  EXPECT_FALSE(reader.hasSection("C"));
}

TEST_F(UtlMultisectionFileTest, CommitsReplaceAddAndRemoveSections) {
  Write(kTwoSections);
  utl_MultisectionFile file(m_Path.c_str(), utl_AccessUpdate);
  file.setSectionData("ab", "hi", 2);
  EXPECT_EQ(Section(file, "ab"), "hi");  // staged
  file.setSectionData("new", "tail", 4);
  file.saveChanges();
  EXPECT_EQ(VRKReadFile(m_Path), Header(3) + Entry("ab", 2, kHiCrc) + Entry("c", 6, kWorldCrc) +
                                     Entry("new", 4, kTailCrc) + "hi" + "world!" + "tail");
  // The object goes on from the new file; a second commit with nothing staged keeps it.
  EXPECT_EQ(Section(file, "c"), "world!");
  EXPECT_EQ(Section(file, "ab"), "hi");
  file.removeSection("ab");
  file.saveChanges();
  file.saveChanges();
  EXPECT_EQ(VRKReadFile(m_Path),
            Header(2) + Entry("c", 6, kWorldCrc) + Entry("new", 4, kTailCrc) + "world!tail");
  EXPECT_EQ(Section(file, "new"), "tail");
}

// Bad files fail with a reason and never read or allocate past their end.
TEST_F(UtlMultisectionFileTest, RejectsCorruptDirectories) {
  const struct {
    std::string content, reason;
  } cases[] = {
      {"", "Invalid file type"},
      {Int(0) + Int(1) + Int(0), "Invalid file type"},
      {Header(0).substr(0, 4) + Int(2) + Int(0), "Unsupported file format"},
      {Header(0).substr(0, 8), "Truncated file"},
      {Header(1) + Int(uint32_t(-1)) + Int(0) + Int(0), "Invalid string length"},
      {Header(1) + Int(0x7fffffff) + Int(0) + Int(0), "Truncated file"},
      {Header(1000000000) + Int(0) + Int(0), "Truncated file"},
      {Header(1) + Entry("a", 10, 0) + "short", "Truncated file"},
      {Header(2) + Entry("a", 0x7fffffff, 0) + Entry("b", 0x7fffffff, 0), "Truncated file"},
      {Header(1) + Entry("a", -5, 0), "Invalid section length"},
      {Header(2) + Entry("a", 0, 0xFFFFFFFF), "Truncated file"},
  };
  for (const auto& c : cases) {
    Write(c.content);
    EXPECT_EQ(Failure([&] { utl_MultisectionFile(m_Path.c_str(), utl_AccessUpdate); }),
              Reason(c.reason))
        << testing::PrintToString(c.content);
    EXPECT_FALSE(Exists(m_Lock));  // given back by the failed constructor
  }
  // A negative count means no sections; bytes after the last body are ignored.
  Write(Header(-3) + "trailing");
  EXPECT_FALSE(utl_MultisectionFile(m_Path.c_str(), utl_AccessRead).hasSection(""));
  // A missing file is the file's own failure.
  unlink(m_Path.c_str());
  EXPECT_THROW(utl_MultisectionFile(m_Path.c_str(), utl_AccessRead), utl_FileExceptionNoFile);
}

TEST_F(UtlMultisectionFileTest, ChecksumsAreTestedWhenASectionIsRead) {
  std::string bad = kTwoSections;
  bad[bad.size() - 1] ^= 1;
  Write(bad);
  utl_MultisectionFile file(m_Path.c_str(), utl_AccessUpdate);  // opens without complaint
  EXPECT_EQ(Section(file, "ab"), "hello");
  char body[6];
  EXPECT_EQ(Failure([&] { file.getSectionData("c", body); }),
            Reason("Data corrupted in section \"c\""));
  EXPECT_EQ(std::string(body, 6), "world ");  // the bad bytes are delivered
  file.saveChanges();                         // moves the body untested
  EXPECT_EQ(VRKReadFile(m_Path), bad);

  // A body cut off after loading reads as zeros and fails the same way.
  utl_MultisectionFile reader(m_Path.c_str(), utl_AccessRead);
  ASSERT_EQ(truncate(m_Path.c_str(), static_cast<off_t>(bad.size() - 8)), 0);
  EXPECT_EQ(Failure([&] { Section(reader, "c"); }), Reason("Data corrupted in section \"c\""));
}

TEST_F(UtlMultisectionFileTest, TheLockKeepsWritersApartButNotReaders) {
  Write(kTwoSections);
  {
    utl_MultisectionFile writer(m_Path.c_str(), utl_AccessUpdate);
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(Failure([&] { utl_MultisectionFile(m_Path.c_str(), utl_AccessWrite); }),
              Reason("Cannot create the lock file."));
    EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(95));
    utl_MultisectionFile reader(m_Path.c_str(), utl_AccessRead);
    EXPECT_EQ(Section(reader, "c"), "world!");
  }
  EXPECT_FALSE(Exists(m_Lock));
  // Reading access commits nothing: Extend refuses after the temporary was written, and the
  // temporary goes.
  utl_MultisectionFile reader(m_Path.c_str(), utl_AccessRead);
  reader.setSectionData("ab", "x", 1);
  EXPECT_EQ(Failure([&] { reader.saveChanges(); }),
            "utl_File::Extend - attempt to extend a read-only file.");
  EXPECT_EQ(VRKReadFile(m_Path), kTwoSections);
  EXPECT_EQ(Section(reader, "ab"), "x");  // still staged
  EXPECT_FALSE(Exists(m_Path + "." + std::to_string(getpid()) + ".tmp"));
}

// The disk fills while the temporary is written: the file is untouched.
TEST_F(UtlMultisectionFileTest, AFullDiskStopsTheCommitBeforeTheFile) {
  if (VRKChildRole() == "fulldisk") {
    UseParentsFile();
    const rlimit limit = {8192, 8192};
    setrlimit(RLIMIT_FSIZE, &limit);
    signal(SIGXFSZ, SIG_IGN);
    {
      utl_MultisectionFile file(m_Path.c_str(), utl_AccessUpdate);
      const std::string big(10000, 'b');
      file.setSectionData("big", big.data(), static_cast<int>(big.size()));
      EXPECT_THROW(file.saveChanges(), utl_FileExceptionFull);
      EXPECT_EQ(file.getSectionLength("big"), 10000);
    }
    VRKChildExit(::testing::Test::HasFailure() ? 1 : 0);
  }
  Write(kTwoSections);
  VRKChild child("fulldisk");
  child.args = {m_Path};
  const VRKChildResult result = child.Run();
  EXPECT_EQ(result.exitCode, 0) << result.out << result.err;
  EXPECT_EQ(VRKReadFile(m_Path), kTwoSections);
  EXPECT_FALSE(Exists(m_Lock));
}

// A writer killed in the middle of a commit leaves its lock file, and either the old file or
// a half-written one; the next writer is kept out.
TEST_F(UtlMultisectionFileTest, AWriterKilledInACommitLeavesItsLock) {
  if (VRKChildRole() == "committer") {
    UseParentsFile();
    utl_MultisectionFile file(m_Path.c_str(), utl_AccessUpdate);
    const std::vector<char> big(64 << 20, 'b');
    file.setSectionData("big", big.data(), static_cast<int>(big.size()));
    file.saveChanges();
    VRKChildExit(0);
  }
  Write(kTwoSections);
  VRKChild child("committer");
  child.args = {m_Path};
  const int pid = child.Start();
  const std::string temporary = m_Path + "." + std::to_string(pid) + ".tmp";
  for (int i = 0; i < 30000 && !Exists(temporary); ++i)
    usleep(100);
  kill(pid, SIGKILL);
  EXPECT_EQ(VRKChildWait(pid).signal, SIGKILL);
  const bool untouched = VRKReadFile(m_Path) == kTwoSections;
  RecordProperty("outcome", untouched ? "old file" : "half-written file");
  std::printf("the killed commit left the %s\n", untouched ? "old file" : "file half written");
  EXPECT_TRUE(Exists(m_Lock));
  EXPECT_EQ(Failure([&] { utl_MultisectionFile(m_Path.c_str(), utl_AccessUpdate); }),
            Reason("Cannot create the lock file."));
}

}  // namespace
