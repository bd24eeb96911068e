#include "VRKLnuThr.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <functional>
#include <thread>
#include <utility>
#include <vector>

#include "VRKBasAtiThreadingModel.h"
#include "VRKLnuLifecycle.h"
#include "VRKTestLibrary.h"
#include "mem_Alloc.h"
#include "thr_LockPool.h"
#include "thr_ThreadId.h"
#include "thr_ThreadPool.h"
#include "thr_ThreadSingleton.h"

namespace {

// (made in a pool thread, level) of each object as it is destroyed.
std::vector<std::pair<bool, int>> ends;

template <int kLevel>
class Leveled : public thr_ThreadSingleton<Leveled<kLevel>> {
  friend class thr_ThreadSingletonBase<Leveled>;
  Leveled()
      : thr_ThreadSingleton<Leveled>(kLevel), m_InPool(thr_ThreadId::Instance().GetId() > 0) {}
  ~Leveled() { ends.emplace_back(m_InPool, kLevel); }

  bool m_InPool;
};

// Runs a function on a pool thread.
class Task : public VRKBasAtiThreadTask {
 public:
  explicit Task(std::function<void()> run) : m_Run(std::move(run)) {}
  void Run(int) override { m_Run(); }

 private:
  std::function<void()> m_Run;
};

// A full start, stop and start again, with `footprint` what the memory layer holds while
// the library is down; the new pool has `threads` threads.
thr_ThreadPool& Restart(int& tally, unsigned long& footprint, int threads) {
  VRKLnuBasicUtils_initialize(tally);
  VRKLnuBasicUtils_finalize(tally);
  footprint = mem_Footprint();
  VRKLnuBasicUtils_initialize(tally);
  thr_ThreadPool& pool = thr_ThreadPool::Instance();
  pool.AddThreads(threads);
  return pool;
}

// Threads that the pool leaves running at its end (a task handed over with noJoin, or every
// thread once the error condition is set) finish after the whole library has stopped. What
// they touch then, the per-thread registry, the global lock and the lock pool with a lock
// still held, stays until the last of them has left, and then goes.
TEST(ThrPackageTest, ThreadsLeftRunningFinishAfterAFullStop) {
  thr_PoolLock* held = nullptr;
  const std::function<void()> useThreadObjects = [] { Leveled<4>::Instance(); };
  const std::function<void()> holdAPoolLock = [&held] {
    if (held == nullptr) {
      held = thr_LockPool::Instance().GetLock();
      held->Lock();
    } else {
      held->Unlock();
      thr_LockPool::Instance().ReleaseLock(held);
    }
  };
  const struct {
    bool errorCondition;
    const std::function<void()>& run;
  } kCases[] = {{false, useThreadObjects}, {true, useThreadObjects}, {false, holdAPoolLock}};
  for (const auto& late : kCases) {
    int tally = 0;
    unsigned long footprint;
    thr_ThreadPool& pool = Restart(tally, footprint, 2);
    std::atomic<bool> started{false};
    std::atomic<bool> release{false};
    // The function runs before the stop, then, once `release` is set, after it.
    const auto runLate = [&started, &release, run = late.run] {
      run();
      started = true;
      while (!release)
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
      run();
    };
    ASSERT_TRUE(pool.RunTask(new Task(runLate), !late.errorCondition));
    ASSERT_TRUE(VRKEventually([&] { return started.load(); }));
    pool.SetErrorCondition(late.errorCondition);
    VRKLnuBasicUtils_finalize(tally);
    release = true;
    EXPECT_TRUE(VRKEventually([&] { return mem_Footprint() == footprint; }));
  }
}

// A stop destroys the per-thread objects in level order and gives back everything else.
TEST(ThrPackageTest, StopDestroysThreadObjectsInLevelOrderAndGivesEverythingBack) {
  ends.clear();
  int tally = 0;
  unsigned long footprint;
  thr_ThreadPool& pool = Restart(tally, footprint, 3);
  char* name = VRKBasAtiThreadingModel::getBehavior()->AsString();
  EXPECT_STREQ(name, "MULTI_THREADED_POSIX");
  mem_Free(name);
  std::atomic<bool> done{false};
  ASSERT_TRUE(pool.RunTask(new Task([&done] {
    Leveled<4>::Instance();
    Leveled<16>::Instance();
    done = true;
  })));
  ASSERT_TRUE(VRKEventually([&] { return done.load(); }));
  Leveled<16>::Instance();
  Leveled<4>::Instance();
  thr_LockPool::Instance().GetLock();
  VRKLnuBasicUtils_finalize(tally);

  // The calling thread's objects go first, then those of the pool's threads as they end.
  EXPECT_EQ(ends,
            (std::vector<std::pair<bool, int>>{{false, 16}, {false, 4}, {true, 16}, {true, 4}}));
  EXPECT_EQ(thr_ThreadId::LiveCount(), 0);
  EXPECT_EQ(mem_Footprint(), footprint);

  VRKLnuBasicUtils_initialize(tally);  // and everything comes back
  EXPECT_EQ(thr_ThreadPool::Instance().GetThreadCount(), 0);
  VRKLnuBasicUtils_finalize(tally);
  EXPECT_EQ(tally, 0);
}

}  // namespace
