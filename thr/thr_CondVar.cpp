#include "thr_CondVar.h"

#include "internal/thr_Event.h"

namespace {
// The poll step of an unlimited wait.
constexpr int kPollMilliseconds = 1;
}  // namespace

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
  WaitForSignalMilliseconds(seconds * 1000);
}

void thr_CondVar::WaitForSignalMilliseconds(int milliseconds) {
  m_Inner.Lock();
  ++m_Waiters;
  m_Inner.Unlock();

  // Letting go of the mutex and starting to wait is one step for a Signal (Win32's
  // SignalObjectAndWait); every level the owner holds is let go and taken back after.
  int depth = 0;
  auto release = [&] { depth = m_MutexHandle->LeaveAll(); };
  if (milliseconds == 0) {
    // Without limit the waiter polls the flag, so a pulse that came between two waits is
    // not missed.
    m_Event->Wait(kPollMilliseconds, release, &m_Signalled);
    while (!m_Signalled.load(std::memory_order_relaxed)) {
      m_Event->Wait(
          kPollMilliseconds, [] {}, &m_Signalled);
    }
  } else {
    m_Event->Wait(milliseconds, release);
  }

  m_Inner.Lock();
  if (--m_Waiters == 0) m_Signalled.store(0, std::memory_order_relaxed);
  m_Inner.Unlock();
  SpinWhileSignalled();
  m_MutexHandle->EnterAgain(depth);
}

void thr_CondVar::Signal() {
  SpinWhileSignalled();
  m_Inner.Lock();
  if (m_Waiters > 0) {
    m_Signalled.store(1, std::memory_order_relaxed);
    m_Event->Pulse();
  }
  m_Inner.Unlock();
}

void thr_CondVar::SpinWhileSignalled() const {
  while (m_Signalled.load(std::memory_order_relaxed) > 0) {
  }
}
