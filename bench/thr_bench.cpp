// Threads against their peers: the hand-over latency of the thread pool against a plain
// condition-variable hand-over between two threads and oneTBB's task_arena::enqueue, and
// increments of thr_AtomicType<int> from two threads against std::atomic<int> and a
// std::mutex-guarded int.
//
// A hand-over's latency runs from just before the hand-over call to the first instruction
// of the task. Each benchmark run takes a set of such samples and reports their median (or
// 99th percentile) as its time, so that tools/bench-ratios compares the statistics.
//   ShortIdle: one worker, idle about 2 ms before each hand-over.
//   LongIdle:  kLongWorkers workers, all idle for more than a second; each task holds its
//              worker until the whole set is taken, so that every hand-over meets a worker
//              that has slept since the set began.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

#include "VRKLnuLifecycle.h"
#include "thr_AtomicType.h"
#include "thr_ThreadPool.h"

#ifdef VRK_HAVE_TBB
#include <oneapi/tbb/global_control.h>
#include <oneapi/tbb/task_arena.h>
#endif

namespace {

using Clock = std::chrono::steady_clock;

constexpr int kShortSamples = 300;
constexpr auto kShortIdle = std::chrono::milliseconds(2);
constexpr int kLongWorkers = 64;
constexpr int kLongSets = 1;
// Well past the second after which an idle pool worker stops waking every 10 ms.
constexpr auto kLongIdle = std::chrono::milliseconds(2000);

// Where the tasks of a set wait, without using a processor, until the set is taken.
class Gate {
 public:
  void Wait() {
    std::unique_lock<std::mutex> hold(m_Lock);
    m_Opened.wait(hold, [this] { return m_Open; });
  }
  void Open() {
    {
      std::lock_guard<std::mutex> hold(m_Lock);
      m_Open = true;
    }
    m_Opened.notify_all();
  }

 private:
  std::mutex m_Lock;
  std::condition_variable m_Opened;
  bool m_Open = false;
};

// One hand-over: the task stamps its start, holds its worker at the gate, if any, and marks
// its end as the last thing it does, after which the probe may go.
struct Probe {
  Clock::time_point handedAt;
  Clock::time_point startedAt;
  std::atomic<bool> started{false};
  std::atomic<bool> done{false};
  Gate* gate = nullptr;

  void Run() {
    Gate* until = gate;
    startedAt = Clock::now();
    started.store(true, std::memory_order_release);
    if (until) until->Wait();
    done.store(true, std::memory_order_release);
  }
  void WaitUntilDone() const {
    while (!done.load(std::memory_order_acquire)) std::this_thread::yield();
  }
};

// The ways of handing a probe to another thread, each with `workers` threads of its own.
class PoolReceiver {
 public:
  explicit PoolReceiver(int workers) { thr_ThreadPool::Instance().AddThreads(workers); }
  ~PoolReceiver() { thr_ThreadPool::Finalize(); }
  void HandOver(Probe& probe) { thr_ThreadPool::Instance().RunTask(new Task(probe)); }

 private:
  class Task : public VRKBasAtiThreadTask {
   public:
    explicit Task(Probe& probe) : m_Probe(probe) {}
    void Run(int) override { m_Probe.Run(); }

   private:
    Probe& m_Probe;
  };
};

// Each worker waits on its own condition variable for a probe.
class CondVarReceiver {
 public:
  explicit CondVarReceiver(int workers) : m_Workers(workers) {
    for (Worker& worker : m_Workers)
      worker.thread = std::thread([&worker] { worker.Loop(); });
  }
  ~CondVarReceiver() {
    for (Worker& worker : m_Workers)
      worker.Give(nullptr);
    for (Worker& worker : m_Workers)
      worker.thread.join();
  }
  // To the next worker in turn: while a probe holds one, the next hand-over meets another.
  void HandOver(Probe& probe) { m_Workers[m_Next++ % m_Workers.size()].Give(&probe); }

 private:
  struct Worker {
    void Give(Probe* given) {
      {
        std::lock_guard<std::mutex> hold(lock);
        probe = given;
        pending = true;
      }
      wake.notify_one();
    }
    void Loop() {
      for (;;) {
        std::unique_lock<std::mutex> hold(lock);
        wake.wait(hold, [this] { return pending; });
        pending = false;
        Probe* taken = probe;
        hold.unlock();
        if (taken == nullptr) return;
        taken->Run();
      }
    }

    std::mutex lock;
    std::condition_variable wake;
    Probe* probe = nullptr;
    bool pending = false;
    std::thread thread;
  };

  std::vector<Worker> m_Workers;
  size_t m_Next = 0;
};

#ifdef VRK_HAVE_TBB
class ArenaReceiver {
 public:
  explicit ArenaReceiver(int workers)
      : m_Control(tbb::global_control::max_allowed_parallelism, workers + 1), m_Arena(workers, 0) {}
  void HandOver(Probe& probe) {
    m_Arena.enqueue([&probe] { probe.Run(); });
  }

 private:
  tbb::global_control m_Control;
  tbb::task_arena m_Arena;
};
#endif

// Hands `probe` over and returns its latency in seconds.
template <class Receiver>
double Measure(Receiver& receiver, Probe& probe, Gate* gate) {
  probe.gate = gate;
  probe.handedAt = Clock::now();
  receiver.HandOver(probe);
  while (!probe.started.load(std::memory_order_acquire)) std::this_thread::yield();
  return std::chrono::duration<double>(probe.startedAt - probe.handedAt).count();
}

// The probes are made before the receiver, so that they outlive its tasks.
template <class Receiver>
std::vector<double> ShortIdleSamples() {
  std::vector<Probe> probes(kShortSamples);
  Receiver receiver(1);
  std::vector<double> seconds;
  for (Probe& probe : probes) {
    std::this_thread::sleep_for(kShortIdle);
    seconds.push_back(Measure(receiver, probe, nullptr));
    probe.WaitUntilDone();
  }
  return seconds;
}

// The first set only makes sure that every worker exists and has run once.
template <class Receiver>
std::vector<double> LongIdleSamples() {
  std::vector<Probe> probes(kLongWorkers * (kLongSets + 1));
  std::vector<Gate> gates(kLongSets + 1);
  Receiver receiver(kLongWorkers);
  std::vector<double> seconds;
  for (int set = 0; set <= kLongSets; ++set) {
    std::this_thread::sleep_for(kLongIdle);
    Probe* first = &probes[set * kLongWorkers];
    for (Probe* probe = first; probe != first + kLongWorkers; ++probe) {
      const double latency = Measure(receiver, *probe, &gates[set]);
      if (set > 0) seconds.push_back(latency);
    }
    gates[set].Open();
    for (Probe* probe = first; probe != first + kLongWorkers; ++probe)
      probe->WaitUntilDone();
  }
  return seconds;
}

double Quantile(std::vector<double> seconds, double fraction) {
  const size_t at = std::min(seconds.size() - 1, static_cast<size_t>(fraction * seconds.size()));
  std::nth_element(seconds.begin(), seconds.begin() + at, seconds.end());
  return seconds[at];
}

template <std::vector<double> (*Samples)(), int kPercent>
void HandOver(benchmark::State& state) {
  for (auto _ : state) {
    const std::vector<double> seconds = Samples();
    state.SetIterationTime(Quantile(seconds, kPercent / 100.0));
    state.counters["samples"] = static_cast<double>(seconds.size());
  }
}

// Registers one case for every receiver, the plain hand-over last: it is the peer.
#define VRK_HANDOVER_CASE(name, samples, percent)                 \
  BENCHMARK_TEMPLATE(HandOver, samples<PoolReceiver>, percent)    \
      ->Name(#name "_thr_ThreadPool")                             \
      ->Iterations(1)                                             \
      ->UseManualTime()                                           \
      ->Unit(benchmark::kMicrosecond);                            \
  VRK_ARENA_CASE(name, samples, percent)                          \
  BENCHMARK_TEMPLATE(HandOver, samples<CondVarReceiver>, percent) \
      ->Name(#name "_std_condition_variable")                     \
      ->Iterations(1)                                             \
      ->UseManualTime()                                           \
      ->Unit(benchmark::kMicrosecond)

#ifdef VRK_HAVE_TBB
#define VRK_ARENA_CASE(name, samples, percent)                  \
  BENCHMARK_TEMPLATE(HandOver, samples<ArenaReceiver>, percent) \
      ->Name(#name "_tbb_task_arena")                           \
      ->Iterations(1)                                           \
      ->UseManualTime()                                         \
      ->Unit(benchmark::kMicrosecond);
#else
#define VRK_ARENA_CASE(name, samples, percent)
#endif

VRK_HANDOVER_CASE(HandOverShortIdleMedian, ShortIdleSamples, 50);
VRK_HANDOVER_CASE(HandOverShortIdleP99, ShortIdleSamples, 99);
VRK_HANDOVER_CASE(HandOverLongIdleMedian, LongIdleSamples, 50);
VRK_HANDOVER_CASE(HandOverLongIdleP99, LongIdleSamples, 99);

// Increments of one shared value from two threads.
void Increment_thr_AtomicType(benchmark::State& state) {
  static thr_AtomicType<int> value(0);
  for (auto _ : state)
    ++value;
}

void Increment_std_mutex(benchmark::State& state) {
  static std::mutex lock;
  static int value = 0;
  for (auto _ : state) {
    std::lock_guard<std::mutex> hold(lock);
    benchmark::DoNotOptimize(++value);
  }
}

void Increment_std_atomic(benchmark::State& state) {
  static std::atomic<int> value{0};
  for (auto _ : state)
    value.fetch_add(1);
}

}  // namespace

BENCHMARK(Increment_thr_AtomicType)->Threads(2)->UseRealTime();
BENCHMARK(Increment_std_mutex)->Threads(2)->UseRealTime();
BENCHMARK(Increment_std_atomic)->Threads(2)->UseRealTime();

int main(int argc, char** argv) {
  int tally = 0;
  VRKLnuBasicUtils_initialize(tally);
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  VRKLnuBasicUtils_finalize(tally);
}
