#include "thr_ThrSingletonRegistry.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <vector>

#include "VRKTestLibrary.h"

namespace {

std::vector<char> calls;

// Records its name; returns whether it released its object.
template <char kName, int kReleased>
int Finalizer() {
  calls.push_back(kName);
  return kReleased;
}
int Throws() {
  calls.push_back('t');
  throw std::runtime_error("finalizer failed");
}
constexpr auto Releases = Finalizer<'r', 1>;
constexpr auto KeepsNothing = Finalizer<'k', 0>;
constexpr auto Never = Finalizer<'n', 1>;

class RegistryTest : public VRKLibraryTest {
 protected:
  void SetUp() override {
    VRKLibraryTest::SetUp();
    registry = &thr_ThrSingletonRegistry::Instance();
    calls.clear();
  }
  thr_ThrSingletonRegistry* registry = nullptr;
};

TEST_F(RegistryTest, AThrowingFinalizerIsReportedAfterTheOthersRan) {
  registry->Register(Releases);
  registry->Register(Throws);
  registry->Register(Never);
  registry->SetDestructLevel(Releases, 5);
  registry->SetDestructLevel(Throws, 20);
  registry->SetDestructLevel(Never, 1);
  EXPECT_THROW(registry->FinalizeThread(0), std::runtime_error);
  EXPECT_EQ(calls, (std::vector<char>{'t', 'r'}));
  calls.clear();
  registry->FinalizeThread(0);  // both entries are done
  EXPECT_TRUE(calls.empty());
}

TEST_F(RegistryTest, EntriesThatReleasedNothingStayAndAreTriedAtEveryLowerThreshold) {
  const int before = registry->Count();
  for (int i = 0; i < 25; ++i)
    registry->Register(KeepsNothing);  // past two growths
  registry->SetDestructLevel(KeepsNothing, 3);
  EXPECT_EQ(registry->Count(), before + 25);
  registry->FinalizeThread(0);
  EXPECT_EQ(calls.size(), 50u);  // thresholds 2 and 1
  calls.clear();
  registry->FinalizeThread(0);
  EXPECT_EQ(calls.size(), 50u);
}

}  // namespace
