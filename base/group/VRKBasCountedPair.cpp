#include "VRKBasCountedPair.h"

namespace {
VRKBasLifecycleObserver observer = nullptr;

void Notify(const char* layer, bool up) {
  if (observer) observer(layer, up);
}
}  // namespace

VRKBasLifecycleObserver VRKBasSetLifecycleObserver(VRKBasLifecycleObserver newObserver) {
  VRKBasLifecycleObserver old = observer;
  observer = newObserver;
  return old;
}

bool VRKBasCountedEnter(int& useCount, int& tally, const char* layer) {
  const int was = useCount;
  useCount = was + 1;
  if (was != 0) return false;
  ++tally;
  Notify(layer, true);
  return true;
}

bool VRKBasCountedLeave(int& useCount, int& tally, const char* layer) {
  const int was = useCount;
  useCount = was - 1;
  if (was != 1) return false;
  --tally;
  Notify(layer, false);
  return true;
}
