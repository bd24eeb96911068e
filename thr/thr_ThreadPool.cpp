#include "thr_ThreadPool.h"

#include <cstdlib>

#include "internal/thr_ThreadPoolData.h"
#include "thr_ThreadId.h"

template class thr_GlobalSingletonBase<thr_ThreadPool>;
template class thr_GlobalSingleton<thr_ThreadPool>;

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
  thr_ThreadPool& pool = thr_ThreadPool::Instance();
  if (code != 0) {
    pool.SetErrorCondition(true);
    std::exit(code);
  }
  const int id = thr_ThreadId::Instance().GetId();
  // The pool leaves its block to a thread of its own that ends it, so the block is still
  // there for the thread's own end.
  thr_ThreadPoolData* data = pool.m_Data;
  thr_ThreadPool::Finalize();
  if (id < 1) std::exit(0);
  data->TerminateThread(id - 1);
}
