#include "thr_Suspend.h"

#include <errno.h>
#include <signal.h>
#include <time.h>

#include <atomic>

#include "thr_ThreadPool.h"

namespace {

enum StopState { kRunning, kAsked, kStopped };

// How long a thread has to answer, in milliseconds.
std::atomic<int> answerLimit{1000};

thread_local thr_Suspender::Record* t_Record = nullptr;

int SuspendSignal() {
  return SIGRTMIN + 2;
}

int ResumeSignal() {
  return SIGRTMIN + 3;
}

// Only async-signal-safe calls here: atomics, sem_post, sigsuspend and the sigset calls.
void OnSuspend(int) {
  const int saved = errno;
  thr_Suspender::Record* record = t_Record;
  int asked = kAsked;
  if (record != nullptr && record->stop.compare_exchange_strong(asked, kStopped)) {
    sem_post(record->answer);
    sigset_t awake;
    sigfillset(&awake);
    sigdelset(&awake, ResumeSignal());
    while (record->stop.load() == kStopped)
      sigsuspend(&awake);
    sem_post(record->answer);
  }
  errno = saved;
}

// Only wakes sigsuspend.
void OnResume(int) {}

sigset_t SuspendSignals() {
  sigset_t both;
  sigemptyset(&both);
  sigaddset(&both, SuspendSignal());
  sigaddset(&both, ResumeSignal());
  return both;
}

void Install(int signal, void (*handler)(int), int blocked) {
  struct sigaction action = {};
  action.sa_handler = handler;
  action.sa_flags = SA_RESTART;
  sigemptyset(&action.sa_mask);
  if (blocked) sigaddset(&action.sa_mask, blocked);
  sigaction(signal, &action, nullptr);
}

}  // namespace

void thr_installSignalHandler(bool suspend, bool resume) {
  // The resume signal stays blocked in the suspend handler until sigsuspend lets it in,
  // so that it cannot come and go before the handler sleeps.
  if (suspend) Install(SuspendSignal(), OnSuspend, ResumeSignal());
  if (resume) Install(ResumeSignal(), OnResume, 0);
}

void thr_maskSuspendSignalsInThread(int mask) {
  const sigset_t signals = SuspendSignals();
  pthread_sigmask(mask ? SIG_BLOCK : SIG_UNBLOCK, &signals, nullptr);
}

thr_Suspender::thr_Suspender() {
  sem_init(&m_Answer, 0, 0);
}

thr_Suspender::~thr_Suspender() {
  sem_destroy(&m_Answer);
}

int thr_Suspender::StartThread(pthread_t& thread, void* (*entry)(void*), void* argument) {
  const sigset_t signals = SuspendSignals();
  sigset_t before;
  pthread_sigmask(SIG_BLOCK, &signals, &before);
  const int error = pthread_create(&thread, nullptr, entry, argument);
  pthread_sigmask(SIG_SETMASK, &before, nullptr);
  return error;
}

void thr_Suspender::Adopt(Record* record) {
  if (record != nullptr) record->answer = &m_Answer;
  t_Record = record;
  thr_maskSuspendSignalsInThread(0);
}

bool thr_Suspender::Suspend(pthread_t thread, Record& record) {
  if (record.count++ > 0) return true;
  record.stop.store(kAsked);
  if (pthread_kill(thread, SuspendSignal()) == 0 && WaitForAnswer(record, kStopped)) return true;
  // Withdraw the request, unless the thread took it just now: it is stopping then.
  int asked = kAsked;
  if (record.stop.compare_exchange_strong(asked, kRunning)) {
    record.count = 0;
    return false;
  }
  return true;
}

void thr_Suspender::Resume(pthread_t thread, Record& record) {
  if (record.count == 0 || --record.count > 0) return;
  record.stop.store(kRunning);
  pthread_kill(thread, ResumeSignal());
  WaitForAnswer(record, kRunning);
}

void thr_setSuspendAnswerLimit(int milliseconds) {
  answerLimit.store(milliseconds, std::memory_order_relaxed);
}

// The semaphore is every thread's, and an answer that came after its waiter gave up is still
// on it: an answer counts only when the record shows the state it reports.
bool thr_Suspender::WaitForAnswer(const Record& record, int state) {
  const int milliseconds = answerLimit.load(std::memory_order_relaxed);
  timespec limit;
  clock_gettime(CLOCK_MONOTONIC, &limit);
  const long nanoseconds = limit.tv_nsec + milliseconds * 1000000L;
  limit.tv_sec += nanoseconds / 1000000000L;
  limit.tv_nsec = nanoseconds % 1000000000L;
  for (;;) {
    const int result = milliseconds <= 0 ? sem_trywait(&m_Answer)
                                         : sem_clockwait(&m_Answer, CLOCK_MONOTONIC, &limit);
    if (result == 0 && record.stop.load() == state) return true;
    if (result != 0 && errno != EINTR) return false;
  }
}
