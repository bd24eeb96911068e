// The picture of a run from a resource log and an ioTotal report of any shape: the page is
// whole, and nothing of the input comes through as markup.
#include <fuzzer/FuzzedDataProvider.h>

#include <cstdint>
#include <string>

#include "VRKFuzz.h"
#include "run_picture_page.h"

namespace {

size_t Count(const std::string& text, const char* what) {
  size_t count = 0;
  for (size_t at = text.find(what); at != std::string::npos; at = text.find(what, at + 1))
    ++count;
  return count;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  FuzzedDataProvider input(data, size);
  const std::string log = input.ConsumeRandomLengthString(size);
  const std::string io = input.ConsumeRemainingBytesAsString();
  const std::string page = RunPicturePage(log, io, "<run>");
  VRKFuzzCheck(page.rfind("<!DOCTYPE html>\n", 0) == 0);
  VRKFuzzCheck(page.size() >= 15 && page.compare(page.size() - 15, 15, "</body></html>\n") == 0);
  VRKFuzzCheck(Count(page, "<svg") == Count(page, "</svg>"));
  VRKFuzzCheck(Count(page, "<script") == 0 && Count(page, "<run>") == 0);
  return 0;
}
