// Random bytes into the external reader, through every typed read, in the host's byte order
// (the byte-reversing path is held against it by the filters' round-trip tests).
#include <cstddef>
#include <cstdint>

#include "bio_FuzzReads.h"
#include "bio_IexternalMemFilter.h"

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  mem_Mallopt(-5, 64 << 20);  // a string longer than this raises instead of exhausting memory
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  FuzzedDataProvider input(data, size);
  std::vector<char> bytes = bio_FuzzBytes(input);
  bio_FuzzPeeking<bio_IexternalMemFilter> reader(bytes.data(), bytes.size());
  bio_FuzzReads(reader, input, bytes.size());
  return 0;
}
