// A job that shares its work among worker processes and reports what they found.
//
//   worker_example [report.html]
//
// The job counts the primes below a series of limits. It starts four workers (this same
// program, run with "--worker"), feeds each its share of the limits through a pipe, one per
// line, and reads one answer line back for each. Then it prints a table of the answers, with
// the largest and smallest count and density, on the terminal, and writes the same table as
// an HTML page (worker_report.html unless a name is given).
#include <VRKLnuBasicUtils/VRKLnuBasicUtils.h>

#include <unistd.h>
#include <cstdio>
#include <cstdlib>
#include <string>

namespace {

constexpr int kWorkers = 4;
constexpr int kTasks = 12;

// The worker: for each limit on its input, "<limit> <primes below it>", until the input ends.
int Work() {
  char line[64];
  while (std::fgets(line, sizeof line, stdin) != nullptr) {
    const long limit = std::atol(line);
    long primes = 0;
    for (long n = 2; n < limit; ++n) {
      bool prime = true;
      for (long d = 2; d * d <= n && prime; ++d)
        prime = n % d != 0;
      primes += prime;
    }
    aio_cout << limit << " " << primes << aio_endl;
  }
  return 0;
}

struct Answer {
  int worker;
  int limit;
  int primes;
};

// The table, the same calls for every rendering.
void Report(uti_ReportDocument& document, const Answer* answers) {
  uti_ReportTable table(document, "Primes below each limit", "  ");
  table.Column("Task", 4).Column("Worker", 6).Column("Limit", 8).Column("Primes", 8);
  table.Column("Density", 10) << endl;
  table.HeadLine(false, '-') << endl;
  // The four columns before the density label the rows of its extremes; densities get four
  // digits.
  table.CalcExtrema(4, 1).Precision(4);
  for (int task = 0; task < kTasks; ++task) {
    const Answer& answer = answers[task];
    table.Out(task + 1).Out(answer.worker).Out(answer.limit).Out(answer.primes);
    // A float, as the extrema are kept: the extreme rows then show the same digits.
    table.Out(static_cast<float>(answer.primes) / answer.limit) << endl;
  }
  table.HeadLine(true, '=') << endl;
  table.OutMax(0) << endl;
  table.OutMin(0) << endl;
  table.Finish("The last two rows: the highest and the lowest density.");
}

}  // namespace

int main(int argc, char** argv) {
  if (argc > 1 && std::string(argv[1]) == "--worker") return Work();
  int tally = 0;
  VRKLnuBasicUtils_initialize(tally);
  const char* page = argc > 1 ? argv[1] : "worker_report.html";
  int status = 0;
  try {
    // This program again, as a worker.
    char self[4096];
    const ssize_t length = readlink("/proc/self/exe", self, sizeof self - 1);
    self[length > 0 ? length : 0] = '\0';
    cow_List<cow_String> arguments;
    arguments.Append("--worker");

    uti_SpawnSourceWithSink* workers[kWorkers];
    for (int w = 0; w < kWorkers; ++w) {
      uti_Redirection redirection;  // stdin and stdout become pipes; stderr stays ours
      workers[w] = new uti_SpawnSourceWithSink(self, VRKBasUtlFilePath(), arguments, redirection,
                                               uti_Environment());
    }
    // Task t goes to worker t % kWorkers, with the limit 10,000 * (t + 1).
    for (int task = 0; task < kTasks; ++task) {
      aio_ofstream input(workers[task % kWorkers]->GetWriteDescriptor());
      input << 10000 * (task + 1) << "\n";
      input.flush();
    }
    Answer answers[kTasks];
    for (int task = 0; task < kTasks; ++task) {
      uti_SpawnSourceWithSink& worker = *workers[task % kWorkers];
      char line[64];
      if (worker.GetLine(line, sizeof line) == 0) {
        NEX_THROW(nex_TextException(nex_Translate("worker %d gave no answer", task % kWorkers)));
      }
      answers[task] = Answer{task % kWorkers + 1, 0, 0};
      std::sscanf(line, "%d %d", &answers[task].limit, &answers[task].primes);
    }
    // Reap ends each worker's input, and so the worker.
    for (uti_SpawnSourceWithSink* worker : workers) {
      if (worker->Reap(0) != 0) NEX_THROW(uti_CmdFailedException(self, worker->Status()));
      delete worker;
    }

    {
      uti_ReportDocument terminal("Prime counts by four workers", uti_ReportEnum::uti_ReportText,
                                  aio_cout);
      Report(terminal, answers);
    }
    aio_ofstream html(page);
    {
      uti_ReportDocument document("Prime counts by four workers", uti_ReportEnum::uti_ReportHtml,
                                  html);
      Report(document, answers);
    }
    html.close();
    aio_cout << "\nThe same table as a page: " << page << aio_endl;
  } catch (const nex_Exception& error) {
    aio_cerr << error.UserReport() << aio_endl;
    status = 1;
  }
  VRKLnuBasicUtils_finalize(tally);
  return status;
}
