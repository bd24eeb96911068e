// Random bytes into the external reader, through every typed read, on both byte orders.
#include <cstddef>
#include <cstdint>

#include "bio_FuzzReads.h"
#include "bio_IexternalMemFilter.h"
#include "internal/bio_ExternalForm.h"

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  mem_Mallopt(-5, 64 << 20);  // a string longer than this raises instead of exhausting memory
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  FuzzedDataProvider input(data, size);
  bio_setExternalHostOrder(input.ConsumeBool() ? omi_Swapper::BigEndian
                                               : omi_Swapper::LittleEndian);
  std::vector<char> bytes = bio_FuzzBytes(input);
  bio_FuzzPeeking<bio_IexternalMemFilter> reader(bytes.data(), bytes.size());
  bio_FuzzReads(reader, input, bytes.size());
  return 0;
}
