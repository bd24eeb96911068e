#include "nex_OutOfMemoryException.h"

#include <gtest/gtest.h>

#include <memory>
#include <new>

#include "VRKLnuLifecycle.h"
#include "VRKTestLibrary.h"
#include "VRKTestMemento.h"
#include "cls_ReadVisitor.h"
#include "mem_Alloc.h"

namespace {

class OutOfMemoryTest : public VRKLibraryTest {
 protected:
  void TearDown() override {
    mem_Mallopt(-5, 0);
    owned.reset();
    VRKLibraryTest::TearDown();
  }
  std::unique_ptr<VRKTestStore> owned{new VRKTestStore};
  VRKTestStore& store = *owned;
};

bool EndsWith(const atr_String& text, const char* tail) {
  const int length = static_cast<int>(std::char_traits<char>::length(tail));
  return text.Length() >= length && cow_String(text).Substr(text.Length() - length, -1) == tail;
}

TEST_F(OutOfMemoryTest, MessagesStartFromTheirFixedTexts) {
  const nex_OutOfMemoryException error(nex_OutOfMemoryUnknown);
  const atr_String specific = error.JournalMessage();
  EXPECT_EQ(cow_String(specific).Find("*** Error: An out of memory error occurred, or the "
                                      "Lunara/CAE memory limit was reached.\n \n"),
            0);
  EXPECT_TRUE(EndsWith(specific, "where the memory is not limited to 2 or 3GB. \n"));
  EXPECT_EQ(*nex_OutOfMemoryException::GetOutOfMemoryMsgGeneric(),
            "*** Error: An out-of-memory error occurred. If you have access to a machine with "
            "more physical memory, you can try running the application there.\n");
  EXPECT_EQ(error.AsString(), specific);
  EXPECT_EQ(error.PythonType(), "OutOfMemory");
}

TEST_F(OutOfMemoryTest, EveryTextGivenGrowsBothMessagesForEveryObject) {
  const nex_OutOfMemoryException before(nex_OutOfMemoryUnknown);
  const atr_String generic = *nex_OutOfMemoryException::GetOutOfMemoryMsgGeneric();
  const nex_OutOfMemoryException first(nex_Translate("[mesh]"), nex_OutOfMemoryLimitReached);
  const nex_OutOfMemoryException second(nex_Translate("[mesh]"), nex_OutOfMemoryLimitReached);
  EXPECT_TRUE(EndsWith(before.AsString(), "[mesh][mesh]"));
  EXPECT_EQ(first.AsString(), before.AsString());
  EXPECT_EQ(second.JournalMessage(), before.JournalMessage());
  atr_String expected = generic;
  expected += "[mesh][mesh]";
  EXPECT_EQ(*nex_OutOfMemoryException::GetOutOfMemoryMsgGeneric(), expected);
}

TEST_F(OutOfMemoryTest, AStoredErrorRestoresTheSpecificMessageButNotTheGeneric) {
  const nex_OutOfMemoryException error(nex_Translate("[stored]"), nex_OutOfMemoryLimitReached);
  {
    cls_WriteVisitor root(store.NewWriter());
    cls_WriteVisitor field(root, cls_FieldHandle(0, "e"), nullptr, &error);
    error.DBWrite(field);
  }
  const atr_String stored = error.JournalMessage();
  const atr_String generic = *nex_OutOfMemoryException::GetOutOfMemoryMsgGeneric();
  const nex_OutOfMemoryException later(nex_Translate("[later]"), nex_OutOfMemoryUnknown);
  EXPECT_NE(error.JournalMessage(), stored);

  cls_ReadVisitor root(store.NewReader());
  const nex_OutOfMemoryException back{cls_ReadVisitor(root, cls_FieldHandle(0, "e"))};
  EXPECT_EQ(back.Error(), nex_OutOfMemoryLimitReached);
  EXPECT_EQ(error.JournalMessage(), stored);
  EXPECT_EQ(later.AsString(), stored);
  atr_String expected = generic;
  expected += "[later]";
  EXPECT_EQ(*nex_OutOfMemoryException::GetOutOfMemoryMsgGeneric(), expected);
}

TEST_F(OutOfMemoryTest, AllocationPastTheLimitRaisesTheLibrarysError) {
  const cls_Uid warm;  // the thread's identities are in place before the limit
  ASSERT_EQ(mem_Mallopt(-5, mem_Footprint() + 4096), 1);
  try {
    mem_Free(mem_OperatorNewThrow(8192));
    FAIL() << "the allocation passed the limit";
  } catch (const nex_Exception& error) {
    EXPECT_EQ(error.DynTypeId(), nex_OutOfMemoryException::TypeId());
    EXPECT_EQ(dynamic_cast<const nex_OutOfMemoryException&>(error).Error(),
              nex_OutOfMemoryLimitReached);
  }
  mem_Free(mem_OperatorNewThrow(64));  // what fits still works
}

TEST(OutOfMemoryLifecycle, MessagesAndHandlerLiveWhilePackageNexIsUp) {
  EXPECT_EQ(nex_OutOfMemoryException::GetOutOfMemoryMsgGeneric(), nullptr);
  int tally = 0;
  VRKLnuBasicUtils_initialize(tally);
  EXPECT_NE(nex_OutOfMemoryException::GetOutOfMemoryMsgGeneric(), nullptr);
  VRKLnuBasicUtils_finalize(tally);
  EXPECT_EQ(nex_OutOfMemoryException::GetOutOfMemoryMsgGeneric(), nullptr);
  mem_Mallopt(-5, mem_Footprint() + 16);
  EXPECT_THROW(mem_OperatorNewThrow(1024), std::bad_alloc);
  mem_Mallopt(-5, 0);
}

}  // namespace
