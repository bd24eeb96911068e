// The library's main example: brings the library up, shows each layer as it starts and
// stops, and brings it down again.
#include <VRKLnuBasicUtils/VRKLnuBasicUtils.h>

namespace {

void Show(const char* layer, bool up) {
  aio_cout << (up ? "  started  " : "  stopped  ") << layer << aio_endl;
}

}  // namespace

int main() {
  VRKBasSetLifecycleObserver(Show);
  int tally = 0;
  aio_cout << "Bringing the library up:" << aio_endl;
  VRKLnuBasicUtils_initialize(tally);
  aio_cout << tally << " layers are up on " << VRKBasUtlGetPlatform() << " with "
           << utl_getNumberCpusBase() << " processors; the memory layer holds " << mem_Footprint()
           << " bytes." << aio_endl;
  aio_cout << "Bringing it down:" << aio_endl;
  VRKLnuBasicUtils_finalize(tally);
  aio_cout << tally << " layers are up." << aio_endl;
  return tally == 0 ? 0 : 1;
}
