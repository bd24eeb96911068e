#include "thr_ThreadPool.h"

#include <gtest/gtest.h>
#include <pthread.h>
#include <sched.h>

#include <atomic>
#include <chrono>
#include <functional>
#include <memory>
#include <thread>
#include <vector>

#include "VRKTestLibrary.h"
#include "internal/thr_Suspend.h"
#include "omi_FatalError.h"
#include "thr_ThreadId.h"

namespace {

using std::chrono::milliseconds;

// Runs a function; counts its deletion.
class Task : public VRKBasAtiThreadTask {
 public:
  explicit Task(std::function<void(int)> run, std::atomic<int>* deleted = nullptr)
      : m_Run(std::move(run)), m_Deleted(deleted) {}
  ~Task() override {
    if (m_Deleted) ++*m_Deleted;
  }
  void Run(int slot) override { m_Run(slot); }

 private:
  std::function<void(int)> m_Run;
  std::atomic<int>* m_Deleted;
};

// The flags and counters that tasks use live in the fixture, so that they outlive the
// pool, which ends in TearDown.
class ThreadPoolTest : public VRKLibraryTest {
 protected:
  void SetUp() override {
    VRKLibraryTest::SetUp();
    pool = &thr_ThreadPool::Instance();
  }
  void TearDown() override {
    release = true;
    VRKLibraryTest::TearDown();
  }

  // A task that marks its start, then runs until `until`, with the suspend signals masked
  // if asked to.
  Task* Blocking(std::atomic<bool>* until = nullptr, bool masked = false) {
    if (!until) until = &release;
    return new Task(
        [this, until, masked](int) {
          if (masked) thr_maskSuspendSignalsInThread(1);
          ++started;
          while (!*until)
            std::this_thread::sleep_for(milliseconds(1));
          if (masked) thr_maskSuspendSignalsInThread(0);
        },
        &deleted);
  }
  // A task that counts as fast as it can until `release`.
  Task* Counting(std::atomic<long>& counter) {
    return new Task([this, &counter](int) {
      while (!release)
        counter.fetch_add(1, std::memory_order_relaxed);
    });
  }
  // Threads the pool did not wait for have finalized their objects, so that none outlives
  // the test.
  void WaitForLeftThreads() {
    EXPECT_TRUE(VRKEventually([] { return thr_ThreadId::LiveCount() == 0; }));
  }

  thr_ThreadPool* pool = nullptr;
  std::atomic<int> started{0};
  std::atomic<bool> release{false};
  std::atomic<int> deleted{0};
  std::atomic<long> counts[2] = {};
};

TEST_F(ThreadPoolTest, WithoutThreadsATaskWaitsInSlotZeroForTheFirstThread) {
  std::atomic<int> ranIn{-1};
  EXPECT_TRUE(pool->RunTask(new Task([&](int slot) { ranIn = slot; }), false, 1));
  std::this_thread::sleep_for(milliseconds(50));
  EXPECT_EQ(ranIn, -1);
  pool->AddThreads(1);
  EXPECT_TRUE(VRKEventually([&] { return ranIn == 0; }));

  thr_ThreadPool::Finalize();  // a task no thread took goes with the pool
  bool ran = false;
  EXPECT_TRUE(thr_ThreadPool::Instance().RunTask(new Task([&](int) { ran = true; }, &deleted)));
  thr_ThreadPool::Finalize();
  EXPECT_FALSE(ran);
  EXPECT_EQ(deleted, 1);
}

TEST_F(ThreadPoolTest, RefusesBadInputAndRunsOutOfTriesWhenEveryWorkerIsBusy) {
  EXPECT_FALSE(pool->RunTask(nullptr));
  EXPECT_THROW(pool->AddThreads(1025), omi_FatalError);
  EXPECT_THROW(pool->AddThreads(-1), omi_FatalError);
  pool->AddThreads(2);
  EXPECT_THROW(pool->AddThreads(1023), omi_FatalError);
  EXPECT_EQ(pool->GetThreadCount(), 2);

  ASSERT_TRUE(pool->RunTask(Blocking()));
  ASSERT_TRUE(pool->RunTask(Blocking()));
  ASSERT_TRUE(VRKEventually([&] { return started == 2; }));
  std::unique_ptr<Task> refused(new Task([](int) {}));
  EXPECT_FALSE(pool->RunTask(refused.get(), false, 1));
  EXPECT_FALSE(pool->RunTask(refused.get(), false, 100));
}

TEST_F(ThreadPoolTest, EveryTaskOfAStreamRunsOnceAndIsDeleted) {
  constexpr int kTasks = 100000;
  pool->AddThreads(4);
  std::vector<std::atomic<int>> runs(kTasks);
  for (int i = 0; i < kTasks; ++i) {
    ASSERT_TRUE(pool->RunTask(new Task([&runs, i](int) { ++runs[i]; }, &deleted)));
  }
  ASSERT_TRUE(VRKEventually([&] { return deleted == kTasks; }));
  int once = 0;
  for (const std::atomic<int>& count : runs)
    once += count == 1;
  EXPECT_EQ(once, kTasks);
}

TEST_F(ThreadPoolTest, EndingWaitsForRunningTasksButNotForNoJoinOnes) {
  pool->AddThreads(2);
  std::atomic<bool> releaseJoined{false};
  ASSERT_TRUE(pool->RunTask(Blocking(), true));
  ASSERT_TRUE(pool->RunTask(Blocking(&releaseJoined)));
  ASSERT_TRUE(VRKEventually([&] { return started == 2; }));
  std::thread ender([] { thr_ThreadPool::Finalize(); });
  std::this_thread::sleep_for(milliseconds(50));
  EXPECT_EQ(deleted, 0);  // the end waits for the joined task
  releaseJoined = true;
  ender.join();
  EXPECT_EQ(deleted, 1);  // but not for the other, which goes on
  release = true;
  EXPECT_TRUE(VRKEventually([&] { return deleted == 2; }));
  WaitForLeftThreads();
}

// A worker idle for over a second sleeps without limit; asking its slot to end from another
// thread wakes it, so that the pool's end, which waits for it, returns.
TEST_F(ThreadPoolTest, TerminatingTheSlotOfAWorkerAsleepForGoodWakesIt) {
  pool->AddThreads(2);
  std::this_thread::sleep_for(milliseconds(1500));
  pool->TerminateThread(1);
  thr_ThreadPool::Finalize();
}

TEST_F(ThreadPoolTest, WithTheErrorConditionTheEndWaitsForNoThread) {
  pool->AddThreads(2);
  ASSERT_TRUE(pool->RunTask(Blocking()));
  ASSERT_TRUE(VRKEventually([&] { return started == 1; }));
  pool->SetErrorCondition(true);
  EXPECT_TRUE(thr_ThreadPool::ErrorConditionSet());
  thr_ThreadPool::Finalize();
  EXPECT_FALSE(thr_ThreadPool::ErrorConditionSet());
  release = true;
  WaitForLeftThreads();
}

// While threads are stopped nothing here allocates or prints: the counts are kept in
// locals and checked after the resume.
TEST_F(ThreadPoolTest, SuspendStopsThreadsUntilTheLastResumeAndCanSpareOneSlot) {
  pool->AddThreads(2);
  std::atomic<long>& first = counts[0];
  std::atomic<long>& second = counts[1];
  ASSERT_TRUE(pool->RunTask(Counting(first)));
  ASSERT_TRUE(VRKEventually([&] { return first > 0; }));
  ASSERT_TRUE(pool->RunTask(Counting(second)));
  ASSERT_TRUE(VRKEventually([&] { return second > 0; }));

  const bool sparedOne = pool->SuspendAllOtherThreads(1);
  const long spared[2] = {first, second};
  std::this_thread::sleep_for(milliseconds(200));
  const long sparedAfter[2] = {first, second};
  const bool all = pool->SuspendThreads();  // slot 0 now twice
  const bool resumedFlag = pool->IsResumed();
  const long secondStopped = second;
  std::this_thread::sleep_for(milliseconds(200));
  const long allAfter[2] = {first, second};
  pool->ResumeThreads();  // slot 0 once more to go
  std::this_thread::sleep_for(milliseconds(50));
  const long firstStill = first;
  pool->ResumeAllOtherThreads(1);

  EXPECT_TRUE(sparedOne);
  EXPECT_EQ(sparedAfter[0], spared[0]);
  EXPECT_GT(sparedAfter[1], spared[1]);
  EXPECT_TRUE(all);
  EXPECT_FALSE(resumedFlag);
  EXPECT_EQ(allAfter[0], sparedAfter[0]);
  EXPECT_EQ(allAfter[1], secondStopped);
  EXPECT_EQ(firstStill, allAfter[0]);
  EXPECT_TRUE(pool->IsResumed());
  EXPECT_TRUE(VRKEventually([&] { return first > firstStill; }));
}

TEST_F(ThreadPoolTest, AThreadThatMasksTheSignalsIsReportedNotWaitedFor) {
  pool->AddThreads(1);
  ASSERT_TRUE(pool->RunTask(Blocking(&release, true)));
  ASSERT_TRUE(VRKEventually([&] { return started == 1; }));
  EXPECT_FALSE(pool->SuspendThreads());
  pool->ResumeThreads();  // nothing to resume
}

// A resume whose answer comes after the wait for it gave up leaves that answer behind; it
// must not pass for the answer of a later suspend, here of a thread that can't be stopped.
// The answer is made late for sure: slot 1 shares this thread's processor at idle priority,
// so it runs only once this thread sleeps, and the resume doesn't wait.
TEST_F(ThreadPoolTest, ALateResumeAnswerAnswersNoLaterSuspend) {
  cpu_set_t before, one;
  ASSERT_EQ(pthread_getaffinity_np(pthread_self(), sizeof before, &before), 0);
  CPU_ZERO(&one);
  CPU_SET(sched_getcpu(), &one);
  pool->AddThreads(2);
  ASSERT_TRUE(pool->RunTask(Blocking(&release, true)));  // slot 0 masks the signals
  ASSERT_TRUE(VRKEventually([&] { return started == 1; }));
  ASSERT_TRUE(pool->RunTask(new Task([&](int) {
    const sched_param idle = {};
    pthread_setaffinity_np(pthread_self(), sizeof one, &one);
    pthread_setschedparam(pthread_self(), SCHED_IDLE, &idle);
    ++started;
  })));
  ASSERT_TRUE(VRKEventually([&] { return started == 2; }));
  ASSERT_EQ(pthread_setaffinity_np(pthread_self(), sizeof one, &one), 0);
  const bool stopped = pool->SuspendAllOtherThreads(0);
  thr_setSuspendAnswerLimit(0);
  pool->ResumeAllOtherThreads(0);
  thr_setSuspendAnswerLimit(1000);
  pthread_setaffinity_np(pthread_self(), sizeof before, &before);
  std::this_thread::sleep_for(milliseconds(100));  // the answer comes meanwhile
  EXPECT_TRUE(stopped);
  EXPECT_FALSE(pool->SuspendAllOtherThreads(1));
  pool->ResumeAllOtherThreads(1);
}

TEST_F(ThreadPoolTest, ErrorInThreadWithACodeEndsTheProcess) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  EXPECT_EXIT(thr_ErrorInThread(3), ::testing::ExitedWithCode(3), "");
  EXPECT_EXIT(thr_ErrorInThread(0), ::testing::ExitedWithCode(0), "");
}

TEST_F(ThreadPoolTest, ErrorInThreadZeroInAPoolThreadEndsThePoolAndTheThread) {
  pool->AddThreads(2);
  ASSERT_TRUE(pool->RunTask(new Task([](int) { thr_ErrorInThread(0); }, &deleted)));
  ASSERT_TRUE(VRKEventually([&] { return deleted == 1; }));
  WaitForLeftThreads();
  EXPECT_EQ(thr_ThreadPool::Instance().GetThreadCount(), 0);  // a new pool
}

}  // namespace
