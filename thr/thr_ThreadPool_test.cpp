#include "thr_ThreadPool.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <functional>
#include <memory>
#include <thread>
#include <vector>

#include "VRKTestLibrary.h"
#include "omi_FatalError.h"
#include "thr_ThreadId.h"
#include "thr_ThreadSingleton.h"

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

// Waits up to ten seconds for the condition.
bool Eventually(const std::function<bool()>& condition) {
  const auto limit = std::chrono::steady_clock::now() + std::chrono::seconds(10);
  while (!condition()) {
    if (std::chrono::steady_clock::now() > limit) return false;
    std::this_thread::sleep_for(milliseconds(1));
  }
  return true;
}

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

  // A task that marks its start, then runs until `release`.
  Task* Blocking() {
    return new Task(
        [this](int) {
          ++started;
          while (!release)
            std::this_thread::sleep_for(milliseconds(1));
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
  // Threads the pool did not wait for have finalized their objects: the library may stop.
  void WaitForLeftThreads() {
    EXPECT_TRUE(Eventually([] { return thr_ThreadId::LiveCount() == 0; }));
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
  EXPECT_TRUE(Eventually([&] { return ranIn == 0; }));
  EXPECT_EQ(pool->GetThreadCount(), 1);
}

TEST_F(ThreadPoolTest, ATaskNoThreadTookGoesWithThePool) {
  bool ran = false;
  EXPECT_TRUE(pool->RunTask(new Task([&](int) { ran = true; }, &deleted)));
  thr_ThreadPool::Finalize();
  EXPECT_FALSE(ran);
  EXPECT_EQ(deleted, 1);
}

TEST_F(ThreadPoolTest, RefusesANullTaskAndMoreThanItsSlots) {
  EXPECT_FALSE(pool->RunTask(nullptr));
  pool->AddThreads(0);
  EXPECT_THROW(pool->AddThreads(1025), omi_FatalError);
  EXPECT_THROW(pool->AddThreads(-1), omi_FatalError);
  pool->AddThreads(2);
  EXPECT_THROW(pool->AddThreads(1023), omi_FatalError);
  EXPECT_EQ(pool->GetThreadCount(), 2);
}

TEST_F(ThreadPoolTest, TriesRunOutWhenEveryWorkerIsBusy) {
  pool->AddThreads(2);
  ASSERT_TRUE(pool->RunTask(Blocking()));
  ASSERT_TRUE(pool->RunTask(Blocking()));
  ASSERT_TRUE(Eventually([&] { return started == 2; }));
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
  ASSERT_TRUE(Eventually([&] { return deleted == kTasks; }));
  int once = 0;
  for (const std::atomic<int>& count : runs)
    once += count == 1;
  EXPECT_EQ(once, kTasks);
}

TEST_F(ThreadPoolTest, EndingWaitsForRunningTasksButNotForNoJoinOnes) {
  pool->AddThreads(2);
  std::atomic<bool> releaseJoined{false};
  ASSERT_TRUE(pool->RunTask(Blocking(), true));
  ASSERT_TRUE(pool->RunTask(new Task(
      [&](int) {
        ++started;
        while (!releaseJoined)
          std::this_thread::sleep_for(milliseconds(1));
      },
      &deleted)));
  ASSERT_TRUE(Eventually([&] { return started == 2; }));
  std::thread ender([] { thr_ThreadPool::Finalize(); });
  std::this_thread::sleep_for(milliseconds(50));
  EXPECT_EQ(deleted, 0);  // the end waits for the joined task
  releaseJoined = true;
  ender.join();
  EXPECT_EQ(deleted, 1);  // but not for the other, which goes on
  release = true;
  EXPECT_TRUE(Eventually([&] { return deleted == 2; }));
  WaitForLeftThreads();
}

TEST_F(ThreadPoolTest, WithTheErrorConditionTheEndWaitsForNoThread) {
  pool->AddThreads(2);
  ASSERT_TRUE(pool->RunTask(Blocking()));
  ASSERT_TRUE(Eventually([&] { return started == 1; }));
  pool->SetErrorCondition(true);
  EXPECT_TRUE(thr_ThreadPool::ErrorConditionSet());
  thr_ThreadPool::Finalize();
  EXPECT_FALSE(thr_ThreadPool::ErrorConditionSet());
  release = true;
  WaitForLeftThreads();
}

// While the threads are stopped nothing here allocates or prints: results are kept in
// locals and checked after the resume.
TEST_F(ThreadPoolTest, SuspendStopsTheThreadsUntilTheLastResume) {
  pool->AddThreads(2);
  std::atomic<long>& counter = counts[0];
  ASSERT_TRUE(pool->RunTask(Counting(counter)));
  ASSERT_TRUE(Eventually([&] { return counter > 0; }));

  const bool stopped = pool->SuspendThreads();
  const bool twice = pool->SuspendThreads();
  const bool resumedFlag = pool->IsResumed();
  const long before = counter;
  std::this_thread::sleep_for(milliseconds(200));
  const long after = counter;
  pool->ResumeThreads();  // one of two: still stopped
  std::this_thread::sleep_for(milliseconds(50));
  const long stillAfter = counter;
  pool->ResumeThreads();

  EXPECT_TRUE(stopped);
  EXPECT_TRUE(twice);
  EXPECT_FALSE(resumedFlag);
  EXPECT_EQ(before, after);
  EXPECT_EQ(after, stillAfter);
  EXPECT_TRUE(pool->IsResumed());
  EXPECT_TRUE(Eventually([&] { return counter > stillAfter; }));
}

TEST_F(ThreadPoolTest, SuspendAllOtherThreadsLeavesThatSlotRunning) {
  pool->AddThreads(2);
  std::atomic<long>& first = counts[0];
  std::atomic<long>& second = counts[1];
  ASSERT_TRUE(pool->RunTask(Counting(first)));
  ASSERT_TRUE(Eventually([&] { return first > 0; }));
  ASSERT_TRUE(pool->RunTask(Counting(second)));
  ASSERT_TRUE(Eventually([&] { return second > 0; }));

  const bool stopped = pool->SuspendAllOtherThreads(1);
  const long firstBefore = first;
  const long secondBefore = second;
  std::this_thread::sleep_for(milliseconds(200));
  const long firstAfter = first;
  const long secondAfter = second;
  pool->ResumeAllOtherThreads(1);

  EXPECT_TRUE(stopped);
  EXPECT_EQ(firstBefore, firstAfter);
  EXPECT_GT(secondAfter, secondBefore);
  EXPECT_TRUE(Eventually([&] { return first > firstAfter; }));
}

TEST_F(ThreadPoolTest, AThreadThatMasksTheSignalsIsReportedNotWaitedFor) {
  pool->AddThreads(1);
  ASSERT_TRUE(pool->RunTask(new Task([this](int) {
    thr_maskSuspendSignalsInThread(1);
    ++started;
    while (!release)
      std::this_thread::sleep_for(milliseconds(1));
    thr_maskSuspendSignalsInThread(0);
  })));
  ASSERT_TRUE(Eventually([&] { return started == 1; }));
  EXPECT_FALSE(pool->SuspendThreads());
  pool->ResumeThreads();  // nothing to resume
}

// Objects of the thread singletons that record the order of their end.
std::vector<int> ends;

template <int kLevel>
class Ordered : public thr_ThreadSingleton<Ordered<kLevel>> {
  friend class thr_ThreadSingleton<Ordered>;
  friend class thr_ThreadSingletonBase<Ordered>;
  Ordered() : thr_ThreadSingleton<Ordered>(kLevel) {}
  ~Ordered() { ends.push_back(kLevel); }
};

TEST_F(ThreadPoolTest, AnEndingThreadDestroysItsObjectsInLevelOrder) {
  pool->AddThreads(1);
  ASSERT_TRUE(pool->RunTask(new Task(
      [](int) {
        Ordered<3>::Instance();
        Ordered<20>::Instance();
        Ordered<9>::Instance();
      },
      &deleted)));
  ASSERT_TRUE(Eventually([&] { return deleted == 1; }));
  thr_ThreadPool::Finalize();  // joins the thread: its objects are gone
  EXPECT_EQ(ends, (std::vector<int>{20, 9, 3}));
}

TEST_F(ThreadPoolTest, ErrorInThreadWithACodeEndsTheProcess) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  EXPECT_EXIT(thr_ErrorInThread(3), ::testing::ExitedWithCode(3), "");
  EXPECT_EXIT(thr_ErrorInThread(0), ::testing::ExitedWithCode(0), "");
}

TEST_F(ThreadPoolTest, ErrorInThreadZeroInAPoolThreadEndsThePoolAndTheThread) {
  pool->AddThreads(2);
  ASSERT_TRUE(pool->RunTask(new Task([](int) { thr_ErrorInThread(0); }, &deleted)));
  ASSERT_TRUE(Eventually([&] { return deleted == 1; }));
  WaitForLeftThreads();
  EXPECT_EQ(thr_ThreadPool::Instance().GetThreadCount(), 0);  // a new pool
}

}  // namespace
