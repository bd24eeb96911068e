// The cost of watching a run: a Mark of a resource monitor that is off, and an i/o operation's
// report with tracking off (one test of the tracker), each alone; and a tracked write's
// BeginWrite/EndWrite pair against the least such a report can cost, a std::mutex lock and
// unlock with one clock_gettime. The tracker's file summary goes to a scratch directory
// under $TMPDIR (or /tmp), removed at the end.
#include <benchmark/benchmark.h>
#include <time.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <mutex>
#include <string>

#include "VRKLnuLifecycle.h"
#include "utl_IOTracker.h"
#include "utl_ResourceMonitor.h"

namespace {

// Makes the tracker afresh, on or off.
utl_IOTracker* UseTracker(bool on) {
  if (on) {
    setenv("LUN_IO_TRACK", "1", 1);
  } else {
    unsetenv("LUN_IO_TRACK");
  }
  utl_IOTracker_Container::Finalize();
  utl_IOTracker* tracker = utl_IOTracker_Container::Instance().GetTracker();
  if (tracker != nullptr) tracker->RegisterFile("/scratch/results.dat", 0);
  return tracker;
}

void MarkInactive_utl_ResourceMonitor(benchmark::State& state) {
  const cow_String text("step 1 begins");
  utl_ResourceMonitor& monitor = utl_ResourceMonitor::Instance();
  for (auto _ : state) {
    monitor.Mark(text);
    benchmark::ClobberMemory();
  }
}

void UntrackedWrite_utl_IOTracker(benchmark::State& state) {
  UseTracker(false);
  for (auto _ : state) {
    if (utl_IOTracker* tracker = utl_IOTracker_Container::Instance().GetTracker()) {
      tracker->BeginWrite(0);
      tracker->EndWrite(0, 4096);
    }
    benchmark::ClobberMemory();
  }
}

void TrackedWrite_utl_IOTracker(benchmark::State& state) {
  UseTracker(true);
  for (auto _ : state) {
    if (utl_IOTracker* tracker = utl_IOTracker_Container::Instance().GetTracker()) {
      tracker->BeginWrite(0);
      tracker->EndWrite(0, 4096);
    }
  }
  UseTracker(false);
}

void TrackedWrite_mutex_clock(benchmark::State& state) {
  std::mutex lock;
  double total = 0;
  for (auto _ : state) {
    std::lock_guard<std::mutex> hold(lock);
    timespec now;
    clock_gettime(CLOCK_MONOTONIC, &now);
    total += static_cast<double>(now.tv_nsec);
  }
  benchmark::DoNotOptimize(total);
}

}  // namespace

BENCHMARK(MarkInactive_utl_ResourceMonitor);
BENCHMARK(UntrackedWrite_utl_IOTracker);
BENCHMARK(TrackedWrite_utl_IOTracker);
BENCHMARK(TrackedWrite_mutex_clock);

int main(int argc, char** argv) {
  const char* base = std::getenv("TMPDIR");
  std::string scratch = std::string(base != nullptr && *base ? base : "/tmp") + "/monitorXXXXXX";
  if (mkdtemp(scratch.data()) == nullptr || chdir(scratch.c_str()) != 0) return 1;
  unsetenv("LUN_RESOURCE_MONITOR");
  int tally = 0;
  VRKLnuBasicUtils_initialize(tally);
  utl_ResourceMonitor::Instance().Initialize("bench", 0, nullptr, false, false);
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  utl_ResourceMonitor::Finalize();
  VRKLnuBasicUtils_finalize(tally);
  std::remove("ioFileSummary");
  return chdir("/") == 0 && rmdir(scratch.c_str()) == 0 ? 0 : 1;
}
