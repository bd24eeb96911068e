// A binary input stream over a descriptor that holds any bytes, read as values of every kind
// chosen by bytes from the input's end: each value read is the bytes at its place, a string's
// length comes first, and a stream cut short or a bad length raises a library exception.
#include <fuzzer/FuzzedDataProvider.h>
#include <sys/mman.h>
#include <unistd.h>

#include <cstdint>
#include <cstring>
#include <vector>

#include "VRKFuzz.h"
#include "mem_Alloc.h"
#include "nex_Exception.h"
#include "utl_BinStream.h"

namespace {

// Reads one value of the kind `kind` and checks it against `expected`, the bytes from the
// place it was read at; the number of bytes it took.
size_t ReadOne(const utl_BinIStream& in, int kind, const uint8_t* expected, size_t left) {
  auto same = [&](const void* value, size_t bytes, size_t from = 0) {
    VRKFuzzCheck(from + bytes <= left && std::memcmp(value, expected + from, bytes) == 0);
    return from + bytes;
  };
  switch (kind) {
    case 0: {
      const signed char value = in.ReadSchar();
      return same(&value, 1);
    }
    case 1: {
      const short value = in.ReadShort();
      return same(&value, sizeof value);
    }
    case 2: {
      const unsigned short value = in.ReadUShort();
      return same(&value, sizeof value);
    }
    case 3: {
      const unsigned value = in.ReadUInt();
      return same(&value, sizeof value);
    }
    case 4: {
      const int64_t value = in.ReadInt64();
      return same(&value, sizeof value);
    }
    case 5: {
      const cow_String value = in.ReadString();
      const int length = value.Length();
      same(&length, sizeof length);
      return same(value.c_str(), static_cast<size_t>(length), sizeof length);
    }
    default: {
      double values[3];
      in.ReadDoubleArray(values, 3);
      return same(values, sizeof values);
    }
  }
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  VRKFuzzStartLibrary();
  mem_Mallopt(-5, 64 << 20);  // a string longer than this raises instead of exhausting memory
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  FuzzedDataProvider input(data, size);
  std::vector<uint8_t> bytes = input.ConsumeBytes<uint8_t>(input.ConsumeIntegral<uint16_t>());
  const int fd = memfd_create("binstream", MFD_CLOEXEC);
  VRKFuzzCheck(fd >= 0 && write(fd, bytes.data(), bytes.size()) == ssize_t(bytes.size()));
  lseek(fd, 0, SEEK_SET);
  const utl_BinIStream in(fd, omi_Swapper::LittleEndian);
  size_t at = 0;
  try {
    while (input.remaining_bytes() > 0)
      at += ReadOne(in, input.ConsumeIntegralInRange(0, 6), bytes.data() + at, bytes.size() - at);
  } catch (const nex_Exception&) {
  }
  close(fd);
  return 0;
}
