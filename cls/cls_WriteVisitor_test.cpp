#include "cls_WriteVisitor.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "VRKTestLibrary.h"
#include "VRKTestMemento.h"
#include "atr_translate.h"
#include "cls_AgentBlob.h"
#include "cls_AgentRequest.h"
#include "cls_BlobReader.h"
#include "cls_BlobWriter.h"
#include "cls_ReadVisitor.h"
#include "cls_xpString.h"

namespace {

using ::testing::ElementsAre;

// A persistent class with a base class, written the way the library's classes write.
class Shape {
 public:
  static unsigned TypeId() { return 0x280001; }
  Shape() = default;
  explicit Shape(const cls_ReadVisitor& visitor)
      : m_Name(visitor.Read(cls_FieldHandle(0, "m_Name"), cow_String("none"))),
        m_Uid(visitor.GetUid()) {}
  void DBWrite(const cls_WriteVisitor& visitor) const {
    if (!visitor.StartWrite(TypeId(), m_Uid)) return;
    visitor.Write(cls_FieldHandle(0, "m_Name"), m_Name);
  }
  cow_String m_Name = "shape";
  cls_Uid m_Uid;
};

class Square : public Shape {
 public:
  static unsigned TypeId() { return 0x280002; }
  Square() = default;
  explicit Square(const cls_ReadVisitor& visitor)
      : Shape(cls_ReadVisitor(visitor)),
        m_Side(visitor.Read(cls_FieldHandle(0, "m_Side"), 1.5)),
        m_Uid(visitor.GetUid()) {}
  void DBWrite(const cls_WriteVisitor& visitor) const {
    if (!visitor.StartWrite(TypeId(), m_Uid)) return;
    Shape::DBWrite(cls_WriteVisitor(visitor, Shape::TypeId()));
    visitor.Write(cls_FieldHandle(0, "m_Side"), m_Side);
  }
  double m_Side = 2.0;
  cls_Uid m_Uid;
};

using WriteVisitorTest = VRKStoreTest;

TEST_F(WriteVisitorTest, AnObjectGoesOutBaseFirstThroughNestedAndBaseMementos) {
  Square square;
  store.WriteField("sq", square);
  EXPECT_THAT(
      store.Take(),
      ElementsAre("root: MakeWriteObjWithPtr sq 280002#1", "280002#1: MakeBaseWriteObj 280001#2",
                  "280001#2: Write(string) m_Name=shape", "280002#1: Write(double) m_Side=2"));
  const Square rebuilt = store.ReadField<Square>("sq");
  EXPECT_EQ(rebuilt.m_Name, "shape");
  EXPECT_EQ(rebuilt.m_Side, 2.0);
  EXPECT_TRUE(rebuilt.m_Uid == square.m_Uid);
  EXPECT_TRUE(rebuilt.Shape::m_Uid == square.Shape::m_Uid);
}

TEST_F(WriteVisitorTest, AnIdentityWrittenAlreadyOrADeclinedClassWritesNothing) {
  Square square;
  store.WriteField("sq", square);
  store.Take();
  store.WriteField("sq", square);
  EXPECT_THAT(store.Take(), ElementsAre("root: MakeWriteObjWithPtr sq 280002#1 declined"));

  store.Decline(Shape::TypeId());
  store.WriteField("sq", Square());
  // The base part is declined; the object's own fields still go out.
  EXPECT_THAT(store.Take(), ElementsAre("root: MakeWriteObjWithPtr sq 280002#3",
                                        "280002#3: MakeBaseWriteObj 280001#4 declined",
                                        "280002#3: Write(double) m_Side=2"));
}

TEST_F(WriteVisitorTest, StartWriteAsksOnceSharedValuesUseMakeWriteObjTagsGoUpForNamedFields) {
  cls_WriteVisitor root(store.NewWriter());
  root.CheckCollectionType(static_cast<cls_CollectionType>(53));
  cls_WriteVisitor unnamed(root, cls_FieldHandle(), nullptr, nullptr);
  unnamed.CheckCollectionType(static_cast<cls_CollectionType>(53));
  cls_WriteVisitor named(root, cls_FieldHandle(-1, "tempCoord"), nullptr, nullptr);
  named.CheckCollectionType(static_cast<cls_CollectionType>(53));
  EXPECT_THAT(store.Take(), ElementsAre("root: CheckCollectionType 53 tempCoord"));

  cow_COW<int, cow_Direct<int>> value(7);
  cls_Uid uid;
  cls_WriteVisitor field(root, cls_FieldHandle(1, "v"), &value, nullptr);
  field.SetShared(true);
  EXPECT_TRUE(field.StartWrite(0x280003, uid));
  EXPECT_TRUE(field.StartWrite(0x280003, uid));
  EXPECT_EQ(field.FieldIsPresent(cls_FieldHandle(0, "x")), 1);
  EXPECT_THAT(store.Take(),
              ElementsAre("root: MakeWriteObj v 280003#1", "280003#1: StartSharedPtrOutput",
                          "280003#1: FieldIsPresent x"));
}

TEST_F(WriteVisitorTest, VisitorsWithoutAMementoAnswerEmpty) {
  cls_Uid uid;
  cls_WriteVisitor orphan(nullptr);
  EXPECT_EQ(orphan.FieldIsPresent(cls_FieldHandle(0, "x")), 0);
  cls_WriteVisitor nested(orphan, cls_FieldHandle(0, "x"), nullptr, nullptr);
  EXPECT_FALSE(nested.StartWrite(0x280001, uid));

  cls_ReadVisitor nothing(nullptr);
  EXPECT_EQ(nothing.DbId(), "");
  EXPECT_EQ(nothing.FieldIsPresent(cls_FieldHandle(0, "x")), 0);
  EXPECT_EQ(nothing.DataIsPresent(cls_FieldHandle(0, "x")), 0);
  EXPECT_EQ(nothing.Read(cls_FieldHandle(0, "x"), 42), 42);
  EXPECT_FALSE(nothing.GetUid() == uid);
}

// A request for the next element of a collection, which the store's root memento serves.
class ElementRequest : public cls_AgentRequest {
 public:
  explicit ElementRequest(cls_MementoWrite* parent) : m_Parent(parent) {}
  cls_MementoWrite* MakeWriteObj(unsigned classId, const cls_Uid& uid,
                                 const cow_COW<int, cow_Direct<int>>* cow) const override {
    return m_Parent->MakeWriteObj(cls_FieldHandle(0, "element"), classId, uid, cow);
  }
  cls_MementoWrite* MakeWriteObjWithPtr(unsigned classId, const cls_Uid& uid,
                                        const void* object) const override {
    return m_Parent->MakeWriteObjWithPtr(cls_FieldHandle(0, "element"), classId, uid, object);
  }

 private:
  cls_MementoWrite* m_Parent;
};

TEST_F(WriteVisitorTest, ARequestStandsInForTheParent) {
  cls_WriteVisitor root(store.NewWriter());
  Shape shape;
  ElementRequest request(root.Memento());
  {
    cls_WriteVisitor element(request, &shape);
    shape.DBWrite(element);
  }
  EXPECT_THAT(store.Take(), ElementsAre("root: MakeWriteObjWithPtr element 280001#1",
                                        "280001#1: Write(string) m_Name=shape"));
}

TEST_F(WriteVisitorTest, StringsAndStringValuesRoundTrip) {
  cls_xpString plain(cow_String("beam"));
  cls_xpTrString text(atr_translate("Load").Result());
  {
    cls_WriteVisitor root(store.NewWriter());
    root.Write(cls_FieldHandle(0, "title"), atr_translate("Result").Result());  // user text
    cls_WriteVisitor plainField(root, cls_FieldHandle(0, "plain"), nullptr, &plain);
    plainField.StartWrite(cls_xpString::TypeId(), plain.Uid());
    plain.DBWrite(plainField);
    cls_WriteVisitor textField(root, cls_FieldHandle(1, "text"), nullptr, &text);
    textField.StartWrite(cls_xpTrString::TypeId(), text.Uid());
    text.DBWrite(textField);
  }
  EXPECT_THAT(
      store.Take(),
      ElementsAre("root: Write(string) title=Result", "root: MakeWriteObjWithPtr plain 1a0001#1",
                  "1a0001#1: Write(string) STRING=beam", "root: MakeWriteObjWithPtr text 1a0007#2",
                  "1a0007#2: Write(string) TRSTRING=Load"));
  const cls_xpString plainBack = store.ReadField<cls_xpString>("plain");
  const cls_xpTrString textBack = store.ReadField<cls_xpTrString>("text");
  EXPECT_EQ(plainBack, "beam");
  EXPECT_EQ(textBack, "Load");
  EXPECT_TRUE(plainBack.Uid() == plain.Uid());
  // The identity is taken before the field.
  EXPECT_THAT(store.Take(),
              ElementsAre("root: MakeReadObj plain", "1a0001#1: GetUid", "1a0001#1: Read STRING",
                          "root: MakeReadObj text", "1a0007#2: GetUid", "1a0007#2: Read TRSTRING"));
  cls_ReadVisitor root(store.NewReader());
  EXPECT_EQ(root.Read(cls_FieldHandle(0, "title"), atr_String()), "Result");
  // The text form hands the store an empty default: an absent field reads empty.
  EXPECT_EQ(root.Read(cls_FieldHandle(0, "missing"), atr_translate("x").Result()), "");
  EXPECT_EQ(root.Read(cls_FieldHandle(0, "missing"), cow_String("x")), "x");
}

class CountedBlob : public cls_AgentBlob {
 public:
  explicit CountedBlob(int* deleted) : m_Deleted(deleted) {}
  ~CountedBlob() override { ++*m_Deleted; }

 private:
  int* m_Deleted;
};

TEST_F(WriteVisitorTest, BlobsGetTheirAgentFromANestedRecordOfTheBlobClass) {
  int deleted = 0;
  cls_Uid uid;
  store.SetBlobAgent(new CountedBlob(&deleted));
  {
    cls_WriteVisitor root(store.NewWriter());
    cls_BlobWriter(root, cls_FieldHandle(-1, "image"), uid);  // takes the agent, deletes it
  }
  EXPECT_EQ(deleted, 1);
  EXPECT_THAT(store.Take(),
              ElementsAre("root: MakeWriteObj image 230005#1", "230005#1: MakeAgentBlob"));

  store.SetBlobAgent(new CountedBlob(&deleted));
  cls_Uid read;
  cls_ReadVisitor root(store.NewReader());
  cls_BlobReader(root, cls_FieldHandle(-1, "image"), read);
  EXPECT_EQ(deleted, 2);
  EXPECT_TRUE(read == uid);
  const cls_Uid untouched = read;
  EXPECT_EQ(cls_BlobReader(root, cls_FieldHandle(-1, "nothing"), read).Agent(), nullptr);
  EXPECT_TRUE(read == untouched);
}

}  // namespace
