// Random bytes into the internal reader, through every typed read, from a memory device or
// from a device that hands the bytes over in small buffers, so that values cross them.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>

#include "bio_FuzzReads.h"
#include "bio_Idevice.h"

namespace {

// Gives the bytes `step` at a time, then empty buffers.
class SteppingDevice : public bio_Idevice {
 public:
  SteppingDevice(const std::vector<char>& bytes, unsigned step)
      : bio_Idevice(nullptr), m_Bytes(bytes), m_Buffer(step) {}
  void doneWith() override {}
  bio_Buffer* nextBuffer() override {
    const size_t count = std::min<size_t>(m_Buffer.size, m_Bytes.size() - m_Given);
    if (count > 0) std::memcpy(m_Buffer.data, m_Bytes.data() + m_Given, count);
    m_Given += count;
    m_Buffer.readPos = 0;
    m_Buffer.writePos = static_cast<unsigned>(count);
    return &m_Buffer;
  }

 private:
  const std::vector<char>& m_Bytes;
  size_t m_Given = 0;
  bio_Buffer m_Buffer;
};

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  mem_Mallopt(-5, 64 << 20);  // a string longer than this raises instead of exhausting memory
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  FuzzedDataProvider input(data, size);
  const unsigned step = input.ConsumeIntegralInRange<unsigned>(0, 16);
  const std::vector<char> bytes = bio_FuzzBytes(input);
  if (step == 0) {
    bio_Buffer buffer(static_cast<unsigned>(bytes.size()));
    if (!bytes.empty()) std::memcpy(buffer.data, bytes.data(), bytes.size());
    buffer.writePos = static_cast<unsigned>(bytes.size());
    bio_ImemoryDevice device(buffer);
    bio_FuzzPeeking<bio_IinternalFilter> reader(device);
    bio_FuzzReads(reader, input, bytes.size());
  } else {
    SteppingDevice device(bytes, step);
    bio_FuzzPeeking<bio_IinternalFilter> reader(device);
    bio_FuzzReads(reader, input, bytes.size());
  }
  return 0;
}
