#include "thr_ThreadPool.h"

#include <cstdlib>

#include "internal/thr_ThreadPoolData.h"

template class thr_GlobalSingletonBase<thr_ThreadPool>;

thr_ThreadPool::thr_ThreadPool() : m_Data(new thr_ThreadPoolData) {}

thr_ThreadPool::~thr_ThreadPool() {
  m_Data->Close();
}

void thr_ThreadPool::AddThreads(int count, e_threadType) {
  m_Data->AddThreads(count);
}

bool thr_ThreadPool::RunTask(VRKBasAtiThreadTask* task, bool noJoin, int tries) {
  return m_Data->RunTask(task, noJoin, tries);
}

void thr_ThreadPool::SetErrorCondition(bool failed) {
  m_Data->SetErrorCondition(failed);
}

bool thr_ThreadPool::ErrorConditionSet() {
  const thr_ThreadPool* pool = thr_GlobalSingletonBase::Instance();
  return pool != nullptr && pool->m_Data->ErrorCondition();
}

bool thr_ThreadPool::SuspendThreads() {
  return m_Data->SuspendAllBut(-1);
}

bool thr_ThreadPool::SuspendAllOtherThreads(int slot) {
  return m_Data->SuspendAllBut(slot);
}

void thr_ThreadPool::ResumeThreads() {
  m_Data->ResumeAllBut(-1);
}

void thr_ThreadPool::ResumeAllOtherThreads(int slot) {
  m_Data->ResumeAllBut(slot);
}

bool thr_ThreadPool::IsResumed() const {
  return m_Data->IsResumed();
}

void thr_ThreadPool::TerminateThread(int slot) {
  m_Data->TerminateThread(slot);
}

void thr_ThreadPool::ExitThread(int slot, int code) {
  m_Data->ExitThread(slot, code);
}

int thr_ThreadPool::GetThreadCount() const {
  return m_Data->ThreadCount();
}

thr_Barrier& thr_ThreadPool::GetBarrier() {
  return m_Data->Barrier();
}

void thr_ErrorInThread(int code) {
  if (code != 0) {
    thr_ThreadPool::Instance().SetErrorCondition(true);
    std::exit(code);
  }
  // A pool thread keeps the block of its pool while it runs, so the slot is still there
  // once the pool is gone.
  thr_PoolSlot* own = thr_ThreadPoolData::CallingSlot();
  thr_ThreadPool::Finalize();
  if (own == nullptr) std::exit(0);
  own->pool->TerminateThread(own->index);
}
