#include "thr_Mutex.h"

thr_Mutex::thr_Mutex(int locked) : m_Locked(0), m_Owner(std::thread::id()) {
  if (locked) Lock();
}

thr_Mutex::~thr_Mutex() = default;

void thr_Mutex::Lock() {
  Enter();
  m_Locked.store(1, std::memory_order_relaxed);
}

void thr_Mutex::Unlock() {
  m_Locked.store(0, std::memory_order_relaxed);
  Leave();
}

int thr_Mutex::TryLock() {
  if (m_Locked.load(std::memory_order_relaxed) || !TryEnter()) return 0;
  m_Locked.store(1, std::memory_order_relaxed);
  return 1;
}

// A critical section: the owner enters again by counting, the others queue on the mutex.
void thr_Mutex::Enter() {
  const std::thread::id self = std::this_thread::get_id();
  if (m_Owner.load(std::memory_order_relaxed) != self) {
    m_Section.lock();
    m_Owner.store(self, std::memory_order_relaxed);
  }
  ++m_Depth;
}

bool thr_Mutex::TryEnter() {
  const std::thread::id self = std::this_thread::get_id();
  if (m_Owner.load(std::memory_order_relaxed) != self) {
    if (!m_Section.try_lock()) return false;
    m_Owner.store(self, std::memory_order_relaxed);
  }
  ++m_Depth;
  return true;
}

void thr_Mutex::Leave() {
  if (--m_Depth > 0) return;
  m_Owner.store(std::thread::id(), std::memory_order_relaxed);
  m_Section.unlock();
}

int thr_Mutex::LeaveAll() {
  const int depth = m_Depth;
  m_Depth = 1;
  Leave();
  return depth;
}

void thr_Mutex::EnterAgain(int depth) {
  Enter();
  m_Depth = depth;
}
