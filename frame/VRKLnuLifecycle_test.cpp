#include "VRKLnuLifecycle.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

#include "VRKBasAtiThreadingModel.h"
#include "VRKBasCountedPair.h"
#include "VRKBasExceptionModel.h"
#include "VRKBasUtlExceptionModel.h"
#include "VRKLnuNex.h"
#include "VRKLnuPdc.h"
#include "VRKLnuThrMultiThreadFact.h"
#include "VRKLnuTyp.h"
#include "VRKLnuUti.h"
#include "nex_ExceptionFactory.h"
#include "utl_ExceptionFactory.h"

namespace {

using ::testing::ElementsAre;
using ::testing::ElementsAreArray;
using ::testing::IsEmpty;

std::vector<std::string> events;

void Record(const char* layer, bool up) {
  events.push_back((up ? "+" : "-") + std::string(layer));
}

// The events of a start, "+" each layer in the order given, or of a stop, the top layer
// first and then "-" the others in reverse.
std::vector<std::string> Layers(bool up) {
  const char* const sign = up ? "+" : "-";
  std::istringstream names(
      "KT0GROUP VRKBasAlloc VRKBasCoreUtils VRKBasShared bio typ thr pnt cls nex mrm pdc utl uti");
  std::vector<std::string> layers = {sign + std::string("VRKLnuBasicUtils")};
  for (std::string name; names >> name;)
    layers.insert(up ? layers.end() : layers.begin() + 1, sign + name);
  return layers;
}
const std::vector<std::string> kFullStart = Layers(true);
const std::vector<std::string> kFullStop = Layers(false);

class LifecycleTest : public ::testing::Test {
 protected:
  void SetUp() override {
    events.clear();
    VRKBasSetLifecycleObserver(Record);
  }
  void TearDown() override { VRKBasSetLifecycleObserver(nullptr); }

  // The events since the last call.
  std::vector<std::string> Take() {
    std::vector<std::string> taken;
    taken.swap(events);
    return taken;
  }

  int tally = 0;
};

// A second start after a full stop repeats the whole start.
TEST_F(LifecycleTest, StartsAndStopsEveryLayerInTheFixedOrderEveryTime) {
  for (int run = 0; run < 2; ++run) {
    VRKLnuBasicUtils_initialize(tally);
    EXPECT_EQ(tally, 15);
    EXPECT_THAT(Take(), ElementsAreArray(kFullStart));
    VRKLnuBasicUtils_finalize(tally);
    EXPECT_EQ(tally, 0);
    EXPECT_THAT(Take(), ElementsAreArray(kFullStop));
  }
}

TEST_F(LifecycleTest, NestedCallsOnlyMoveTheTopLevelCounter) {
  tally = 100;  // the tally is the caller's and may start anywhere
  VRKLnuBasicUtils_initialize(tally);
  Take();
  VRKLnuBasicUtils_initialize(tally);
  VRKLnuBasicUtils_initialize(tally);
  EXPECT_EQ(tally, 115);
  VRKLnuBasicUtils_finalize(tally);
  VRKLnuBasicUtils_finalize(tally);
  EXPECT_EQ(tally, 115);
  EXPECT_THAT(Take(), IsEmpty());
  VRKLnuBasicUtils_finalize(tally);
  EXPECT_EQ(tally, 100);
  EXPECT_THAT(Take(), ElementsAreArray(kFullStop));
}

TEST_F(LifecycleTest, PackageStartedAloneIsStoppedByItsLastFinalizer) {
  VRKLnuTyp_initialize(tally);
  EXPECT_EQ(tally, 1);
  EXPECT_THAT(Take(), ElementsAre("+typ"));

  VRKLnuBasicUtils_initialize(tally);
  EXPECT_EQ(tally, 15);  // typ did not start again
  std::vector<std::string> withoutTyp = kFullStart;
  withoutTyp.erase(withoutTyp.begin() + 6);
  EXPECT_THAT(Take(), ElementsAreArray(withoutTyp));

  VRKLnuBasicUtils_finalize(tally);
  EXPECT_EQ(tally, 1);  // typ is still held by its own start
  std::vector<std::string> stopWithoutTyp = kFullStop;
  stopWithoutTyp.erase(stopWithoutTyp.begin() + 9);
  EXPECT_THAT(Take(), ElementsAreArray(stopWithoutTyp));

  VRKLnuTyp_finalize(tally);
  EXPECT_EQ(tally, 0);
  EXPECT_THAT(Take(), ElementsAre("-typ"));
}

TEST_F(LifecycleTest, FinalizerAtZeroLeavesMinusOneAndSwallowsTheNextStart) {
  VRKLnuPdc_finalize(tally);    // 0 -> -1, no work
  VRKLnuPdc_initialize(tally);  // -1 -> 0, no work
  EXPECT_EQ(tally, 0);
  EXPECT_THAT(Take(), IsEmpty());
  VRKLnuPdc_initialize(tally);  // 0 -> 1: a real start again
  VRKLnuPdc_finalize(tally);
  EXPECT_EQ(tally, 0);
  EXPECT_THAT(Take(), ElementsAre("+pdc", "-pdc"));
}

// The rule that every installed factory follows: a start installs a fresh one, and a stop
// withdraws and deletes the one that its start installed, never one that a client put in its
// place (an object of the package's own class here, which a wrong delete would hit).
template <class Model, class Factory>
void ExpectTheFactoryRule(int& tally) {
  VRKLnuBasicUtils_initialize(tally);
  EXPECT_NE(dynamic_cast<Factory*>(Model::getBehavior()), nullptr);
  VRKLnuBasicUtils_finalize(tally);
  EXPECT_EQ(Model::getBehavior(), nullptr);
  VRKLnuBasicUtils_initialize(tally);
  EXPECT_NE(Model::getBehavior(), nullptr);
  Factory client;
  Model::setBehavior(&client);
  VRKLnuBasicUtils_finalize(tally);
  EXPECT_EQ(Model::getBehavior(), &client);
  Model::setBehavior(nullptr);
}

TEST_F(LifecycleTest, PackagesInstallAFreshFactoryAndDeleteOnlyTheirOwn) {
  ExpectTheFactoryRule<VRKBasAtiThreadingModel, VRKLnuThrMultiThreadFact>(tally);
  ExpectTheFactoryRule<VRKBasExceptionModel, nex_ExceptionFactory>(tally);
  ExpectTheFactoryRule<VRKBasUtlExceptionModel, utl_ExceptionFactory>(tally);
  EXPECT_EQ(tally, 0);
}

TEST_F(LifecycleTest, FormalizeEntriesDoNothing) {
  EXPECT_FALSE(nex_assertFormalize());
  VRKLnuBasicUtils_initialize(tally);
  nex_formalize();
  uti_formalize();
  EXPECT_FALSE(nex_assertFormalize());
  VRKLnuBasicUtils_finalize(tally);
  EXPECT_FALSE(nex_assertFormalize());
  EXPECT_EQ(tally, 0);
}

}  // namespace
