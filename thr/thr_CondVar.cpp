#include "thr_CondVar.h"

#include "internal/thr_Event.h"

thr_CondVar::thr_CondVar() : m_Event(new thr_Event), m_MutexHandle(new thr_Mutex) {}

thr_CondVar::~thr_CondVar() {
  delete m_MutexHandle;
  delete m_Event;
}

void thr_CondVar::Lock() {
  m_MutexHandle->Lock();
}

void thr_CondVar::Unlock() {
  m_MutexHandle->Unlock();
}

void thr_CondVar::WaitForSignal(int seconds) {
  WaitForSignalMilliseconds(thr_Event::Milliseconds(seconds));
}

void thr_CondVar::WaitForSignalMilliseconds(int milliseconds) {
  m_Inner.Lock();
  ++m_Waiters;
  m_Inner.Unlock();

  // Letting go of the mutex and starting to wait is one step for a Signal (Win32's
  // SignalObjectAndWait); every level the owner holds is let go and taken back after. The
  // waiter also wakes on the flag, which it reads under the event's lock: a signal that came
  // before the wait began is seen, and one that comes later pulses a registered waiter. So
  // no signal to a waiter is missed, and the wait without limit needs no polling.
  int depth = 0;
  m_Event->Wait(
      milliseconds < 1 ? -1 : milliseconds, [&] { depth = m_MutexHandle->LeaveAll(); },
      &m_Signalled);

  m_Inner.Lock();
  if (--m_Waiters == 0) m_Signalled.store(0, std::memory_order_relaxed);
  m_Inner.Unlock();
  SpinWhileSignalled();
  m_MutexHandle->EnterAgain(depth);
}

// The waiters are woken once the inner mutex, which they take first, is free again.
void thr_CondVar::Signal() {
  SpinWhileSignalled();
  m_Inner.Lock();
  const bool waiting = m_Waiters > 0;
  if (waiting) {
    m_Signalled.store(1, std::memory_order_relaxed);
    m_Event->Pulse();
  }
  m_Inner.Unlock();
  if (waiting) m_Event->WakeAll();
}

void thr_CondVar::SpinWhileSignalled() const {
  while (m_Signalled.load(std::memory_order_relaxed) > 0) {
  }
}
