// The library's main example: a job of three steps that plans its memory before it runs.
//
//   job_example [-memory <MB>] [-tmpdir <directory>]
//
// It declares its phases and pools with the peak memory of each pool under its ways of
// working, has the plan analysed, prints the plan, picks the richest milestone whose peak fits
// the memory budget (64 MB unless -memory says otherwise), finalizes on it, and then runs the
// steps through mrm_Manager with real allocations from the pools, printing what the job used
// against what it planned.
//
// With LUN_RESOURCE_MONITOR set, the run keeps a resource log, job_example.use, with a mark
// at the start of each phase, after its computation and at its end, and a timer for each
// step. With -tmpdir, SCRATCH or TMPDIR naming a directory, each phase also spills its blocks
// to a temporary file there and reads them back, as a solver short of memory would; with
// LUN_IO_TRACK set, that traffic goes to the i/o reports (ioTotal, ioFileSummary, ...) in
// the working directory, with a row at each mark.
#include <VRKLnuBasicUtils/VRKLnuBasicUtils.h>

#include <cstdlib>
#include <cstring>
#include <vector>

namespace {

constexpr double kMB = 1048576;
constexpr double kDefaultBudgetMB = 64;

// The job names its phases and pools with a label kind of its own: an index into kNames.
const char* const kNames[] = {"refine", "factor",    "model",         "nodes",  "mesh buffer",
                              "matrix", "workspace", "report buffer", "results"};
enum Name {
  kRefine,
  kFactor,
  kModel,
  kNodes,
  kMeshBuffer,
  kMatrix,
  kWorkspace,
  kReportBuffer,
  kResults
};

class NameLabel : public mrm_Label {
 public:
  static constexpr short kTypeKey = 20;
  explicit NameLabel(int name) : mrm_Label(kTypeKey) { UField(0) = name; }
  static void Print(aio_ostream& os, const mrm_Label& label) {
    os << kNames[label.ConstGetUField(0)];
  }
};

// One pool of a phase: its size in MB under each alternative; a small-block pool gives the
// bytes it hands out, and the plan adds the overhead.
struct PoolPlan {
  Name name;
  bool smallBlock;
  std::vector<double> sizesMB;
};

// A phase: a step (step > 0) or a named phase, its pools and its children.
struct PhasePlan {
  int step;
  Name name;
  std::vector<PoolPlan> pools;
  std::vector<PhasePlan> children;

  mrm_Label Label() const {
    return step > 0 ? mrm_Label(mrm_StepPhaseLabel(step)) : mrm_Label(NameLabel(name));
  }
};

// The job phase's own pool, then three steps: meshing, solving, reporting.
const PhasePlan& Job() {
  static const PhasePlan job = {
      0,
      kModel,
      {{kModel, false, {2}}},
      {{1, kModel, {{kNodes, true, {1}}}, {{0, kRefine, {{kMeshBuffer, false, {4, 12}}}, {}}}},
       {2,
        kModel,
        {{kMatrix, false, {8, 24, 40}}},
        {{0, kFactor, {{kWorkspace, false, {8, 24}}}, {}}}},
       {3, kModel, {{kReportBuffer, false, {1, 8}}, {kResults, true, {0.5}}}, {}}}};
  return job;
}

// Milestones: the leanest way, the solver in core, and a copy of that with a larger matrix and
// report buffer.
void DeclareMilestones(mrm_Schedule& plan) {
  plan.NameMilestone(0, "minimal");
  plan.NameMilestone(1, "in-core");
  for (Name pool : {kMeshBuffer, kMatrix, kWorkspace})
    plan.DefMilestone(1, NameLabel(pool), 1);
  plan.NameMilestone(2, "in-core, large matrix");
  plan.DefMilestone(2, NameLabel(kMatrix), 2);
  plan.DefMilestone(2, NameLabel(kReportBuffer), 1);
  plan.DefHigherMilestone(2, 1);
}

// A large-block capacity of `megabytes`, half of it as the low estimate.
mrm_Capacity LargeCapacity(double megabytes) {
  return mrm_Capacity().SetLoHi(megabytes * kMB / 2, megabytes * kMB);
}

void DeclarePools(mrm_Schedule& plan, const PhasePlan& phase) {
  for (const PoolPlan& pool : phase.pools) {
    for (size_t alt = 0; alt < pool.sizesMB.size(); ++alt) {
      const int number = static_cast<int>(alt);
      if (pool.smallBlock) {
        plan.AddPool(NameLabel(pool.name),
                     mrm_SmallBlockCapacity().SetOutToClientLoHi(0, pool.sizesMB[alt] * kMB),
                     number);
      } else {
        plan.AddLargeBlockPool(NameLabel(pool.name), LargeCapacity(pool.sizesMB[alt]), number);
      }
    }
  }
}

void DeclarePhase(mrm_Schedule& plan, const PhasePlan& phase) {
  plan.BeginPhase(phase.Label());
  DeclarePools(plan, phase);
  for (const PhasePlan& child : phase.children)
    DeclarePhase(plan, child);
  plan.EndPhase();
}

// The highest milestone whose peak fits the budget; the leanest when none does.
int ChooseMilestone(const mrm_Schedule& plan, double budget) {
  int chosen = 0;
  for (int milestone = 0; plan.GetMilestoneName(milestone) != nullptr; ++milestone) {
    if (plan.GetMilestoneCapacity(milestone).hi <= budget) chosen = milestone;
  }
  return chosen;
}

// What a phase holds while it runs: its pools, their large blocks and their small pieces.
struct Held {
  std::vector<mrm_LargeBlockPool*> largePools;
  std::vector<mrm_Pool*> smallPools;
  std::vector<std::pair<mrm_LargeBlockPool*, mrm_MemBlockID>> blocks;
  std::vector<std::pair<mrm_Pool*, void*>> pieces;
};

// A factory refuses a pool the plan does not have in the open phases.
bool Started(const void* pool) {
  if (pool == nullptr) aio_cerr << "  a pool of the plan was refused" << aio_endl;
  return pool != nullptr;
}

// Fills a small-block pool with pieces of 16 to 256 bytes up to 90% of its plan.
void UseSmallPool(mrm_Pool* pool, Held& held) {
  if (!Started(pool)) return;
  held.smallPools.push_back(pool);
  const double planned = mrm_GetCapacity(*pool).outToClientHi;
  for (int size = 16; mrm_GetConsumption(*pool).outToClient + size <= 0.9 * planned;
       size = size % 256 + 16) {
    void* piece = pool->Alloc(size);
    std::memset(piece, 0, size);
    held.pieces.emplace_back(pool, piece);
  }
}

// One block the size of the pool's plan, acquired and written.
void UseLargePool(mrm_LargeBlockPool* pool, Held& held) {
  if (!Started(pool)) return;
  held.largePools.push_back(pool);
  mrm_MemBlockID id = pool->Declare(mrm_TruncateToInt(mrm_GetCapacity(*pool).hi));
  held.blocks.emplace_back(pool, id);
  if (pool->Acquire(id)) {
    aio_cerr << "  no memory for a block of " << pool->GetSize(id) << " bytes" << aio_endl;
    return;
  }
  std::memset(pool->GetPointer(id), 1, pool->GetSize(id));
}

// Starts the phase's pools as the plan has them and uses them. The job phase is open outside
// the schedule, so its own pools start with SpotStartup.
void StartPools(const PhasePlan& phase, bool isJob, Held& held) {
  for (const PoolPlan& pool : phase.pools) {
    const NameLabel label(pool.name);
    if (isJob) {
      UseLargePool(mrm_LargeBlockPoolFactory::SpotStartup(label, mrm_JobPhaseLabel(),
                                                          LargeCapacity(pool.sizesMB[0])),
                   held);
    } else if (pool.smallBlock) {
      UseSmallPool(mrm_PoolFactory::Startup(label), held);
    } else {
      UseLargePool(mrm_LargeBlockPoolFactory::Startup(label), held);
    }
  }
}

// The phase's computation: passes over each of its blocks that read and write every word, so
// that each phase takes time in proportion to the memory it holds.
void Compute(Held& held) {
  constexpr int kPasses = 150;
  for (auto& [pool, id] : held.blocks) {
    if (pool->GetPointer(id) == nullptr) continue;
    auto* words = static_cast<unsigned long long*>(pool->GetPointer(id));
    const size_t count = static_cast<size_t>(pool->GetSize(id)) / sizeof *words;
    for (int pass = 0; pass < kPasses; ++pass)
      for (size_t i = 0; i < count; ++i)
        words[i] = words[i] * 3 + static_cast<unsigned long long>(pass);
  }
}

void GiveBack(Held& held) {
  for (auto& piece : held.pieces)
    piece.first->Free(piece.second);
  for (auto& block : held.blocks)
    block.first->Release(block.second);
  for (mrm_Pool* pool : held.smallPools)
    mrm_PoolFactory::Shutdown(pool);
  for (mrm_LargeBlockPool* pool : held.largePools)
    mrm_LargeBlockPoolFactory::Shutdown(pool);
}

// A mark in the resource log and in the i/o reports, for whichever is on.
void Mark(const cow_String& text) {
  utl_ResourceMonitor::Instance().Mark(text);
  utl_IOTracker_Mark(text.c_str());
}

// Writes the blocks to a temporary file and reads them back, telling the i/o tracker. Without
// a scratch directory there is nothing to do.
void Spill(const Held& held, int id) {
  if (held.blocks.empty()) return;
  try {
    utl_TempFile scratch(".spill");
    utl_File file(scratch.Name(), utl_AccessWrite, utl_ShareDefault);
    utl_IOTracker* tracker = utl_IOTracker_Container::Instance().GetTracker();
    if (tracker != nullptr) tracker->RegisterFile(scratch.Name().c_str(), id);
    for (bool write : {true, false}) {
      file.Seek(0);
      for (const auto& [pool, block] : held.blocks) {
        char* memory = static_cast<char*>(pool->GetPointer(block));
        if (memory == nullptr) continue;
        if (tracker != nullptr) write ? tracker->BeginWrite(id) : tracker->BeginRead(id);
        const int bytes = write ? file.Write(memory, pool->GetSize(block))
                                : file.Read(memory, pool->GetSize(block));
        if (tracker != nullptr) write ? tracker->EndWrite(id, bytes) : tracker->EndRead(id, bytes);
      }
    }
  } catch (const utl_TempFileCantExc&) {
  }
}

// The phase's name in the resource log.
cow_String PhaseName(const PhasePlan& phase) {
  if (phase.step == 0) return kNames[phase.name];
  cow_String name("step ");
  name += cow_String(phase.step);
  return name;
}

// Runs a phase and its children one after the other, with its pools held throughout.
void RunPhase(const PhasePlan& phase, bool isJob) {
  mrm_Manager& manager = mrm_Manager::Instance();
  utl_ResourceMonitor& monitor = utl_ResourceMonitor::Instance();
  const mrm_Label label = phase.Label();
  if (!isJob) manager.BeginPhase(label);
  Mark(PhaseName(phase) + " begins");
  if (phase.step > 0) monitor.StartTimer(phase.step, PhaseName(phase));
  Held held;
  StartPools(phase, isJob, held);
  for (const PhasePlan& child : phase.children)
    RunPhase(child, false);
  Compute(held);
  Mark(PhaseName(phase) + " computed");
  Spill(held, phase.step > 0 ? phase.step : 10 + phase.name);
  if (phase.step > 0) {
    const mrm_Consumption used = manager.ConstGetJobConsumption();
    aio_cout << "  " << label << ": " << used.pinnedBytes / kMB
             << " MB pinned at its end; the job's peak so far " << used.peakPinnedBytes / kMB
             << " MB" << aio_endl;
  }
  GiveBack(held);
  if (phase.step > 0) monitor.StopTimer(phase.step);
  Mark(PhaseName(phase) + " ends");
  if (!isJob) manager.EndPhase(label);
}

// The budget in bytes from "-memory <MB>", the default without it; -1 for a bad value.
double Budget() {
  const utl_CommandLine& line = utl_CommandLine::Instance();
  if (!line.IsMember("memory")) return kDefaultBudgetMB * kMB;
  const cow_String value = line.ConstGetValue("memory");
  char* end = nullptr;
  const double megabytes = std::strtod(value.c_str(), &end);
  return value.IsEmpty() || *end != '\0' || megabytes <= 0 ? -1 : megabytes * kMB;
}

}  // namespace

int main(int argc, char** argv) {
  int tally = 0;
  VRKLnuBasicUtils_initialize(tally);
  utl_CommandLineSetup(argc, argv);
  const double budget = Budget();
  if (budget < 0) {
    aio_cerr << "usage: " << argv[0] << " [-memory <MB>] [-tmpdir <directory>]" << aio_endl;
    VRKLnuBasicUtils_finalize(tally);
    return 2;
  }
  utl_ResourceMonitor& monitor = utl_ResourceMonitor::Instance();
  monitor.Initialize("job_example", 0, nullptr, false, false);
  mrm_Manager& manager = mrm_Manager::Instance();
  manager.RegisterLabelPrinter(NameLabel::kTypeKey, NameLabel::Print);

  mrm_Schedule plan;
  plan.SetPrintUnits(kMB);
  DeclareMilestones(plan);
  DeclarePools(plan, Job());
  for (const PhasePlan& step : Job().children)
    DeclarePhase(plan, step);
  plan.Analyze();
  Mark("plan analysed");

  const int chosen = ChooseMilestone(plan, budget);
  const double peak = plan.GetMilestoneCapacity(chosen).hi;
  aio_cout << "Memory budget " << budget / kMB << " MB: milestone " << chosen << " ("
           << plan.GetMilestoneName(chosen) << ") plans a peak of " << peak / kMB << " MB"
           << (peak > budget ? ", over the budget: no milestone fits" : "") << "." << aio_endl;
  plan.Finalize(chosen);
  plan.Print(aio_cout);
  manager.Adopt(plan);

  aio_cout << "Running the job:" << aio_endl;
  RunPhase(Job(), true);
  const mrm_Consumption used = manager.ConstGetJobConsumption();
  aio_cout << "Job consumption: peak " << used.peakPinnedBytes / kMB << " MB pinned of "
           << peak / kMB << " MB planned; " << used.numBlocks << " blocks and "
           << used.pinnedBytes / kMB << " MB still held." << aio_endl;

  utl_ResourceMonitor::Finalize();
  VRKLnuBasicUtils_finalize(tally);
  return used.numBlocks == 0 && used.peakPinnedBytes <= peak ? 0 : 1;
}
