#include "bio_Odevice.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <string>

#include "bio_Idevice.h"
#include "bio_Ifilter.h"
#include "bio_Ofilter.h"
#include "mem_Alloc.h"
#include "omi_FatalError.h"

namespace {

using ::testing::AllOf;
using ::testing::Property;
using ::testing::StrEq;
using ::testing::Throws;

auto FatalError(const char* text, int errorNumber) {
  return Throws<omi_FatalError>(AllOf(Property(&omi_FatalError::Text, StrEq(text)),
                                      Property(&omi_FatalError::Errno, errorNumber)));
}

// A writer and a reader on one buffer, used as a pipe.
struct Pipe {
  explicit Pipe(unsigned size) : buffer(size) {}
  bio_Buffer buffer;
  bio_OmemoryDevice out{buffer};
  bio_ImemoryDevice in{buffer};
  bio_OinternalFilter writer{out};
  bio_IinternalFilter reader{in};
};

TEST(MemoryDeviceTest, AFullBufferMakesRoomFromWhatWasRead) {
  EXPECT_EQ(bio_Buffer(0).size, 4096u);
  Pipe pipe(16);
  bio_Buffer& buffer = pipe.buffer;
  bio_OinternalFilter& writer = pipe.writer;
  bio_IinternalFilter& reader = pipe.reader;
  char bytes[16];
  for (char i = 0; i < 16; ++i)
    bytes[int(i)] = i;
  writer.putArray(bytes, 16);
  EXPECT_THAT([&] { writer << 'x'; }, FatalError("buffer overflow in oMemoryDevice", 0));

  char back[16];
  reader.getArray(back, 8);
  writer << 'x';  // the 8 unread bytes move to the front
  EXPECT_EQ(buffer.readPos, 0u);
  EXPECT_EQ(buffer.writePos, 9u);
  reader.getArray(back, 9);
  EXPECT_EQ(std::memcmp(back, bytes + 8, 8), 0);
  EXPECT_EQ(back[8], 'x');

  writer.putArray(bytes, 7);
  reader.getArray(back, 7);
  writer << 'y';  // all was read: the writer starts again at the front
  EXPECT_EQ(buffer.writePos, 1u);
  EXPECT_EQ(buffer.data[0], 'y');
}

// Unlike the external form, nothing is widened: a short is 2 bytes, a string's length 4.
TEST(InternalFilterTest, ValuesTakeTheirSizeInMemory) {
  Pipe pipe(0);
  const bio_Buffer& buffer = pipe.buffer;
  pipe.writer << 1.0 << 1.0f << 1u << 1 << static_cast<unsigned short>(1) << short(1)
              << static_cast<unsigned char>(1) << 'a' << true;
  EXPECT_EQ(buffer.writePos, 8u + 3 * 4 + 2 * 2 + 3 * 1);
  const short shorts[3] = {};
  pipe.writer.putString("ab");
  pipe.writer.putArray(shorts, 3);
  EXPECT_EQ(buffer.writePos, 27u + 6 + 6);
}

// Scalars, arrays and strings alike: a device that has nothing more to give ends the read.
TEST(InternalFilterTest, AReadThatRunsDryMeansTheOtherSideIsGone) {
  const char* const kGone =
      "The other side of the connection exited breaking the socket connection";
  Pipe pipe(16);
  pipe.writer << short(1);
  errno = EPIPE;
  int value;
  EXPECT_THAT([&] { pipe.reader >> value; }, FatalError(kGone, EPIPE));
  pipe.writer << short(1);
  int values[2];
  EXPECT_THAT([&] { pipe.reader.getArray(values, 2); }, FatalError(kGone, EPIPE));
  pipe.writer.putString("text");
  pipe.buffer.writePos -= 2;  // the string's last two bytes never came
  char* text = nullptr;
  EXPECT_THAT([&] { pipe.reader >> text; }, FatalError(kGone, EPIPE));
  mem_Free(text);
}

// Devices over buffers of three bytes, so that every value crosses buffers.
class ChunkedIdevice : public bio_Idevice {
 public:
  explicit ChunkedIdevice(const std::string& source) : bio_Idevice(nullptr), m_Source(source) {}
  void doneWith() override { ++m_DoneWith; }
  bio_Buffer* nextBuffer() override {
    const unsigned count = std::min<size_t>(3, m_Source.size() - m_Given);
    std::memcpy(m_Buffer.data, m_Source.data() + m_Given, count);
    m_Given += count;
    m_Buffer.readPos = 0;
    m_Buffer.writePos = count;
    return &m_Buffer;
  }

  int m_DoneWith = 0;

 private:
  std::string m_Source;
  size_t m_Given = 0;
  bio_Buffer m_Buffer{3};
};

class ChunkedOdevice : public bio_Odevice {
 public:
  ChunkedOdevice() : bio_Odevice(&m_Buffer) {}
  void doneWith() override {
    m_Sink.append(m_Buffer.data, m_Buffer.writePos);
    m_Buffer.writePos = 0;
  }
  bio_Buffer* nextBuffer() override { return &m_Buffer; }

  std::string m_Sink;

 private:
  bio_Buffer m_Buffer{3};
};

template <class Filter>
struct Swapping : Filter {
  using Filter::Filter;
  using Filter::shortSwap;
};

std::string BytesOf(const void* value, size_t size) {
  return std::string(static_cast<const char*>(value), size);
}

TEST(InternalFilterTest, ValuesCrossBuffersOfADevice) {
  const double number = 1.5;
  const unsigned word = 0x01020304;
  std::string reversedWord = BytesOf(&word, 4);
  std::reverse(reversedWord.begin(), reversedWord.end());

  ChunkedOdevice out;
  Swapping<bio_OinternalFilter> writer(out);
  writer << number;
  writer.shortSwap(reinterpret_cast<const char*>(&word), 4);
  writer.putArray(&word, 1);
  out.doneWith();
  EXPECT_EQ(out.m_Sink, BytesOf(&number, 8) + reversedWord + BytesOf(&word, 4));

  ChunkedIdevice in(out.m_Sink);
  Swapping<bio_IinternalFilter> reader(in);
  double numberBack;
  unsigned words[2];
  reader >> numberBack;
  reader.shortSwap(reinterpret_cast<char*>(&words[0]), 4);
  reader.getArray(&words[1], 1);
  EXPECT_EQ(numberBack, number);
  EXPECT_EQ(words[0], word);
  EXPECT_EQ(words[1], word);
  EXPECT_EQ(in.m_DoneWith, 5);  // 16 bytes in six buffers
  EXPECT_THROW(reader >> numberBack, omi_FatalError);
}

}  // namespace
