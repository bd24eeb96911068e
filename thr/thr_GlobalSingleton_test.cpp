#include "thr_GlobalSingleton.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>
#include <vector>

#include "VRKTestLibrary.h"

namespace {

std::atomic<int> made{0};
std::atomic<int> destroyed{0};

class Tracker : public thr_GlobalSingleton<Tracker> {
 public:
  int Serial() const { return m_Serial; }

 private:
  friend class thr_GlobalSingleton<Tracker>;
  friend class thr_GlobalSingletonBase<Tracker>;
  Tracker() : m_Serial(++made) {
    std::this_thread::yield();  // widen the window for a second maker
  }
  ~Tracker() { ++destroyed; }

  int m_Serial;
};

class SelfAsking : public thr_GlobalSingleton<SelfAsking> {
  friend class thr_GlobalSingleton<SelfAsking>;
  friend class thr_GlobalSingletonBase<SelfAsking>;
  SelfAsking() { Instance(); }
};

class GlobalSingletonTest : public VRKLibraryTest {
 protected:
  void SetUp() override {
    VRKLibraryTest::SetUp();
    made = 0;
    destroyed = 0;
  }
};

TEST_F(GlobalSingletonTest, ThreadsAskingAtOnceGetOneObject) {
  std::atomic<bool> go{false};
  std::vector<Tracker*> seen(8, nullptr);
  std::vector<std::thread> threads;
  for (int t = 0; t < 8; ++t) {
    threads.emplace_back([&, t] {
      while (!go) {
      }
      seen[t] = &Tracker::Instance();
    });
  }
  go = true;
  for (std::thread& thread : threads)
    thread.join();
  EXPECT_EQ(made, 1);
  for (Tracker* tracker : seen)
    EXPECT_EQ(tracker, seen[0]);
  Tracker::Finalize();
}

TEST_F(GlobalSingletonTest, FinalizeDestroysAndTheNextInstanceMakesAnew) {
  Tracker::Finalize();  // none yet: nothing happens
  EXPECT_EQ(Tracker::Instance().Serial(), 1);
  Tracker::Finalize();
  EXPECT_EQ(destroyed, 1);
  EXPECT_EQ(Tracker::Instance().Serial(), 2);
  Tracker::Finalize();
}

TEST_F(GlobalSingletonTest, AConstructorAskingForItsOwnObjectAborts) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  EXPECT_DEATH(SelfAsking::Instance(), "");
}

}  // namespace
