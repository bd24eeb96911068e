#include "thr_ThrSingletonRegistry.h"

#include "aio_ofstream.h"
#include "internal/thr_Regrow.h"

template class thr_GlobalSingletonBase<thr_ThrSingletonRegistry>;

namespace {
// The arrays grow by this many entries when full.
constexpr int kGrowth = 10;
// Levels above this one are finalized first; an entry is called while its level is above
// the running threshold, which goes down to 1.
constexpr int kTopThreshold = 29;
}  // namespace

thr_ThrSingletonRegistry::~thr_ThrSingletonRegistry() {
  mem_Free(m_Finalizers);
  mem_Free(m_Levels);
}

void thr_ThrSingletonRegistry::Register(thr_ThreadObjectFinalizer finalizer) {
  thr_Hold<thr_Mutex> hold(m_Lock);
  if (m_Count == m_Capacity) Grow();
  m_Finalizers[m_Count] = finalizer;
  m_Levels[m_Count] = 0;
  ++m_Count;
}

// Under the lock, since Register may move the arrays meanwhile.
void thr_ThrSingletonRegistry::SetDestructLevel(thr_ThreadObjectFinalizer finalizer,
                                                thr_ThreadObjectDestructLevel level) {
  thr_Hold<thr_Mutex> hold(m_Lock);
  for (int i = 0; i < m_Count; ++i) {
    if (m_Finalizers[i] == finalizer) m_Levels[i] = level;
  }
}

void thr_ThrSingletonRegistry::FinalizeThread(int) {
  thr_Hold<thr_Mutex> hold(m_Lock);
  std::exception_ptr failure;
  for (int threshold = kTopThreshold; threshold >= 1; --threshold) {
    // A finalizer may register further entries: the count is read afresh.
    for (int i = m_Count - 1; i >= 0; --i) {
      if (m_Finalizers[i] != nullptr && m_Levels[i] > threshold) CallEntry(i, failure);
    }
  }
  if (failure) std::rethrow_exception(failure);
}

void thr_ThrSingletonRegistry::FinalizeCallingThread() {
  thr_ThrSingletonRegistry* registry = thr_GlobalSingletonBase::Instance();
  if (registry == nullptr) return;
  try {
    registry->FinalizeThread(0);
  } catch (...) {
    aio_cerr << "*** Error: a thread object's finalizer raised an exception." << aio_endl;
  }
}

void thr_ThrSingletonRegistry::CallEntry(int index, std::exception_ptr& failure) {
  bool done = true;
  try {
    done = m_Finalizers[index]() != 0;
  } catch (...) {
    if (!failure) failure = std::current_exception();
  }
  if (!done) return;
  m_Finalizers[index] = nullptr;
  m_Levels[index] = 0;
}

void thr_ThrSingletonRegistry::Grow() {
  const int capacity = m_Capacity + kGrowth;
  m_Finalizers = thr_Regrow(m_Finalizers, m_Count, capacity);
  m_Levels = thr_Regrow(m_Levels, m_Count, capacity);
  m_Capacity = capacity;
}
