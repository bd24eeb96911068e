// An error that crosses processes: a child fails, the parent gets the very error back.
//
//   store_error_example [errors.vst]
//
// The program starts itself again as a child ("--child"), which tries to open an input deck
// that isn't there, raises a uti_IOErrorException, catches it and writes it to its standard
// output with sto_WriteException. The parent reads the error's bytes from the pipe, keeps them in a
// store file (errors.vst unless a name is given) under "last error", loads them from there and
// raises the error again: it is caught as its own class, with the child's text, source file
// and line.
#include <VRKLnuBasicUtils/VRKLnuBasicUtils.h>
#include <VRKLnuBasicUtils/VRKLnuStore.h>

#include <cerrno>
#include <cstdio>
#include <cstring>

namespace {

int Child() {
  try {
    const char* deck = "no-such-deck.inp";
    if (std::FILE* input = std::fopen(deck, "r")) {
      std::fclose(input);
      return 0;
    }
    uti_IOErrorException error("fopen", errno, deck);
    NEX_THROW(error);
  } catch (const nex_Exception& error) {
    sto_WriteException(1, error);
    return 1;
  }
  return 0;
}

int Parent(const char* storeName) {
  uti_SpawnSource child(cow_String("/proc/self/exe --child"));
  const cow_String bytes = sto_ReadBytes(child.GetReadDescriptor());
  std::printf("the child ended with %d and sent %d bytes\n", child.Reap(0), bytes.Length());

  sto_Store store(storeName);
  store.Put("last error", bytes);
  try {
    sto_RaiseStored(store.Get("last error"));
  } catch (const uti_IOErrorException& error) {
    std::printf("raised again as an i/o error:\n  %s\n", error.DeveloperReport().c_str());
    return 0;
  } catch (const nex_Exception& error) {
    std::printf("raised again, of another class:\n  %s\n", error.DeveloperReport().c_str());
  }
  return 1;
}

}  // namespace

int main(int argc, char** argv) {
  int tally = 0;
  VRKLnuBasicUtils_initialize(tally);
  int status = 1;
  try {
    status = argc > 1 && std::strcmp(argv[1], "--child") == 0
                 ? Child()
                 : Parent(argc > 1 ? argv[1] : "errors.vst");
  } catch (const nex_Exception& error) {
    std::fprintf(stderr, "%s\n", error.DeveloperReport().c_str());
  }
  VRKLnuBasicUtils_finalize(tally);
  return status;
}
