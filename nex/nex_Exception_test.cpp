#include "nex_Exception.h"

#include <errno.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <memory>
#include <thread>

#include "VRKTestMemento.h"
#include "cls_MetadataRegistrar.h"
#include "nex_AssertException.h"
#include "nex_BadCastException.h"
#include "nex_CommandException.h"
#include "nex_ExitException.h"
#include "nex_InvalidObjException.h"
#include "nex_OutOfMemoryException.h"
#include "nex_SystemErrorException.h"
#include "nex_TextException.h"
#include "thr_ThreadPool.h"

namespace {

using ::testing::ElementsAre;

atr_String Text(const char* text) {
  return nex_Translate(text);
}

// Raises the error at this file's line and gives back what was caught.
template <class T>
T Raised(T error, int line) {
  try {
    error.Throw(nex_SourceName(__FILE__).c_str(), line);
  } catch (const T& caught) {
    return caught;
  }
}

class ExceptionTest : public VRKStoreTest {
 protected:
  // Writes the error in field "e" of the store's root record and rebuilds it through the
  // newest metadata of the class that the record names.
  template <class T>
  std::unique_ptr<T> RoundTrip(const T& error) {
    store.WriteField("e", error);
    const unsigned classId = store.Root().nested.at("e")->classId;
    const cls_ClassRegistrar& classes = cls_MetadataRegistrar::Instance().GetWorkingSet();
    const cls_ClassMetadataHld& metadata =
        classes.GetClassMetadata(classId, classes.GetLastClassVersionNumber(classId));
    cls_ReadVisitor root(store.NewReader());
    return std::unique_ptr<T>(
        static_cast<T*>(metadata.GetRef().Ctor(cls_ReadVisitor(root, cls_FieldHandle(0, "e")))));
  }

  // Also checks the class's text when one is given.
  template <class T>
  void ExpectRoundTrip(const T& made, const char* text = nullptr) {
    SCOPED_TRACE(made.DynTypeId());
    const T error = Raised(made, 1234);
    const std::unique_ptr<T> back = RoundTrip(error);
    EXPECT_EQ(back->DynTypeId(), T::TypeId());
    EXPECT_EQ(back->AsString(), error.AsString());
    if (text != nullptr) {
      EXPECT_EQ(error.AsString(), text);
    }
    EXPECT_EQ(back->DeveloperReport(), error.DeveloperReport());
    EXPECT_EQ(back->FromFile(), "nex_Exception_test");
    EXPECT_EQ(back->FromLine(), 1234);
  }
};

TEST_F(ExceptionTest, ReportsCarryTheMessageAndTheLatestRaiseSite) {
  EXPECT_EQ(nex_TextException{atr_String()}.DeveloperReport(), "Exception:  in file  at line 0");
  nex_TextException error(Text("disk full"));
  EXPECT_THROW(error.Throw("first", 1), nex_TextException);
  const int raiseLine = __LINE__ + 2;
  try {
    NEX_THROW(error);
  } catch (const nex_Exception& caught) {
    EXPECT_EQ(caught.DynTypeId(), nex_TextException::TypeId());
    EXPECT_EQ(caught.UserReport(), "disk full");
    EXPECT_EQ(
        caught.DeveloperReport(),
        nex_Translate("Exception: disk full in file nex_Exception_test at line %d", raiseLine));
  }
  EXPECT_EQ(error.FromLine(), raiseLine);  // the raise recorded the site on the object
  EXPECT_EQ(nex_SourceName("/a/b/nex_TypeTable.cpp"), "nex_TypeTable");
  EXPECT_EQ(nex_SourceName("plain"), "plain");
  EXPECT_EQ(nex_SourceName("dir.d/file"), "file");
}

TEST_F(ExceptionTest, SharedHoldersCopyTheExactClassIdentityAndSiteOnWrite) {
  const nex_ExitException error = Raised(nex_ExitException(Text("bye"), 4), 77);
  cow_COW<nex_Exception, cow_Virtual<nex_Exception>> held(error);
  cow_COW<nex_Exception, cow_Virtual<nex_Exception>> shared = held;
  EXPECT_EQ(&shared.ConstGet(), &held.ConstGet());
  nex_Exception& own = shared.Get();
  EXPECT_NE(&own, &held.ConstGet());
  EXPECT_TRUE(own.Uid() == error.Uid());
  try {
    own.Propagate();
  } catch (const nex_ExitException& caught) {
    EXPECT_EQ(caught.AsString(), "bye");
    EXPECT_EQ(caught.ExitCode(), 4);
    EXPECT_EQ(caught.FromLine(), 77);
  }
}

TEST_F(ExceptionTest, EveryClassRoundTripsThroughTheStoreWithItsText) {
  ExpectRoundTrip(nex_TextException(Text("text")), "text");
  // The condition's text is taken as it is, never as a format.
  ExpectRoundTrip(nex_AssertException("d >= INT_MIN && d <= 100%"), "d >= INT_MIN && d <= 100%");
  ExpectRoundTrip(nex_BadCastException(Text("Bad Cast")), "Bad Cast");
  ExpectRoundTrip(nex_ExitException(Text("stop"), 3), "stop");
  ExpectRoundTrip(nex_ExitException(atr_String(), -2), "Exit code: -2");
  ExpectRoundTrip(nex_InvalidObjException(Text("invalid")), "invalid");
  ExpectRoundTrip(nex_SystemErrorException(omi_SystemErrorCode(ENOENT)),
                  "No such file or directory");
  ExpectRoundTrip(nex_OutOfMemoryException(nex_OutOfMemoryLimitReached));
}

TEST_F(ExceptionTest, WritesGoBaseLevelFirstInFieldOrder) {
  RoundTrip(Raised(nex_ExitException(Text("m"), 3), 9));
  EXPECT_THAT(
      store.Take(),
      ElementsAre("root: MakeWriteObjWithPtr e 1f0006#1", "1f0006#1: MakeBaseWriteObj 1f0001#2",
                  "1f0001#2: Write(string) m_FromFile=nex_Exception_test",
                  "1f0001#2: Write(int) m_FromLine=9", "1f0006#1: Write(string) m_Value.m_Msg=m",
                  "1f0006#1: Write(int) m_Value.m_Err=3",
                  // reading: the base part, then the identity before the fields
                  "root: MakeReadObj e", "1f0006#1: MakeBaseReadObj", "1f0001#2: Read m_FromFile",
                  "1f0001#2: Read m_FromLine", "1f0001#2: GetUid", "1f0006#1: GetUid",
                  "1f0006#1: Read m_Value.m_Msg", "1f0006#1: Read m_Value.m_Err"));
}

TEST_F(ExceptionTest, SystemErrorCodesAreWrittenUnsignedReadSignedAndDefaultWhenAbsent) {
  omi_SystemErrorCode code(EPERM);
  code.m_CRTErrorCode = -5;
  const std::unique_ptr<nex_SystemErrorException> back = RoundTrip(nex_SystemErrorException(code));
  EXPECT_EQ(back->ErrorCode().m_CRTErrorCode, -5);
  EXPECT_EQ(back->ErrorCode().m_NativeErrorCode, static_cast<unsigned>(EPERM));
  const std::vector<std::string> calls = store.Take();
  EXPECT_THAT(std::vector<std::string>(calls.begin() + 4, calls.begin() + 6),
              ElementsAre("1f0008#1: Write(unsigned) m_Value.m_NativeErrorCode=1",
                          "1f0008#1: Write(unsigned) m_Value.m_CRTErrorCode=4294967291"));

  // A record with no fields at all: an older version of every level.
  {
    cls_WriteVisitor root(store.NewWriter());
    cls_WriteVisitor field(root, cls_FieldHandle(0, "old"), nullptr, nullptr);
    field.StartWrite(nex_SystemErrorException::TypeId(), cls_Uid());
  }
  const auto old = store.ReadField<nex_SystemErrorException>("old");
  EXPECT_EQ(old.ErrorCode().m_CRTErrorCode, -1);
  EXPECT_EQ(old.ErrorCode().m_NativeErrorCode, ~0u);
  EXPECT_EQ(old.FromFile(), "0");  // the string of the number 0, as stored records expect
  EXPECT_EQ(old.FromLine(), 0);
}

TEST_F(ExceptionTest, AWrittenIdentityOrADeclinedLevelWritesNothing) {
  nex_TextException error(Text("once"));
  store.WriteField("e", error);
  store.Take();
  store.WriteField("e", error);
  EXPECT_THAT(store.Take(), ElementsAre("root: MakeWriteObjWithPtr e 1f0002#1 declined"));

  store.Decline(nex_Exception::TypeId());
  store.WriteField("e", nex_TextException(Text("partly")));
  EXPECT_THAT(store.Take(), ElementsAre("root: MakeWriteObjWithPtr e 1f0002#3",
                                        "1f0002#3: MakeBaseWriteObj 1f0001#4 declined",
                                        "1f0002#3: Write(string) m_Value=partly"));
}

// A concrete command error, as other packages derive them.
class CommandFailed : public nex_CommandException {
 public:
  CommandFailed() = default;
  atr_String JournalMessage() const override { return nex_Translate("step 2 failed"); }
  cow_String PythonType() const override { return "CommandError"; }
  [[noreturn]] void Propagate() const override { nex_RaiseCopy(*this); }
  nex_Exception* Copy() const override { return nex_HeapCopy(*this); }
};

TEST_F(ExceptionTest, CommandErrorsReportTheirTypeAndWriteOnlyTheirIdentity) {
  CommandFailed error;
  EXPECT_EQ(error.AsString(), "CommandError: step 2 failed");
  store.WriteField("e", error);
  EXPECT_THAT(
      store.Take(),
      ElementsAre("root: MakeWriteObjWithPtr e 1f0003#1", "1f0003#1: MakeBaseWriteObj 1f0001#2",
                  "1f0001#2: Write(string) m_FromFile=", "1f0001#2: Write(int) m_FromLine=0"));
  const cls_ClassRegistrar& classes = cls_MetadataRegistrar::Instance().GetWorkingSet();
  cls_ReadVisitor nothing(nullptr);
  EXPECT_EQ(classes.ConstGet(nex_CommandException::TypeId()).GetRef().Ctor(nothing), nullptr);
}

// Raises on a pool thread and keeps a copy for the thread that asked.
class RaiseTask : public VRKBasAtiThreadTask {
 public:
  RaiseTask(nex_Exception** result, std::atomic<bool>* done) : m_Result(result), m_Done(done) {}
  void Run(int) override {
    try {
      NEX_THROW(nex_InvalidObjException(nex_Translate("raised on a pool thread")));
    } catch (const nex_Exception& error) {
      *m_Result = error.Copy();
    }
    m_Done->store(true, std::memory_order_release);
  }

 private:
  nex_Exception** m_Result;
  std::atomic<bool>* m_Done;
};

TEST_F(ExceptionTest, AnErrorCarriedFromAPoolThreadIsRaisedAgainWithItsClassAndSite) {
  thr_ThreadPool& pool = thr_ThreadPool::Instance();
  pool.AddThreads(1);
  nex_Exception* carried = nullptr;
  std::atomic<bool> done{false};
  ASSERT_TRUE(pool.RunTask(new RaiseTask(&carried, &done)));
  while (!done.load(std::memory_order_acquire)) {
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
  }
  ASSERT_NE(carried, nullptr);
  try {
    carried->Propagate();
  } catch (const nex_InvalidObjException& error) {
    EXPECT_EQ(error.AsString(), "raised on a pool thread");
    EXPECT_EQ(error.FromFile(), "nex_Exception_test");
    EXPECT_GT(error.FromLine(), 0);
  }
  delete carried;
}

}  // namespace
