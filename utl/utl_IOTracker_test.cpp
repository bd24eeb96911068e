#include "utl_IOTracker.h"

#include <dirent.h>
#include <unistd.h>

#include <algorithm>
#include <climits>
#include <set>
#include <string>
#include <vector>

#include "VRKTestChild.h"
#include "VRKTestLibrary.h"
#include "thr_ThreadPool.h"
#include "utl_File.h"

namespace {

using UtlIOTrackerTest = VRKLibraryTest;

// A report's line with the fields that hold seconds, counted from the end, shown as "T"; a
// line with fewer fields stays as it is.
std::string Masked(const std::string& line, std::initializer_list<size_t> timesFromEnd) {
  std::vector<std::string> fields;
  for (size_t at = 0, next; at != std::string::npos;
       at = next == std::string::npos ? next : next + 2) {
    next = line.find(", ", at);
    fields.push_back(line.substr(at, next - at));
  }
  if (fields.size() < std::max(timesFromEnd)) return line;
  for (size_t back : timesFromEnd)
    fields[fields.size() - back] = "T";
  std::string masked;
  for (size_t i = 0; i < fields.size(); ++i)
    masked += (i > 0 ? ", " : "") + fields[i];
  return masked;
}

// Rows of ioTotal: the elapsed time and the four times.
std::vector<std::string> MaskedRows(const std::string& report) {
  std::vector<std::string> rows = VRKLines(report);
  for (size_t i = 2; i < rows.size(); ++i)
    rows[i] = Masked(rows[i], {1, 4, 7, 10, 13});
  return rows;
}

std::vector<std::string> MaskedSummary(const std::string& report) {
  std::vector<std::string> lines = VRKLines(report);
  for (std::string& line : lines)
    line = Masked(line, {1, 3});
  return lines;
}

std::set<std::string> FilesIn(const std::string& directory) {
  std::set<std::string> names;
  DIR* dir = opendir(directory.c_str());
  while (dirent* entry = readdir(dir)) {
    if (entry->d_name[0] != '.') names.insert(entry->d_name);
  }
  closedir(dir);
  return names;
}

const char kTitles[] =
    ", Work Write Count, Work Write MB, Work Write Time, Work Read Count, Work Read MB, Work "
    "Read Time, Scratch Write Count, Scratch Write MB, Scratch Write Time, Scratch Read Count, "
    "Scratch Read MB, Scratch Read Time";

// The traffic of a scripted run: two files and a unit, a name registered twice, and
// operations on ids that were never registered.
void Traffic(utl_IOTracker& tracker) {
  tracker.RegisterFile("/s/a.dat", 0);
  tracker.RegisterFile("/d/b.dat", 30);
  tracker.RegisterFile("/s/a.dat", 5);
  tracker.RegisterFile("/sx/c.dat", 7);
  for (int beyond : {INT_MAX, INT_MAX - 23, 1000})  // the last is accepted, the others refused
    tracker.RegisterFile("/s/a.dat", beyond);
  tracker.RegisterUnit("/s/u.bin", 2, 256);
  tracker.BeginWrite(0);
  tracker.EndWrite(0, 1048576);
  tracker.BeginWrite(5);
  tracker.EndWrite(5, 524288);
  tracker.BeginRead(30);
  usleep(20000);
  tracker.EndRead(30, 2097152);
  for (int record : {5, 2, 9}) {
    tracker.BeginUnitRecordWrite(2);
    tracker.EndUnitRecordWrite(2, record);
  }
  tracker.BeginUnitRecordRead(2);
  tracker.EndUnitRecordRead(2);
  for (int unknown : {1, 29, 31, 100000, INT_MAX, -1}) {
    tracker.BeginWrite(unknown);
    tracker.EndWrite(unknown, 1);
    tracker.EndUnitWrite(unknown, 1);
  }
  tracker.EndUnitRead(0, 1);  // id 0 is in the file table only
}

// In a child: the run that the arguments name (directory, marks, suffix, options), in the
// directory they give; true there. The child's test then ends normally, and the library's
// stop ends the tracker.
bool RunChildScript() {
  if (VRKChildRole().empty()) return false;
  const std::vector<std::string> args = VRKChildArgs();
  if (chdir(args[0].c_str()) != 0) VRKChildExit(2);
  VRKSetCommandLine(std::vector<std::string>(args.begin() + 3, args.end()));
  const int threads = thr_ThreadPool::Instance().GetThreadCount();
  if (VRKChildRole() == "create") {
    // Creating a file brings the tracker, and with time steps its thread, into being.
    utl_File("created", utl_AccessWrite, utl_ShareDefault).Init();
    VRKChildExit(thr_ThreadPool::Instance().GetThreadCount() == threads + 1 ? 0 : 1);
  }
  utl_IOTracker* tracker = utl_IOTracker_Container::Instance().GetTracker();
  if (VRKChildRole() == "off") {
    utl_IOTracker_Mark("nothing");
    VRKChildExit(tracker == nullptr ? 0 : 1);
  }
  if (tracker == nullptr) VRKChildExit(3);
  // Only rows at a time step need a thread.
  const char* points = std::getenv("LUN_IO_TIMEPOINTS");
  const bool timed = points != nullptr && std::string(points) == "2";
  if (thr_ThreadPool::Instance().GetThreadCount() != threads + (timed ? 1 : 0)) VRKChildExit(4);
  if (!args[2].empty()) tracker->SetSuffix(args[2].c_str());
  Traffic(*tracker);
  const int marks = std::stoi(args[1]);
  for (int i = 0; i < marks; ++i)
    utl_IOTracker_Mark(i == 0 ? "first" : "then, with a comma");
  if (timed) usleep(200000);
  return true;
}

VRKChildResult Track(const std::string& role, const std::string& directory,
                     std::vector<std::pair<std::string, std::string>> env, int marks,
                     const std::string& suffix = "", std::vector<std::string> options = {}) {
  VRKChild child(role);
  child.env = std::move(env);
  child.unset = {"LUN_IO_TIMEPOINTS", "LUN_IO_TIMEINTERVAL", "LUN_IO_INDIVIDUAL"};
  child.args = {directory, std::to_string(marks), suffix};
  child.args.insert(child.args.end(), options.begin(), options.end());
  return child.Run();
}

TEST_F(UtlIOTrackerTest, AScriptedRunWritesTheReportsLineByLine) {
  if (RunChildScript()) return;
  VRKScratchDir dir;
  const VRKChildResult result = Track("track", dir.Path(), {{"LUN_IO_TRACK", "1"}}, 2);
  ASSERT_EQ(result.exitCode, 0) << result.err;
  EXPECT_EQ(FilesIn(dir.Path()), (std::set<std::string>{"ioTotal", "ioInc", "ioFileSummary"}));
  // Without the tmpdir option, every file counts as scratch.
  const std::string scratch = "2, 1.500000, T, 1, 2.000000, T";
  EXPECT_EQ(MaskedRows(VRKReadFile(dir.File("ioTotal"))),
            (std::vector<std::string>{
                "IO Tracking Totals", std::string("Code Mark, Elapsed Time") + kTitles,
                "first, T, 0, 0.000000, T, 0, 0.000000, T, 5, 1.502930, T, 2, 2.000977, T",
                "then, with a comma, T, 0, 0.000000, T, 0, 0.000000, T, 5, 1.502930, T, 2, "
                "2.000977, T"}));
  EXPECT_EQ(VRKReadFile(dir.File("ioInc")),
            std::string("IO Tracking Totals\nCode Mark, Elapsed Time") + kTitles + "\n");
  const std::string summary = VRKReadFile(dir.File("ioFileSummary"));
  // The read of b.dat took 20 ms.
  const std::string line = summary.substr(summary.find("/d/b.dat"));
  const double readTime = std::stod(line.substr(line.find(", 2.000000, ") + 12));
  EXPECT_GT(readTime, 0.019);
  EXPECT_LT(readTime, 0.5);
  EXPECT_EQ(
      MaskedSummary(summary),
      (std::vector<std::string>{
          "IO Summary for All Files", "", "WORK DIRECTORY FILES", "", "", "SCRATCH DIRECTORY FILES",
          "/s/a.dat, 1.500000, T, 0.000000, T", "/d/b.dat, 0.000000, T, 2.000000, T",
          "/sx/c.dat, 0.000000, T, 0.000000, T", "/s/u.bin, 0.002930, T, 0.000977, T", ""}));
}

TEST_F(UtlIOTrackerTest, SwitchedByTheEnvironment) {
  if (RunChildScript()) return;
  // Off: no tracker, and a mark writes nothing.
  for (const char* value : {"0", "abc", ""}) {
    VRKScratchDir dir;
    EXPECT_EQ(Track("off", dir.Path(), {{"LUN_IO_TRACK", value}}, 0).exitCode, 0) << value;
    EXPECT_TRUE(FilesIn(dir.Path()).empty()) << value;
  }
  // No mark: the summary alone. Time points of 1 leave the marks on and start no thread.
  VRKScratchDir quiet;
  EXPECT_EQ(
      Track("track", quiet.Path(), {{"LUN_IO_TRACK", "3"}, {"LUN_IO_TIMEPOINTS", "1"}}, 0).exitCode,
      0);
  EXPECT_EQ(FilesIn(quiet.Path()), std::set<std::string>{"ioFileSummary"});

  // Time points of 2: rows come from the pool thread, with no mark text, and marks add none.
  VRKScratchDir timed;
  const VRKChildResult result =
      Track("track", timed.Path(),
            {{"LUN_IO_TRACK", "1"}, {"LUN_IO_TIMEPOINTS", "2"}, {"LUN_IO_TIMEINTERVAL", "2"}}, 3);
  ASSERT_EQ(result.exitCode, 0) << result.err;
  EXPECT_EQ(result.err, "Completed TimedOutTask\n");
  const std::vector<std::string> rows = MaskedRows(VRKReadFile(timed.File("ioTotal")));
  ASSERT_GE(rows.size(), 4u);
  EXPECT_EQ(rows[1], std::string("Elapsed Time") + kTitles);
  EXPECT_EQ(rows.back(), "T, 0, 0.000000, T, 0, 0.000000, T, 5, 1.502930, T, 2, 2.000977, T");
}

TEST_F(UtlIOTrackerTest, IndividualReportsAndASuffix) {
  if (RunChildScript()) return;
  VRKScratchDir dir;
  const VRKChildResult result =
      Track("track", dir.Path(), {{"LUN_IO_TRACK", "1"}, {"LUN_IO_INDIVIDUAL", "1"}}, 1, "run2");
  ASSERT_EQ(result.exitCode, 0) << result.err;
  EXPECT_EQ(
      FilesIn(dir.Path()),
      (std::set<std::string>{"ioTotal_run2", "ioInc_run2", "ioFileSummary_run2",
                             "a.dat_ioTotal_run2", "b.dat_ioTotal_run2", "c.dat_ioTotal_run2"}));
  EXPECT_EQ(result.err,
            "OpenCIndivualOut  --  file path = /s/a.dat\n   outFileName = a.dat_ioTotal_run2\n"
            "OpenCIndivualOut  --  file path = /d/b.dat\n   outFileName = b.dat_ioTotal_run2\n"
            "OpenCIndivualOut  --  file path = /sx/c.dat\n   outFileName = c.dat_ioTotal_run2\n");
  const std::vector<std::string> own = VRKLines(VRKReadFile(dir.File("a.dat_ioTotal_run2")));
  ASSERT_EQ(own.size(), 1u);
  EXPECT_EQ(Masked(own[0], {1, 4, 7}), "first, T, 2, 1.500000, T, 0, 0.000000, T");
}

TEST_F(UtlIOTrackerTest, TheOptionsNameAndPlaceTheReportsAndTellScratchFromWork) {
  if (RunChildScript()) return;
  VRKScratchDir dir, out;
  // tmpdir "/s" makes "/sx/c.dat" scratch too: the test is a prefix.
  ASSERT_EQ(Track("track", dir.Path(), {{"LUN_IO_TRACK", "1"}}, 1, "",
                  {"-outdir", out.Path(), "-job", "J", "-tmpdir", "/s"})
                .exitCode,
            0);
  EXPECT_TRUE(FilesIn(dir.Path()).empty());
  EXPECT_EQ(FilesIn(out.Path()),
            (std::set<std::string>{"J.ioTotal", "J.ioInc", "J.ioFileSummary"}));
  EXPECT_EQ(MaskedRows(VRKReadFile(out.File("J.ioTotal")))[2],
            "first, T, 0, 0.000000, T, 1, 2.000000, T, 5, 1.502930, T, 1, 0.000977, T");
  EXPECT_EQ(MaskedSummary(VRKReadFile(out.File("J.ioFileSummary"))),
            (std::vector<std::string>{
                "IO Summary for All Files", "", "WORK DIRECTORY FILES",
                "/d/b.dat, 0.000000, T, 2.000000, T", "", "", "SCRATCH DIRECTORY FILES",
                "/s/a.dat, 1.500000, T, 0.000000, T", "/sx/c.dat, 0.000000, T, 0.000000, T",
                "/s/u.bin, 0.002930, T, 0.000977, T", ""}));

  // A job without an outdir: in the working directory. An outdir without a job isn't used.
  const std::set<std::string> plain = {"ioTotal", "ioInc", "ioFileSummary"};
  for (const auto& [options, expected] :
       {std::pair{std::vector<std::string>{"-job", "J"},
                  std::set<std::string>{"J.ioTotal", "J.ioInc", "J.ioFileSummary"}},
        {{"-outdir", out.Path()}, plain}}) {
    VRKScratchDir here;
    ASSERT_EQ(Track("track", here.Path(), {{"LUN_IO_TRACK", "1"}}, 1, "", options).exitCode, 0);
    EXPECT_EQ(FilesIn(here.Path()), expected);
  }

  // Creating a file starts tracking: with time steps, the pool has its thread at once.
  const VRKChildResult created =
      Track("create", dir.Path(), {{"LUN_IO_TRACK", "1"}, {"LUN_IO_TIMEPOINTS", "2"}}, 0);
  EXPECT_EQ(created.exitCode, 0) << created.err;
}

}  // namespace
