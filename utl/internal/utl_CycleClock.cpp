#include "internal/utl_CycleClock.h"

#include <time.h>

#include <cstdio>
#include <cstring>

#if UTL_CYCLECLOCK_HAS_COUNTER
namespace {

// Whether the kernel keeps time with the time-stamp counter, which it does only when the
// counter is constant and synchronised.
bool SystemClockIsCounter() {
  std::FILE* file =
      std::fopen("/sys/devices/system/clocksource/clocksource0/current_clocksource", "re");
  if (file == nullptr) return false;
  char name[32] = {};
  const bool read = std::fgets(name, sizeof name, file) != nullptr;
  std::fclose(file);
  return read && std::strcmp(name, "tsc\n") == 0;
}

}  // namespace
#endif

uint64_t utl_CycleClock::MonotonicNanoseconds() {
  timespec now;
  clock_gettime(CLOCK_MONOTONIC, &now);
  return static_cast<uint64_t>(now.tv_sec) * 1000000000u + static_cast<uint64_t>(now.tv_nsec);
}

// The counter's rate, measured against the monotonic clock over 2 ms.
utl_CycleClock::utl_CycleClock() {
#if UTL_CYCLECLOCK_HAS_COUNTER
  if (!SystemClockIsCounter()) return;
  const uint64_t startNanoseconds = MonotonicNanoseconds();
  const uint64_t startTicks = __rdtsc();
  uint64_t nanoseconds;
  do {
    nanoseconds = MonotonicNanoseconds() - startNanoseconds;
  } while (nanoseconds < 2000000);
  const uint64_t ticks = __rdtsc() - startTicks;
  if (ticks == 0) return;
  m_SecondsPerTick = static_cast<double>(nanoseconds) * 1e-9 / static_cast<double>(ticks);
  m_UsesCounter = true;
#endif
}
