#include "cls_MetadataRegistrar.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "VRKTestLibrary.h"
#include "cls_ReadVisitor.h"
#include "cls_xpString.h"

namespace {

std::vector<std::string> runs;

void DeclareA(cls_ClassRegistrar& registrar) {
  runs.push_back("A");
  registrar.CreateClassMD("A", 0x280001, 1, nullptr, 1);
}
void DeclareB(cls_ClassRegistrar& registrar) {
  runs.push_back("B");
  registrar.CreateClassMD("B", 0x280002, 1, nullptr, 1);
}

class MetadataRegistrarTest : public VRKLibraryTest {
 protected:
  void SetUp() override {
    VRKLibraryTest::SetUp();
    runs.clear();
  }
  cls_MetadataRegistrar& registrar = cls_MetadataRegistrar::Instance();
};

TEST_F(MetadataRegistrarTest, MaskBitsChooseTheSetsAndWhatIsRemembered) {
  registrar.initClassMetadata(DeclareA, 0);
  EXPECT_TRUE(runs.empty());
  registrar.initClassMetadata(DeclareA, 7);
  EXPECT_EQ(runs.size(), 3u);
  EXPECT_TRUE(registrar.GetStoredSet().ClassIsPresent(0x280001));
  EXPECT_TRUE(registrar.GetWorkingSet().ClassIsPresent(0x280001));
  EXPECT_TRUE(registrar.GetAuxiliarySet().ClassIsPresent(0x280001));

  registrar.initClassMetadata(DeclareB, 2);
  EXPECT_TRUE(registrar.GetWorkingSet().ClassIsPresent(0x280002));
  EXPECT_FALSE(registrar.GetStoredSet().ClassIsPresent(0x280002));
  EXPECT_FALSE(registrar.GetAuxiliarySet().ClassIsPresent(0x280002));
  registrar.initClassMetadata(DeclareB, 4);

  // Replay: the first list, then the second, each in order; bit 2 remembers nothing.
  runs.clear();
  cls_ClassRegistrar mine;
  registrar.initMetadata(&mine, 7);
  EXPECT_THAT(runs, ::testing::ElementsAre("A", "A", "B"));
  runs.clear();
  registrar.initMetadata(&mine, 2);
  EXPECT_TRUE(runs.empty());
  EXPECT_TRUE(mine.ClassIsPresent(0x280002));
}

TEST_F(MetadataRegistrarTest, StartDeclaresBothStringClassesInTheWorkingSet) {
  const cls_ClassRegistrar& working = registrar.GetWorkingSet();
  const cls_ClassMetadata& plain = working.ConstGet(0x1A0001).GetRef();
  EXPECT_EQ(plain.Version(), 800);
  EXPECT_EQ(working.GetClassID("atr_String"), 0x1A0007u);
  EXPECT_FALSE(registrar.GetStoredSet().ClassIsPresent(0x1A0001));

  // The adapter rebuilds a string value; with no store it is empty with a fresh identity.
  cls_ReadVisitor nothing(nullptr);
  cls_xpString* rebuilt = static_cast<cls_xpString*>(plain.Ctor(nothing));
  EXPECT_TRUE(rebuilt->IsEmpty());
  plain.Delete(rebuilt);
}

}  // namespace
