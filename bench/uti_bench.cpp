// Processes and reports against plain code: a child that does nothing, started and waited for
// by uti_Spawn::AndWait, by std::system (which runs a shell) and by posix_spawn with waitpid
// written directly; and a text table of 10,000 rows by 8 columns written by uti_ReportTable to
// an aio_ostrstream, against the same cells written with snprintf into one buffer.
#include <benchmark/benchmark.h>
#include <spawn.h>
#include <sys/wait.h>

#include <cstdio>
#include <cstdlib>
#include <string>

#include "VRKBenchMain.h"
#include "aio_ostrstream.h"
#include "uti_ReportTable.h"
#include "uti_Spawn.h"

extern char** environ;

namespace {

constexpr const char* kTrue = "/bin/true";
constexpr int kRows = 10000;
constexpr int kColumns = 8;
constexpr int kWidth = 12;

void SpawnTrue_uti_Spawn(benchmark::State& state) {
  const cow_List<cow_String> none;
  for (auto _ : state) {
    uti_Redirection redirection;
    if (uti_Spawn::AndWait(kTrue, VRKBasUtlFilePath(), none, redirection, uti_Environment()) != 0) {
      state.SkipWithError("the child failed");
    }
  }
}

void SpawnTrue_system(benchmark::State& state) {
  for (auto _ : state) {
    if (std::system(kTrue) != 0) state.SkipWithError("the child failed");
  }
}

void SpawnTrue_posix_spawn(benchmark::State& state) {
  char* argv[] = {const_cast<char*>(kTrue), nullptr};
  for (auto _ : state) {
    pid_t pid;
    int status = 0;
    if (posix_spawn(&pid, kTrue, nullptr, nullptr, argv, environ) != 0 ||
        waitpid(pid, &status, 0) != pid || status != 0) {
      state.SkipWithError("the child failed");
    }
  }
}

double Cell(int row, int column) {
  return (row + 1) * 1.25 + column * 1000.5;
}

void TextTable_uti_ReportTable(benchmark::State& state) {
  for (auto _ : state) {
    aio_ostrstream os;
    {
      uti_ReportDocument doc("", uti_ReportEnum::uti_ReportText, os);
      uti_ReportTable table(doc, "", "");
      for (int column = 0; column < kColumns; ++column)
        table.Format(kWidth);
      for (int row = 0; row < kRows; ++row) {
        for (int column = 0; column < kColumns; ++column)
          table.Out(Cell(row, column));
        table.Endl();
      }
    }
    benchmark::DoNotOptimize(os.Length());
  }
  state.SetItemsProcessed(state.iterations() * kRows * kColumns);
}

// The same cells as the table writes them: 15 significant digits, right-aligned in the
// column, one blank between columns.
void TextTable_snprintf(benchmark::State& state) {
  std::string buffer(kRows * kColumns * 32, '\0');
  for (auto _ : state) {
    size_t at = 0;
    for (int row = 0; row < kRows; ++row) {
      for (int column = 0; column < kColumns; ++column) {
        at += std::snprintf(&buffer[at], buffer.size() - at, column ? " %*.*g" : "%*.*g", kWidth,
                            15, Cell(row, column));
      }
      buffer[at++] = '\n';
    }
    benchmark::DoNotOptimize(at);
  }
  state.SetItemsProcessed(state.iterations() * kRows * kColumns);
}

}  // namespace

BENCHMARK(SpawnTrue_uti_Spawn)->UseRealTime();
BENCHMARK(SpawnTrue_system)->UseRealTime();
BENCHMARK(SpawnTrue_posix_spawn)->UseRealTime();
BENCHMARK(TextTable_uti_ReportTable);
BENCHMARK(TextTable_snprintf);

int main(int argc, char** argv) {
  return VRKBenchmarkMain(argc, argv);
}
