#include "cls_ClassRegistrar.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <stdlib.h>

#include <vector>

#include "VRKTestLibrary.h"
#include "cls_ReadVisitor.h"

namespace {

using ::testing::ElementsAre;

constexpr unsigned kShape = 0x280001;
constexpr unsigned kCircle = 0x280002;
constexpr unsigned kDisc = 0x280003;

int deletedCows = 0;
void CountCowDelete(cow_COW<int, cow_Direct<int>>*) {
  ++deletedCows;
}

// What `get` gives for each metadata of the list, in order.
template <class Get>
auto Each(const cow_List<cls_ClassMetadataHld>& list, Get get) {
  std::vector<decltype(get(list[0].GetRef()))> values;
  for (int i = 0; i < list.Count(); ++i)
    values.push_back(get(list[i].GetRef()));
  return values;
}
const auto Version = [](const cls_ClassMetadata& m) { return m.Version(); };
const auto Id = [](const cls_ClassMetadata& m) { return m.ClassId(); };

// The registrar alone, with no failure hooks installed (package nex is down).
class ClassRegistrarTest : public VRKFootprintTest {
 protected:
  void SetUp() override {
    VRKFootprintTest::SetUp();
    registrar = new cls_ClassRegistrar;
  }
  void TearDown() override {
    unsetenv("LUNARA_SITE");
    delete registrar;
    VRKFootprintTest::TearDown();
  }
  cls_ClassMetadata& Declare(unsigned id, int version, unsigned base = 1) {
    return registrar->CreateClassMD("Shape", id, version, nullptr, base);
  }

  cls_ClassRegistrar* registrar = nullptr;
};

TEST_F(ClassRegistrarTest, LookupsFindVersionsWhateverTheOrderOfRegistration) {
  Declare(kShape, 7);
  Declare(kCircle, 6, kShape);  // another class's version between them
  Declare(kShape, 5);           // an older version after the newest
  EXPECT_EQ(registrar->ConstGet(kShape).GetRef().Version(), 7);
  EXPECT_EQ(registrar->GetLastClassVersionNumber(kShape), 7);
  EXPECT_EQ(registrar->GetClassMetadata(kShape, 5).GetRef().Version(), 5);
  // by (identifier, version), not in the order of registration
  EXPECT_THAT(Each(registrar->GetHistoryMDList(), Version), ElementsAre(5, 7, 6));
  EXPECT_EQ(registrar->GetPreviousClassVersionNumber(kShape, 5), -1);
  EXPECT_EQ(registrar->GetPreviousClassVersionNumber(kShape, 7), 5);
  EXPECT_EQ(registrar->GetPreviousClassVersionNumber(kShape, 100), 7);
  EXPECT_EQ(registrar->GetFirstClassVersionNumberGREQ(kShape, 8), -1);
  EXPECT_EQ(registrar->GetFirstClassVersionNumberGREQ(kShape, 7), 7);
  EXPECT_EQ(registrar->GetFirstClassVersionNumberGREQ(kShape, 6), 7);
  EXPECT_EQ(registrar->GetFirstClassVersionNumberGREQ(kShape, -3), 5);
  // Misses give empty values: there are no failure hooks.
  EXPECT_EQ(registrar->GetFirstClassVersionNumberGREQ(kDisc, 0), -1);
  EXPECT_EQ(registrar->GetLastClassVersionNumber(kDisc), -1);
  EXPECT_TRUE(registrar->ConstGet(kDisc).IsEmpty());
  EXPECT_TRUE(registrar->GetClassMetadata(kShape, 6).IsEmpty());
  EXPECT_EQ(registrar->GetClassID("Nothing"), 0u);
  registrar->DeleteClass("Shape", kDisc);  // only an unknown name is added
  registrar->DeleteClass("Alias", kDisc);
  EXPECT_EQ(registrar->GetClassID("Shape"), kShape);
  EXPECT_EQ(registrar->GetClassID("Alias"), kDisc);
}

// Versions are signed: -1 is a version like any other, told apart from "none found".
TEST_F(ClassRegistrarTest, NegativeVersionsAreFoundLikeAnyOther) {
  Declare(kShape, 3);
  Declare(kShape, -1);
  Declare(kShape, -4);
  EXPECT_EQ(registrar->GetFirstClassVersionNumberGREQ(kShape, -2), -1);
  EXPECT_EQ(registrar->GetFirstClassVersionNumberGREQ(kShape, -9), -4);
  EXPECT_EQ(registrar->GetFirstClassVersionNumberGREQ(kShape, 0), 3);
  EXPECT_EQ(registrar->GetPreviousClassVersionNumber(kShape, 0), -1);
  EXPECT_EQ(registrar->GetPreviousClassVersionNumber(kShape, -1), -4);
  EXPECT_EQ(registrar->GetPreviousClassVersionNumber(kShape, -4), -1);  // none
}

// The constructor function takes the visitor as the read constructors do, not as const.
void* BuildFromVisitor(cls_ReadVisitor& visitor) {
  return &visitor;
}

TEST_F(ClassRegistrarTest, CtorCallsTheConstructorFunctionWithTheVisitor) {
  const cls_ClassMetadata& shape =
      registrar->CreateClassMD("Shape", kShape, 1, BuildFromVisitor, 1);
  cls_ReadVisitor visitor(nullptr);
  EXPECT_EQ(shape.Ctor(visitor), &visitor);
  EXPECT_EQ(Declare(kCircle, 1).Ctor(visitor), nullptr);  // no function
}

TEST_F(ClassRegistrarTest, RepeatedRegistrationKeepsTheFirstMetadataAndIsSilentOffSite) {
  cls_ClassMetadata& first =
      Declare(kShape, 5).AddAttribute(cls_FieldHandle(0, "m_Sides"), cls_AttrInt, 1, cls_CollNone);
  ::testing::internal::CaptureStderr();
  cls_ClassMetadata& again =
      Declare(kShape, 5).AddAttribute(cls_FieldHandle(3, "m_Other"), cls_AttrInt, 1, cls_CollNone);
  EXPECT_EQ(::testing::internal::GetCapturedStderr(), "");
  EXPECT_EQ(&again, &first);
  EXPECT_EQ(first.Attributes().Size(), 2);
  EXPECT_EQ(registrar->GetHistoryMDList().Count(), 1);

  setenv("LUNARA_SITE", "1", 1);
  ::testing::internal::CaptureStderr();
  Declare(kShape, 5);
  EXPECT_EQ(::testing::internal::GetCapturedStderr(),
            "WARNING: Metadata for class Shape version 5 has been initialized more than once.\n");
}

TEST_F(ClassRegistrarTest, AttributesKeepTheirFirstDeclarationAndGiveTheLargestId) {
  cls_ClassMetadata& metadata = Declare(kShape, 1);
  metadata.AddAttribute(cls_FieldHandle(-1, "numCoord"), cls_AttrInt, 1, cls_CollNone);
  EXPECT_EQ(metadata.MaxFieldID(), -1);
  metadata
      .AddAttribute(cls_FieldHandle(4, "tempCoord"), cls_AttrCollection, 0x230001,
                    static_cast<cls_CollectionType>(53))
      .AddAttribute(cls_FieldHandle(2, "c"), cls_AttrObject, kCircle, cls_CollNone)
      .AddAttribute(cls_FieldHandle(9, "c"), cls_AttrInt, 1, cls_CollNone);
  EXPECT_EQ(metadata.MaxFieldID(), 4);
  const cls_AttributeMetadata& c = metadata.Attributes().ConstFind("c");
  EXPECT_EQ(c.FieldId(), 2);
  EXPECT_EQ(c.Type(), cls_AttrObject);
}

TEST_F(ClassRegistrarTest, InheritanceAndCowDeletionFollowRegisteredBaseClasses) {
  Declare(kShape, 1).AddDtor(CountCowDelete);
  Declare(kCircle, 1, kShape);
  Declare(kDisc, 1, kCircle);
  EXPECT_TRUE(registrar->InheritanceCheck(kDisc, kShape));
  EXPECT_TRUE(registrar->InheritanceCheck(kDisc, kDisc));
  EXPECT_FALSE(registrar->InheritanceCheck(kShape, kDisc));
  EXPECT_TRUE(registrar->InheritanceCheck(kDisc, 1));  // every chain ends on 1
  EXPECT_FALSE(registrar->InheritanceCheck(0x280009, kShape));
  EXPECT_THAT(Each(registrar->GetMDList(), Id), ElementsAre(kShape, kCircle, kDisc));
  // The nearest base with a function deletes; class 1 and unknown classes have none.
  EXPECT_TRUE(registrar->DeleteCow(kDisc, nullptr));
  EXPECT_FALSE(registrar->DeleteCow(1, nullptr));
  EXPECT_FALSE(registrar->DeleteCow(0x280009, nullptr));
  EXPECT_EQ(deletedCows, 1);
}

TEST(ClassMetadataDeathTest, AClassThatIsItsOwnBaseAborts) {
  EXPECT_DEATH(cls_ClassMetadata("Loop", kShape, 1, nullptr, kShape),
               "ODB metadat for class: Loop\n  Is incorrectly defined.  The base class ID is\n"
               "  the same as the class ID.  Please correct this.");
}

}  // namespace
