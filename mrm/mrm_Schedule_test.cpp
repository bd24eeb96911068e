#include "mrm_Schedule.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <initializer_list>
#include <string>

#include "VRKTestLibrary.h"
#include "aio_ostrstream.h"

namespace {

using ::testing::HasSubstr;
using ScheduleTest = VRKLibraryTest;

mrm_TestLabel Pool(int n) {
  return mrm_TestLabel(n, 0, 0);
}

mrm_Capacity Hi(double hi, double lo = 0) {
  return mrm_Capacity().SetLoHi(lo, hi);
}

std::string Report(const mrm_Schedule& plan) {
  aio_ostrstream os;
  plan.Print(os);
  return os.str().c_str();
}

// The part of the report from the line that holds `from` up to the one that holds `to`.
std::string Section(const std::string& report, const std::string& from, const std::string& to) {
  const size_t begin = report.rfind('\n', report.find(from)) + 1;
  return report.substr(begin, report.find(to, begin) - begin);
}

// The phase tree of the report.
std::string Tree(const mrm_Schedule& plan) {
  const std::string report = Report(plan);
  const size_t begin = report.find("indentation\n\n") + 13;
  return report.substr(begin, report.find("mrm_Schedule --> End") - begin);
}

// The line of the phase tree that declares `pool`.
std::string PoolLine(const mrm_Schedule& plan, int pool) {
  const std::string tree = Tree(plan);
  const size_t at = tree.find("mrm_Test/" + std::to_string(pool) + "/0/0   Lo=");
  return tree.substr(at, tree.find('\n', at) - at);
}

// Step 1 with pool 1 at the sizes given as its alternatives, step 2 with pool 2 of `second`.
void DeclareTwoSteps(mrm_Schedule& plan, std::initializer_list<double> first, double second) {
  plan.BeginPhase(mrm_StepPhaseLabel(1));
  int alt = 0;
  for (double size : first)
    plan.AddLargeBlockPool(Pool(1), Hi(size), alt++);
  plan.EndPhase();
  plan.BeginPhase(mrm_StepPhaseLabel(2));
  plan.AddLargeBlockPool(Pool(2), Hi(second), 0);
  plan.EndPhase();
}

// The job's own pool, a step whose pool rises to alternative 1 under Finalize(0), a nested
// small-block pool, and a larger second step that sets the peak.
TEST_F(ScheduleTest, ReportOfAFinalizedScheduleReadsInFull) {
  mrm_Schedule plan;
  plan.NameMilestone(0, "lean");
  plan.NameMilestone(1, "rich");
  plan.DefMilestone(1, Pool(1), 1);
  plan.NameMilestone(2, "copy");
  plan.DefHigherMilestone(2, 1);
  plan.AddLargeBlockPool(Pool(9), Hi(100), 0);
  plan.BeginPhase(mrm_StepPhaseLabel(1));
  plan.AddLargeBlockPool(Pool(1), Hi(200, 10), 0);
  plan.AddLargeBlockPool(Pool(1), Hi(300, 20), 1);
  plan.BeginPhase(Pool(5));
  plan.AddPool(Pool(2), mrm_SmallBlockCapacity().SetOutToClientLoHi(0, 1000), 0);
  plan.EndPhase();
  plan.EndPhase();
  plan.BeginPhase(mrm_StepPhaseLabel(2));
  plan.AddLargeBlockPool(Pool(3), Hi(70000), 0);
  plan.EndPhase();
  plan.Analyze();
  plan.Finalize(0);
  EXPECT_EQ(Report(plan),
            "\n\nmrm_Schedule --> Begin print\n\n"
            "  Has been Finalized   at Milestone Number 0,  lean\n\n"
            "  Milestone specification: \n"
            "\n    Milestone Number 0  Tag=lean  Memory=70100\n"
            "\n"
            "\n    Milestone Number 1  Tag=rich  Memory=70100\n"
            "       mrm_Test/1/0/0--> alt 1\n"
            "\n"
            "\n    Milestone Number 2  Tag=copy  Memory=70100\n"
            "        (Copied from milestone 1  )\n"
            "       mrm_Test/1/0/0--> alt 1\n"
            "\n"
            "\n"
            "  The critical phase path is:\n"
            "    Phase: mrm_JobPhase    Inclusive=70100    Exclusive =100\n"
            "    Phase: mrm_Step/2    Inclusive=70000    Exclusive =70000\n"
            "\n"
            "  The complete schedule follows\n"
            "  Note: the alts are resolved (has been analyzed/finalized) and only selected alts "
            "are shown\n"
            "  Phase Inclusion is indicated by indentation\n\n"
            "    Phase: mrm_JobPhase        Inclusive=70100  Exclusive =100\n"
            "            mrm_Test/9/0/0   Lo=0   Hi=100\n"
            "        Phase: mrm_Step/1        Inclusive=65836  Exclusive =300\n"
            "                mrm_Test/1/0/0   Lo=20   Hi=300   Alt=1\n"
            "            Phase: mrm_Test/5/0/0        Inclusive=65536  Exclusive =65536\n"
            "                    mrm_Test/2/0/0   Lo=0   Hi=65536\n"
            "                     on small block pool:  outToClientHi=1000   outToClientLo=0   "
            "overheadFactor=0.15   overheadMin=0\n"
            "        Phase: mrm_Step/2        Inclusive=70000  Exclusive =70000\n"
            "                mrm_Test/3/0/0   Lo=0   Hi=70000\n"
            "mrm_Schedule --> End print\n\n");
}

// Ignored calls: EndPhase of the job, a non-step under the job (its pool lands in the job),
// alternative 1 that no milestone names, a smaller alternative, a gap, a small-block pool on a
// large-block label, and a repeated child name, which closes its parent early.
TEST_F(ScheduleTest, DeclaringIgnoresWrongCallsInSilence) {
  mrm_Schedule plan;
  plan.SetPrintUnits(0.5);
  plan.EndPhase();
  plan.DefMilestone(-1, Pool(1), 1);  // no milestone named yet
  plan.BeginPhase(Pool(7));
  plan.AddLargeBlockPool(Pool(1), Hi(10), 0);
  plan.AddLargeBlockPool(Pool(1), Hi(20), 1);
  plan.NameMilestone(5, "m");
  plan.DefMilestone(0, Pool(2), 3);
  plan.BeginPhase(mrm_StepPhaseLabel(1));
  plan.AddLargeBlockPool(Pool(2), Hi(10), 0);
  plan.AddLargeBlockPool(Pool(2), Hi(9), 1);
  plan.AddLargeBlockPool(Pool(2), Hi(10), 1);
  plan.AddLargeBlockPool(Pool(2), Hi(11), 3);  // a gap
  plan.AddPool(Pool(2), mrm_SmallBlockCapacity(), 0);
  plan.BeginPhase(Pool(7));
  plan.EndPhase();
  plan.BeginPhase(Pool(7));  // already a child of step 1: nothing opens
  plan.AddLargeBlockPool(Pool(3), Hi(1), 0);
  plan.EndPhase();  // closes step 1
  plan.AddLargeBlockPool(Pool(4), Hi(1), 0);
  plan.EndPhase();
  EXPECT_EQ(plan.GetMilestoneName(0), std::string("m"));
  EXPECT_EQ(plan.GetMilestoneName(1), nullptr);
  EXPECT_EQ(Section(Report(plan), "Begin", "    Milestone Number"),
            "mrm_Schedule --> Begin print\n\n  Not analyzed\n  Milestone specification: \n\n");
  EXPECT_EQ(Tree(plan),  // in units of half a byte
            "    Phase: mrm_JobPhase\n"
            "            mrm_Test/1/0/0   Lo=0   Hi=20\n"
            "            mrm_Test/4/0/0   Lo=0   Hi=2\n"
            "        Phase: mrm_Step/1\n"
            "                mrm_Test/2/0/0   Lo=0   Hi=20\n"
            "                mrm_Test/2/0/0   Lo=0   Hi=20   Alt=1\n"
            "                mrm_Test/3/0/0   Lo=0   Hi=2\n"
            "            Phase: mrm_Test/7/0/0\n");
}

// Only the latest milestone can be defined, the last definition wins, and a copy keeps the
// milestone's own definitions. Milestone numbers are positions.
TEST_F(ScheduleTest, MilestonesAreDefinedInOrderAndCopiesKeepTheirOwn) {
  mrm_Schedule plan;
  plan.NameMilestone(0, "a");
  plan.DefMilestone(0, Pool(1), 1);
  plan.NameMilestone(0, "b");
  plan.DefMilestone(0, Pool(1), 2);  // not the latest: ignored
  plan.DefMilestone(1, Pool(2), 1);
  plan.NameMilestone(0, "c");
  plan.DefMilestone(2, Pool(1), 3);
  plan.DefMilestone(2, Pool(1), 4);
  plan.DefHigherMilestone(2, 0);
  plan.DefHigherMilestone(9, 0);  // no such milestone
  EXPECT_EQ(Section(Report(plan), "Milestone Number 0", "  The complete"),
            "    Milestone Number 0  Tag=a\n"
            "       mrm_Test/1/0/0--> alt 1\n\n\n"
            "    Milestone Number 1  Tag=b\n"
            "       mrm_Test/2/0/0--> alt 1\n\n\n"
            "    Milestone Number 2  Tag=c\n"
            "        (Copied from milestone 0  )\n"
            "       mrm_Test/1/0/0--> alt 4\n\n\n");
}

// Steps of 30 and 40 under a job of 5: the second step is critical. With equal steps, the
// first is.
TEST_F(ScheduleTest, PeakIsTheJobPlusItsLargestStep) {
  for (double second : {40.0, 30.0}) {
    mrm_Schedule plan;
    plan.NameMilestone(0, "m");
    plan.AddLargeBlockPool(Pool(9), Hi(5), 0);
    DeclareTwoSteps(plan, {30}, second);
    plan.Analyze();
    EXPECT_THAT(Report(plan), HasSubstr("\nHas been analyzed, last   at Milestone Number 0,  m\n"));
    EXPECT_EQ(plan.GetMilestoneCapacity(0).hi, second + 5);
    plan.XFinalize(0);
    EXPECT_EQ(Section(Report(plan), "critical", "  The complete"),
              "  The critical phase path is:\n"
              "    Phase: mrm_JobPhase    Inclusive=" +
                  std::to_string(int(second) + 5) + "    Exclusive =5\n" +
                  (second == 40 ? "    Phase: mrm_Step/2    Inclusive=40    Exclusive =40\n\n"
                                : "    Phase: mrm_Step/1    Inclusive=30    Exclusive =30\n\n"));
  }
}

// Step 1 has alternatives of 10 and `rich`, step 2 is fixed at 25, the job has nothing:
// Finalize(0) leaves room for 25 per step, so step 1 rises while `rich` fits.
TEST_F(ScheduleTest, FinalizeLetsAStepRiseWithinThePeak) {
  for (double rich : {25.0, 26.0}) {
    mrm_Schedule plan;
    plan.NameMilestone(0, "lean");
    plan.NameMilestone(1, "rich");
    plan.DefMilestone(1, Pool(1), 1);
    DeclareTwoSteps(plan, {10, rich}, 25);
    plan.Finalize(0);  // before Analyze: ignored
    EXPECT_THAT(Report(plan), HasSubstr("Not analyzed"));
    plan.Analyze();
    plan.Finalize(0);
    EXPECT_EQ(plan.GetMilestoneCapacity(0).hi, 25);
    EXPECT_THAT(Report(plan), HasSubstr("Phase: mrm_JobPhase        Inclusive=25  "));
    EXPECT_EQ(PoolLine(plan, 1), rich == 25 ? "mrm_Test/1/0/0   Lo=0   Hi=25   Alt=1"
                                            : "mrm_Test/1/0/0   Lo=0   Hi=10");
  }
}

// Milestone 1 asks alternative 9 of a pool with three and gets the last (30); milestone 2,
// copied from 1, takes alternative 1 (20). With room for 20 per step, milestone 1 fails and 2
// stays closed although it would fit; with room for 30, 1 is reached and opens 2.
TEST_F(ScheduleTest, RiseOpensACopyOnlyOnceItsSourceIsReached) {
  for (double room : {20.0, 30.0}) {
    mrm_Schedule plan;
    plan.NameMilestone(0, "m0");
    plan.NameMilestone(1, "m1");
    plan.DefMilestone(1, Pool(1), 9);
    plan.NameMilestone(2, "m2");
    plan.DefMilestone(2, Pool(1), 1);
    plan.DefHigherMilestone(2, 1);
    DeclareTwoSteps(plan, {10, 20, 30}, room);
    plan.Analyze();
    EXPECT_EQ(plan.GetMilestoneCapacity(1).hi, 30);
    plan.Finalize(0);
    EXPECT_EQ(PoolLine(plan, 1), room == 20 ? "mrm_Test/1/0/0   Lo=0   Hi=10"
                                            : "mrm_Test/1/0/0   Lo=0   Hi=20   Alt=1");
    plan.XFinalize(1);
    EXPECT_EQ(PoolLine(plan, 1), "mrm_Test/1/0/0   Lo=0   Hi=30   Alt=2");
    EXPECT_THAT(Report(plan), HasSubstr("Finalized   at Milestone Number 1,  m1\n"));
    plan.Finalize(2);  // nothing above to try: each step is analysed at 2 itself
    EXPECT_EQ(PoolLine(plan, 1), "mrm_Test/1/0/0   Lo=0   Hi=20   Alt=1");
  }
}

TEST_F(ScheduleTest, XFinalizeNeedsNoAnalysisAndLeavesNoCapacity) {
  mrm_Schedule plan;
  plan.NameMilestone(0, "m");
  plan.AddLargeBlockPool(Pool(1), Hi(10), 0);
  plan.XFinalize(0);
  EXPECT_EQ(plan.GetMilestoneCapacity(0), mrm_Capacity());
  EXPECT_THAT(Report(plan), HasSubstr("Tag=m\n"));  // no peak to print
  EXPECT_EQ(PoolLine(plan, 1), "mrm_Test/1/0/0   Lo=0   Hi=10");

  plan.Analyze();
  plan.AddLargeBlockPool(Pool(2), Hi(5), 0);
  plan.Analyze();  // appends a second set: the first stays what is given
  EXPECT_EQ(plan.GetMilestoneCapacity(0).hi, 10);
  EXPECT_EQ(plan.GetMilestoneCapacity(1).hi, 15);
}

}  // namespace
