#include "utl_BinStream.h"

#include <pthread.h>
#include <signal.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <atomic>
#include <cstring>
#include <string>
#include <thread>

#include "VRKTestLibrary.h"
#include "utl_BinStreamException.h"

namespace {

class UtlBinStreamTest : public VRKLibraryTest {
 protected:
  void SetUp() override {
    VRKLibraryTest::SetUp();
    ASSERT_EQ(pipe(m_Pipe), 0);
  }
  void TearDown() override {
    CloseEnd(0);
    CloseEnd(1);
    VRKLibraryTest::TearDown();
  }
  void CloseEnd(int end) {
    if (m_Pipe[end] >= 0) close(m_Pipe[end]);
    m_Pipe[end] = -1;
  }
  // Whatever is in the pipe now, without blocking.
  std::string Drain() {
    CloseEnd(1);
    std::string bytes;
    char buffer[256];
    for (ssize_t got; (got = read(m_Pipe[0], buffer, sizeof buffer)) > 0;)
      bytes.append(buffer, static_cast<size_t>(got));
    return bytes;
  }

  int m_Pipe[2] = {-1, -1};
};

// Writes one of each kind of value; ReadAll checks them.
void WriteAll(utl_BinOStream& out) {
  const int ints[] = {1, -2, 0x7fffffff};
  const float floats[] = {1.5f, -0.25f};
  const double doubles[] = {3.25, -1e300};
  out.WriteSchar(-5);
  out.WriteUchar(250);
  out.WriteShort(-12345);
  out.WriteUShort(0xfedc);
  out.WriteInt(-123456789);
  out.WriteUInt(0xdeadbeef);
  out.WriteInt64(-(int64_t{1} << 62));
  out.WriteUInt64(0xfedcba9876543210u);
  out.WriteString("with\0nul");  // stops at the nul: "with"
  out.WriteString(cow_String("a\0b", 3));
  out.WriteString("");
  out.WriteIntArray(ints, 3);
  out.WriteFloatArray(floats, 2);
  out.WriteDoubleArray(doubles, 2);
  out.WriteIntArray(ints, -1);
}

void ReadAll(const utl_BinIStream& in) {
  EXPECT_EQ(in.ReadSchar(), -5);
  EXPECT_EQ(in.ReadUchar(), 250);
  EXPECT_EQ(in.ReadShort(), -12345);
  EXPECT_EQ(in.ReadUShort(), 0xfedc);
  EXPECT_EQ(in.ReadInt(), -123456789);
  EXPECT_EQ(in.ReadUInt(), 0xdeadbeefu);
  EXPECT_EQ(in.ReadInt64(), -(int64_t{1} << 62));
  EXPECT_EQ(in.ReadUInt64(), 0xfedcba9876543210u);
  EXPECT_EQ(in.ReadString(), "with");
  const cow_String embedded = in.ReadString();
  EXPECT_EQ(std::string(embedded.c_str(), embedded.Length()), std::string("a\0b", 3));
  EXPECT_TRUE(in.ReadString().IsEmpty());
  int ints[3];
  float floats[2];
  double doubles[2];
  in.ReadIntArray(ints, 3);
  in.ReadFloatArray(floats, 2);
  in.ReadDoubleArray(doubles, 2);
  EXPECT_EQ(ints[2], 0x7fffffff);
  EXPECT_EQ(floats[1], -0.25f);
  EXPECT_EQ(doubles[1], -1e300);
}

// The exact bytes of WriteAll: raw images in host order, strings as a length and the bytes.
const int kWrittenBytes = 1 + 1 + 2 + 2 + 4 + 4 + 8 + 8 + (4 + 4) + (4 + 3) + 4 + 12 + 8 + 16;

TEST_F(UtlBinStreamTest, RoundTripsEveryKindInHostOrderWhateverTheByteOrderSays) {
  utl_BinOStream out(m_Pipe[1], omi_Swapper::BigEndian);
  WriteAll(out);
  const std::string bytes = Drain();
  ASSERT_EQ(bytes.size(), size_t{kWrittenBytes});
  // The empty string is a 4-byte zero and nothing else; 0x34 0x12 reads as 0x1234.
  EXPECT_EQ(bytes.substr(kWrittenBytes - 36 - 4, 4), std::string(4, '\0'));
  EXPECT_EQ(bytes.substr(2, 2), std::string("\xc7\xcf"));

  ASSERT_EQ(pipe(m_Pipe), 0);
  ASSERT_EQ(write(m_Pipe[1], bytes.data(), bytes.size()), kWrittenBytes);
  ASSERT_EQ(write(m_Pipe[1], "\x34\x12", 2), 2);
  utl_BinIStream in(m_Pipe[0], omi_Swapper::BigEndian);
  ReadAll(in);
  EXPECT_EQ(in.ReadUShort(), 0x1234);
}

void NoteSignal(int) {}

// Whether the thread is blocked in read just now.
bool BlockedInRead(pid_t thread) {
  const std::string call = VRKReadFile("/proc/self/task/" + std::to_string(thread) + "/syscall");
  return call.compare(0, std::to_string(SYS_read).size() + 1, std::to_string(SYS_read) + " ") == 0;
}

TEST_F(UtlBinStreamTest, AReaderFedOneByteAtATimeAndInterruptedGetsWholeValues) {
  utl_BinOStream out(m_Pipe[1], omi_Swapper::LittleEndian);
  WriteAll(out);
  const std::string bytes = Drain();
  ASSERT_EQ(pipe(m_Pipe), 0);

  // A handler without SA_RESTART makes the blocked read fail with EINTR.
  struct sigaction action = {}, saved;
  action.sa_handler = NoteSignal;
  sigaction(SIGUSR1, &action, &saved);
  const pthread_t reader = pthread_self();
  const pid_t readerId = gettid();
  std::atomic<bool> readerDone{false};
  std::thread writer([&] {
    for (char byte : bytes) {
      while (!BlockedInRead(readerId) && !readerDone)
        usleep(50);
      pthread_kill(reader, SIGUSR1);
      ASSERT_EQ(write(m_Pipe[1], &byte, 1), 1);
    }
  });
  EXPECT_NO_THROW(ReadAll(utl_BinIStream(m_Pipe[0], omi_Swapper::LittleEndian)));
  readerDone = true;
  writer.join();
  sigaction(SIGUSR1, &saved, nullptr);
}

TEST_F(UtlBinStreamTest, FailuresCarryTheirClassAndText) {
  EXPECT_EQ(
      VRKFailureText<utl_BinStreamException>([] { utl_BinIStream(-1, omi_Swapper::LittleEndian); }),
      "*** ERROR: Can't set stream to binary mode: Bad file descriptor");
  EXPECT_THROW(utl_BinOStream(1 << 20, omi_Swapper::LittleEndian), utl_BinStreamException);

  // A peer that closes in the middle of a value.
  ASSERT_EQ(write(m_Pipe[1], "abc", 3), 3);
  CloseEnd(1);
  utl_BinIStream in(m_Pipe[0], omi_Swapper::LittleEndian);
  EXPECT_EQ(VRKFailureText<utl_BinStreamEOF>([&] { in.ReadInt(); }),
            "*** ERROR: End of file on binary stream.");

  // A negative string length is refused, not allocated.
  ASSERT_EQ(pipe(m_Pipe), 0);
  utl_BinOStream out(m_Pipe[1], omi_Swapper::LittleEndian);
  out.WriteInt(-2);
  utl_BinIStream strings(m_Pipe[0], omi_Swapper::LittleEndian);
  EXPECT_EQ(VRKFailureText<utl_BinStreamReadError>([&] { strings.ReadString(); }), "Bad message");

  // Empty transfers make no system call: on closed descriptors they still succeed.
  char buffer[4];
  CloseEnd(0);
  CloseEnd(1);
  out.Write(buffer, 0);
  strings.Read(buffer, -1);
  EXPECT_EQ(VRKFailureText<utl_BinStreamWriteError>([&] { out.Write(buffer, 1); }),
            "Bad file descriptor");
  EXPECT_EQ(VRKFailureText<utl_BinStreamReadError>([&] { strings.Read(buffer, 1); }),
            "Bad file descriptor");
}

TEST_F(UtlBinStreamTest, AWriteToAPipeWithoutReaderFailsWhenSigpipeIsIgnored) {
  CloseEnd(0);
  void (*saved)(int) = signal(SIGPIPE, SIG_IGN);
  utl_BinOStream out(m_Pipe[1], omi_Swapper::LittleEndian);
  EXPECT_EQ(VRKFailureText<utl_BinStreamWriteError>([&] { out.WriteInt(1); }), "Broken pipe");
  signal(SIGPIPE, saved);
}

}  // namespace
