// The main of a benchmark program that needs the library running: brings it up, runs the
// benchmarks the command line selects, and brings it down.
#ifndef VRKBENCHMAIN_H
#define VRKBENCHMAIN_H

#include <benchmark/benchmark.h>

#include "VRKLnuLifecycle.h"

inline int VRKBenchmarkMain(int argc, char** argv) {
  int tally = 0;
  VRKLnuBasicUtils_initialize(tally);
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  VRKLnuBasicUtils_finalize(tally);
  return 0;
}

#endif  // VRKBENCHMAIN_H
