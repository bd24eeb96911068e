// A clock for timing short operations at a fraction of the cost of clock_gettime: the
// processor's time-stamp counter, where the system itself keeps time with it (so that it
// runs at a constant rate and agrees between processors), and the monotonic clock elsewhere.
//
//   utl_CycleClock clock;               // calibrates the counter: about 2 ms
//   uint64_t start = clock.Now();
//   ... work ...
//   double seconds = clock.Seconds(clock.Now() - start);
#ifndef UTL_CYCLECLOCK_H
#define UTL_CYCLECLOCK_H

#include <cstdint>

#if defined(__x86_64__) || defined(__i386__)
#include <x86intrin.h>
#define UTL_CYCLECLOCK_HAS_COUNTER 1
#else
#define UTL_CYCLECLOCK_HAS_COUNTER 0
#endif

// A value after construction; Now and Seconds may be called from any thread.
class utl_CycleClock {
 public:
  utl_CycleClock();

  // Ticks since an arbitrary origin; never 0.
  uint64_t Now() const {
#if UTL_CYCLECLOCK_HAS_COUNTER
    if (m_UsesCounter) return __rdtsc() | 1;
#endif
    return MonotonicNanoseconds() | 1;
  }
  double Seconds(uint64_t ticks) const {
    return static_cast<double>(ticks) * m_SecondsPerTick;
  }

 private:
  static uint64_t MonotonicNanoseconds();

  bool m_UsesCounter = false;
  double m_SecondsPerTick = 1e-9;
};

#endif  // UTL_CYCLECLOCK_H
