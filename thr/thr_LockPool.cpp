#include "thr_LockPool.h"

#include "internal/thr_Regrow.h"

template class omi_SingletonBase<thr_LockPool>;

namespace {
constexpr int kGrowth = 10;
}  // namespace

thr_PoolLock::thr_PoolLock(int index) : m_Index(index), m_Mutex(new thr_Mutex) {}

thr_PoolLock::~thr_PoolLock() {
  delete m_Mutex;
}

thr_LockPool::~thr_LockPool() {
  for (int i = 0; i < m_Capacity; ++i) {
    delete m_Locks[i];
  }
  mem_Free(m_Locks);
  mem_Free(m_Used);
}

thr_PoolLock* thr_LockPool::GetLock() {
  thr_Hold<thr_Mutex> hold(m_Lock);
  if (m_InUse == m_Capacity) Grow();
  int place = FindFree(m_SearchStart, m_Capacity);
  if (place < 0) place = FindFree(0, m_SearchStart);
  m_Used[place] = true;
  ++m_InUse;
  m_SearchStart = (place + 1) % m_Capacity;
  return m_Locks[place];
}

void thr_LockPool::ReleaseLock(thr_PoolLock* lock) {
  if (lock == nullptr) return;
  thr_Hold<thr_Mutex> hold(m_Lock);
  const int place = lock->Index();
  if (place >= m_Capacity || m_Locks[place] != lock || !m_Used[place]) return;
  m_Used[place] = false;
  --m_InUse;
}

int thr_LockPool::FindFree(int from, int to) const {
  for (int place = from; place < to; ++place) {
    if (!m_Used[place]) return place;
  }
  return -1;
}

// The capacity rises with each lock made, so that a failure leaves the pool whole.
void thr_LockPool::Grow() {
  const int capacity = m_Capacity + kGrowth;
  m_Locks = thr_Regrow(m_Locks, m_Capacity, capacity);
  m_Used = thr_Regrow(m_Used, m_Capacity, capacity);
  while (m_Capacity < capacity) {
    m_Locks[m_Capacity] = new thr_PoolLock(m_Capacity);
    m_Used[m_Capacity] = false;
    ++m_Capacity;
  }
}
