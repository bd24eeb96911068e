#include "nex_OutOfMemoryException.h"

#include <gtest/gtest.h>

#include <thread>

#include "VRKTestMemento.h"
#include "mem_Alloc.h"
#include "thr_ThrSingletonRegistry.h"

namespace {

using OutOfMemoryTest = VRKStoreTest;

const atr_String& Generic() {
  return *nex_OutOfMemoryException::GetOutOfMemoryMsgGeneric();
}

atr_String Plus(atr_String text, const char* tail) {
  text += tail;
  return text;
}

TEST_F(OutOfMemoryTest, MessagesStartFromTheirFixedTextsAndGrowForEveryObject) {
  const nex_OutOfMemoryException before(nex_OutOfMemoryUnknown);
  const atr_String specific = before.JournalMessage();
  const cow_String text(specific);
  const char* const tail = "where the memory is not limited to 2 or 3GB. \n";
  EXPECT_EQ(text.Find("*** Error: An out of memory error occurred, or the "
                      "Lunara/CAE memory limit was reached.\n \n"),
            0);
  EXPECT_EQ(text.Find(tail), text.Length() - cow_String(tail).Length());
  const atr_String generic = Generic();
  EXPECT_EQ(generic,
            "*** Error: An out-of-memory error occurred. If you have access to a machine with "
            "more physical memory, you can try running the application there.\n");
  EXPECT_EQ(before.PythonType(), "OutOfMemory");

  const nex_OutOfMemoryException first(nex_Translate("[mesh]"), nex_OutOfMemoryLimitReached);
  const nex_OutOfMemoryException second(nex_Translate("[mesh]"), nex_OutOfMemoryLimitReached);
  // Every object reads the one message, which every text given extends.
  EXPECT_EQ(before.AsString(), Plus(specific, "[mesh][mesh]"));
  EXPECT_EQ(first.AsString(), before.AsString());
  EXPECT_EQ(second.JournalMessage(), before.JournalMessage());
  EXPECT_EQ(Generic(), Plus(generic, "[mesh][mesh]"));
}

TEST_F(OutOfMemoryTest, AStoredErrorRestoresTheSpecificMessageButNotTheGeneric) {
  const nex_OutOfMemoryException error(nex_Translate("[stored]"), nex_OutOfMemoryLimitReached);
  store.WriteField("e", error);
  const atr_String stored = error.JournalMessage();
  const atr_String generic = Generic();
  const nex_OutOfMemoryException later(nex_Translate("[later]"), nex_OutOfMemoryUnknown);
  EXPECT_NE(error.JournalMessage(), stored);
  EXPECT_EQ(store.ReadField<nex_OutOfMemoryException>("e").Error(), nex_OutOfMemoryLimitReached);
  EXPECT_EQ(later.AsString(), stored);  // every object reads the restored message
  EXPECT_EQ(Generic(), Plus(generic, "[later]"));
}

// Even with the footprint at the limit, on a thread that has no identities yet: the
// exception takes its identity outside the limit.
TEST_F(OutOfMemoryTest, AllocationPastTheLimitRaisesTheLibrarysError) {
  ASSERT_EQ(mem_Mallopt(-5, mem_Footprint()), 1);
  std::thread([] {
    try {
      mem_Free(mem_OperatorNewThrow(8));
      ADD_FAILURE() << "the allocation passed the limit";
    } catch (const nex_Exception& error) {
      EXPECT_EQ(error.DynTypeId(), nex_OutOfMemoryException::TypeId());
      EXPECT_EQ(dynamic_cast<const nex_OutOfMemoryException&>(error).Error(),
                nex_OutOfMemoryLimitReached);
    }
    thr_ThrSingletonRegistry::FinalizeCallingThread();
  }).join();
  mem_Mallopt(-5, mem_Footprint() + 64);
  mem_Free(mem_OperatorNewThrow(64));  // what fits still works
  mem_Mallopt(-5, 0);
}

}  // namespace
