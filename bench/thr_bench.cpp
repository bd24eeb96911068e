// Threads against their peers: the hand-over latency of the thread pool against a plain
// condition-variable hand-over between two threads and oneTBB's task_arena::enqueue, and
// increments of thr_AtomicType<int> from two threads against std::atomic<int> and a
// std::mutex-guarded int.
//
// A hand-over's latency runs from just before the hand-over call to the first instruction
// of the task. Each benchmark run takes a set of such samples and reports their median (or
// 99th percentile) as its time, so that tools/bench-ratios compares the statistics.
//   ShortIdle: one worker, idle kGap before each hand-over.
//   LongIdle:  kLongWorkers workers, idle for two seconds, then handed one task each, kGap
//              apart; each task holds its worker until all are handed over, so that every
//              hand-over meets a worker that has been idle for more than a second.
// kGap is long enough for a peer's worker that spins for work after its last task to have
// gone to sleep: with shorter gaps the comparison would be between spinning and waking.
// The measuring thread yields while it waits for a task to start: on a machine with few
// processors a thread that spins there can keep the woken worker off its processor.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <string>
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

constexpr auto kGap = std::chrono::milliseconds(20);
constexpr int kShortSamples = 300;
constexpr int kLongWorkers = 128;
// Each hand-over run takes seconds: fewer repetitions than the other cases get.
constexpr int kRepetitions = 5;
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
    while (!done.load(std::memory_order_acquire))
      std::this_thread::yield();
  }
};

// The ways of handing a probe to another thread, each with `workers` threads of its own.
// Prepare makes what HandOver hands over, outside the measured time.
class PoolReceiver {
  class Task : public VRKBasAtiThreadTask {
   public:
    explicit Task(Probe& probe) : m_Probe(probe) {}
    void Run(int) override { m_Probe.Run(); }

   private:
    Probe& m_Probe;
  };

 public:
  using Job = Task*;

  explicit PoolReceiver(int workers) : m_Pool(thr_ThreadPool::Instance()) {
    m_Pool.AddThreads(workers);
  }
  ~PoolReceiver() { thr_ThreadPool::Finalize(); }
  Job Prepare(Probe& probe) { return new Task(probe); }
  void HandOver(Job task) { m_Pool.RunTask(task); }

 private:
  thr_ThreadPool& m_Pool;
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
  using Job = Probe*;

  Job Prepare(Probe& probe) { return &probe; }
  // To the next worker in turn: while a probe holds one, the next hand-over meets another.
  void HandOver(Job probe) { m_Workers[m_Next++ % m_Workers.size()].Give(probe); }

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
  using Job = Probe*;

  Job Prepare(Probe& probe) { return &probe; }
  void HandOver(Job probe) {
    m_Arena.enqueue([probe] { probe->Run(); });
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
  const typename Receiver::Job job = receiver.Prepare(probe);
  probe.handedAt = Clock::now();
  receiver.HandOver(job);
  while (!probe.started.load(std::memory_order_acquire))
    std::this_thread::yield();
  return std::chrono::duration<double>(probe.startedAt - probe.handedAt).count();
}

// Hands over a task to each probe, kGap apart, and returns the latencies; with a gate the
// tasks hold their workers until it opens. The probes are made before the receiver, so
// that they outlive its tasks.
template <class Receiver>
std::vector<double> Sample(Receiver& receiver, std::vector<Probe>& probes, Gate* gate) {
  std::vector<double> seconds;
  for (Probe& probe : probes) {
    std::this_thread::sleep_for(kGap);
    seconds.push_back(Measure(receiver, probe, gate));
    if (gate == nullptr) probe.WaitUntilDone();
  }
  return seconds;
}

template <class Receiver>
std::vector<double> ShortIdleSamples() {
  std::vector<Probe> probes(kShortSamples);
  Receiver receiver(1);
  return Sample(receiver, probes, nullptr);
}

// A first round, at once and unmeasured, makes sure that every worker exists and has run.
template <class Receiver>
std::vector<double> LongIdleSamples() {
  std::vector<Probe> first(kLongWorkers);
  std::vector<Probe> probes(kLongWorkers);
  Gate gates[2];
  Receiver receiver(kLongWorkers);
  for (Probe& probe : first)
    Measure(receiver, probe, &gates[0]);
  gates[0].Open();
  for (Probe& probe : first)
    probe.WaitUntilDone();
  std::this_thread::sleep_for(kLongIdle);
  std::vector<double> seconds = Sample(receiver, probes, &gates[1]);
  gates[1].Open();
  for (Probe& probe : probes)
    probe.WaitUntilDone();
  return seconds;
}

double Quantile(std::vector<double> seconds, double fraction) {
  const size_t at = std::min(seconds.size() - 1, static_cast<size_t>(fraction * seconds.size()));
  std::nth_element(seconds.begin(), seconds.begin() + at, seconds.end());
  return seconds[at];
}

// Registers the four hand-over cases for one receiver. The plain hand-over is registered
// last: it is the peer.
template <class Receiver>
void RegisterHandOvers(const std::string& receiver) {
  struct Case {
    const char* name;
    std::vector<double> (*samples)();
    double fraction;
  };
  const Case cases[] = {{"HandOverShortIdleMedian", ShortIdleSamples<Receiver>, 0.5},
                        {"HandOverShortIdleP99", ShortIdleSamples<Receiver>, 0.99},
                        {"HandOverLongIdleMedian", LongIdleSamples<Receiver>, 0.5},
                        {"HandOverLongIdleP99", LongIdleSamples<Receiver>, 0.99}};
  for (const Case& handOver : cases) {
    benchmark::RegisterBenchmark(
        (handOver.name + ("_" + receiver)).c_str(),
        [handOver](benchmark::State& state) {
          for (auto _ : state) {
            state.SetIterationTime(Quantile(handOver.samples(), handOver.fraction));
          }
        })
        ->Iterations(1)
        ->Repetitions(kRepetitions)
        ->UseManualTime()
        ->Unit(benchmark::kMicrosecond);
  }
}

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
  RegisterHandOvers<PoolReceiver>("thr_ThreadPool");
#ifdef VRK_HAVE_TBB
  RegisterHandOvers<ArenaReceiver>("tbb_task_arena");
#endif
  RegisterHandOvers<CondVarReceiver>("std_condition_variable");
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  VRKLnuBasicUtils_finalize(tally);
}
