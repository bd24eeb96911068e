// A manual-reset event in the Win32 sense, on a mutex and a condition variable that time
// out on the monotonic clock. Set leaves it signalled until Reset; Pulse releases the
// threads waiting at that moment and leaves it clear, so a pulse with no waiter is lost.
// A generation count tells a waiter that a pulse happened while it slept. The threads a
// pulse releases leave the wait once WakeAll wakes them: the caller does that after it has
// let go of what they need next, so that they do not wake only to queue for it.
#ifndef THR_EVENT_H
#define THR_EVENT_H

#include <atomic>
#include <condition_variable>
#include <mutex>

#include "mem_Alloc.h"

class thr_Event : public mem_AllocationOperators {
 public:
  thr_Event() = default;
  thr_Event(const thr_Event&) = delete;
  thr_Event& operator=(const thr_Event&) = delete;

  void Set();
  void Reset();
  void Pulse();
  void WakeAll() { m_Changed.notify_all(); }

  // The limit in milliseconds of a wait of `seconds`, -1 (without limit) for a time below 1
  // and for one past the range of a millisecond count: Win32 took such a product as an
  // unsigned count, which made the wait endless or as good as.
  static int Milliseconds(int seconds) {
    return seconds < 1 || seconds > kMaxSeconds ? -1 : seconds * 1000;
  }

  // Waits until the event is set or pulsed, at most `milliseconds` (below 0: without
  // limit); true unless the time ran out. `release` runs once the wait is registered, so
  // that what it lets go (a mutex) cannot pulse the event unseen. With `flag`, a nonzero
  // value ends the wait too; it is read under the event's lock, so a flag set before a
  // Pulse is never missed.
  template <class Release>
  bool Wait(int milliseconds, Release release, const std::atomic<int>* flag = nullptr);
  bool Wait(int milliseconds) {
    return Wait(milliseconds, [] {});
  }

 private:
  static constexpr int kMaxSeconds = 0x7fffffff / 1000;

  std::mutex m_Lock;
  std::condition_variable m_Changed;
  bool m_Signalled = false;
  unsigned long m_Generation = 0;
};

template <class Release>
bool thr_Event::Wait(int milliseconds, Release release, const std::atomic<int>* flag) {
  std::unique_lock<std::mutex> hold(m_Lock);
  release();
  const unsigned long generation = m_Generation;
  auto done = [&] {
    return m_Signalled || m_Generation != generation ||
           (flag && flag->load(std::memory_order_relaxed));
  };
  if (milliseconds < 0) {
    m_Changed.wait(hold, done);
    return true;
  }
  return m_Changed.wait_for(hold, std::chrono::milliseconds(milliseconds), done);
}

#endif  // THR_EVENT_H
