// Draws a picture of a run: memory, CPU time and i/o against the marks the run set, as one
// HTML page that needs nothing else to open.
//
//   run_picture <resource log> [<ioTotal report>] > run.html
//
// The resource log is the "*.use" file that a run writes with LUN_RESOURCE_MONITOR set; the
// ioTotal report is the one the i/o tracker writes with LUN_IO_TRACK set.
#include <fstream>
#include <iostream>
#include <sstream>

#include "run_picture_page.h"

namespace {

bool ReadWhole(const char* path, std::string& text) {
  std::ifstream in(path, std::ios::binary);
  std::ostringstream content;
  content << in.rdbuf();
  text = content.str();
  return static_cast<bool>(in);
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 2 || argc > 3) {
    std::cerr << "usage: " << argv[0] << " <resource log> [<ioTotal report>] > page.html\n";
    return 2;
  }
  std::string log, io;
  for (int i = 1; i < argc; ++i) {
    if (!ReadWhole(argv[i], i == 1 ? log : io)) {
      std::cerr << argv[0] << ": can't read " << argv[i] << "\n";
      return 1;
    }
  }
  std::cout << RunPicturePage(log, io, std::string("Run of ") + argv[1]);
  return std::cout ? 0 : 1;
}
