#include "nex_Exception.h"

#include <errno.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <memory>
#include <thread>

#include "VRKTestLibrary.h"
#include "VRKTestMemento.h"
#include "cls_MetadataRegistrar.h"
#include "cls_ReadVisitor.h"
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

class ExceptionTest : public VRKLibraryTest {
 protected:
  void TearDown() override {
    owned.reset();
    VRKLibraryTest::TearDown();
  }

  // Writes the error as field "e" of the store's root record and rebuilds it through the
  // newest metadata of the class that the record names.
  template <class T>
  std::unique_ptr<T> RoundTrip(const T& error) {
    {
      cls_WriteVisitor root(store.NewWriter());
      cls_WriteVisitor field(root, cls_FieldHandle(0, "e"), nullptr, &error);
      error.DBWrite(field);
    }
    const unsigned classId = store.Root().nested.at("e")->classId;
    const cls_ClassRegistrar& classes = cls_MetadataRegistrar::Instance().GetWorkingSet();
    const cls_ClassMetadataHld& metadata =
        classes.GetClassMetadata(classId, classes.GetLastClassVersionNumber(classId));
    cls_ReadVisitor root(store.NewReader());
    cls_ReadVisitor field(root, cls_FieldHandle(0, "e"));
    return std::unique_ptr<T>(static_cast<T*>(metadata.GetRef().Ctor(field)));
  }

  template <class T>
  void ExpectRoundTrip(const T& made) {
    SCOPED_TRACE(made.DynTypeId());
    const T error = Raised(made, 1234);
    const std::unique_ptr<T> back = RoundTrip(error);
    EXPECT_EQ(back->DynTypeId(), T::TypeId());
    EXPECT_EQ(back->AsString(), error.AsString());
    EXPECT_EQ(back->DeveloperReport(), error.DeveloperReport());
    EXPECT_EQ(back->FromFile(), "nex_Exception_test");
    EXPECT_EQ(back->FromLine(), 1234);
  }

  std::unique_ptr<VRKTestStore> owned{new VRKTestStore};
  VRKTestStore& store = *owned;
};

TEST_F(ExceptionTest, ReportsCarryTheMessageAndTheRaiseSite) {
  nex_TextException plain{atr_String()};
  EXPECT_EQ(plain.DeveloperReport(), "Exception:  in file  at line 0");
  EXPECT_EQ(plain.UserReport(), "");
  nex_TextException error(Text("disk full"));
  const int raiseLine = __LINE__ + 2;
  try {
    NEX_THROW(error);
  } catch (const nex_Exception& caught) {
    EXPECT_EQ(caught.DynTypeId(), nex_TextException::TypeId());
    EXPECT_EQ(caught.UserReport(), "disk full");
    EXPECT_EQ(caught.FromFile(), "nex_Exception_test");
    EXPECT_EQ(caught.DeveloperReport(),
              nex_Translate("Exception: disk full in file nex_Exception_test at line %d",
                            caught.FromLine()));
  }
  EXPECT_EQ(error.FromLine(), raiseLine);  // the raise recorded the site on the object
}

TEST_F(ExceptionTest, ASecondThrowOverwritesTheSite) {
  nex_TextException error(Text("x"));
  EXPECT_THROW(error.Throw("first", 1), nex_TextException);
  try {
    error.Throw("second", 2);
  } catch (const nex_TextException& caught) {
    EXPECT_EQ(caught.FromFile(), "second");
    EXPECT_EQ(caught.FromLine(), 2);
  }
}

TEST_F(ExceptionTest, SourceNamesLoseDirectoriesAndExtension) {
  EXPECT_EQ(nex_SourceName("/a/b/nex_TypeTable.cpp"), "nex_TypeTable");
  EXPECT_EQ(nex_SourceName("plain"), "plain");
  EXPECT_EQ(nex_SourceName("dir.d/file"), "file");
}

TEST_F(ExceptionTest, ClassTextsFollowEachClassRule) {
  EXPECT_EQ(nex_ExitException(atr_String(), 3).AsString(), "Exit code: 3");
  EXPECT_EQ(nex_ExitException(Text("stop"), 3).AsString(), "stop");
  EXPECT_EQ(nex_AssertException("d >= INT_MIN && d <= INT_MAX").AsString(),
            "d >= INT_MIN && d <= INT_MAX");
  EXPECT_EQ(nex_AssertException("100%").AsString(), "100%");
  EXPECT_EQ(nex_SystemErrorException(omi_SystemErrorCode(ENOENT)).AsString(),
            "No such file or directory");
}

TEST_F(ExceptionTest, CopiesAndSharedHoldersKeepTheExactClassAndSite) {
  const nex_ExitException error = Raised(nex_ExitException(Text("bye"), 4), 77);
  std::unique_ptr<nex_Exception> copy(static_cast<const nex_Exception&>(error).Copy());
  EXPECT_EQ(copy->DynTypeId(), nex_ExitException::TypeId());
  EXPECT_EQ(copy->FromLine(), 77);
  EXPECT_TRUE(copy->Uid() == error.Uid());

  cow_COW<nex_Exception, cow_Virtual<nex_Exception>> held(error);
  cow_COW<nex_Exception, cow_Virtual<nex_Exception>> shared = held;
  EXPECT_EQ(&shared.ConstGet(), &held.ConstGet());
  nex_Exception& own = shared.Get();
  EXPECT_NE(&own, &held.ConstGet());
  EXPECT_EQ(own.DynTypeId(), nex_ExitException::TypeId());
  EXPECT_EQ(own.AsString(), "bye");
  try {
    own.Propagate();
  } catch (const nex_ExitException& caught) {
    EXPECT_EQ(caught.ExitCode(), 4);
    EXPECT_EQ(caught.FromLine(), 77);
  }
}

TEST_F(ExceptionTest, EveryClassRoundTripsThroughTheStore) {
  ExpectRoundTrip(nex_TextException(Text("text")));
  ExpectRoundTrip(nex_AssertException("isActive"));
  ExpectRoundTrip(nex_BadCastException(Text("Bad Cast")));
  ExpectRoundTrip(nex_ExitException(Text("message"), 3));
  ExpectRoundTrip(nex_ExitException(atr_String(), -2));
  ExpectRoundTrip(nex_InvalidObjException(Text("invalid")));
  ExpectRoundTrip(nex_SystemErrorException(omi_SystemErrorCode(EACCES)));
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

TEST_F(ExceptionTest, SystemErrorCodesAreWrittenUnsignedAndReadSigned) {
  omi_SystemErrorCode code(EPERM);
  code.m_CRTErrorCode = -5;
  const std::unique_ptr<nex_SystemErrorException> back = RoundTrip(nex_SystemErrorException(code));
  EXPECT_EQ(back->ErrorCode().m_CRTErrorCode, -5);
  EXPECT_EQ(back->ErrorCode().m_NativeErrorCode, static_cast<unsigned>(EPERM));
  const std::vector<std::string> calls = store.Take();
  EXPECT_THAT(std::vector<std::string>(calls.begin() + 4, calls.begin() + 6),
              ElementsAre("1f0008#1: Write(unsigned) m_Value.m_NativeErrorCode=1",
                          "1f0008#1: Write(unsigned) m_Value.m_CRTErrorCode=4294967291"));
}

TEST_F(ExceptionTest, AbsentFieldsReadTheirDefaults) {
  // A record with no fields at all: an older version of every level.
  {
    cls_WriteVisitor root(store.NewWriter());
    nex_Exception* none = nullptr;
    cls_WriteVisitor field(root, cls_FieldHandle(0, "e"), nullptr, none);
    field.StartWrite(nex_SystemErrorException::TypeId(), cls_Uid());
  }
  cls_ReadVisitor root(store.NewReader());
  nex_SystemErrorException error{cls_ReadVisitor(root, cls_FieldHandle(0, "e"))};
  EXPECT_EQ(error.ErrorCode().m_CRTErrorCode, -1);
  EXPECT_EQ(error.ErrorCode().m_NativeErrorCode, ~0u);
  EXPECT_EQ(error.FromFile(), "0");  // the string of the number 0, as stored records expect
  EXPECT_EQ(error.FromLine(), 0);
}

TEST_F(ExceptionTest, AWrittenIdentityOrADeclinedRecordWritesNothing) {
  nex_TextException error(Text("once"));
  RoundTrip(error);
  store.Take();
  {
    cls_WriteVisitor root(store.NewWriter());
    cls_WriteVisitor field(root, cls_FieldHandle(1, "again"), nullptr, &error);
    error.DBWrite(field);
  }
  EXPECT_THAT(store.Take(), ElementsAre("root: MakeWriteObjWithPtr again 1f0002#1 declined"));

  store.Decline(nex_Exception::TypeId());
  nex_TextException other(Text("partly"));
  {
    cls_WriteVisitor root(store.NewWriter());
    cls_WriteVisitor field(root, cls_FieldHandle(2, "other"), nullptr, &other);
    other.DBWrite(field);
  }
  EXPECT_THAT(store.Take(), ElementsAre("root: MakeWriteObjWithPtr other 1f0002#3",
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
  EXPECT_EQ(error.DynTypeId(), nex_CommandException::TypeId());
  {
    cls_WriteVisitor root(store.NewWriter());
    cls_WriteVisitor field(root, cls_FieldHandle(0, "e"), nullptr, &error);
    error.DBWrite(field);
  }
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
