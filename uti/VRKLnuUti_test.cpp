#include "VRKLnuUti.h"

#include <errno.h>
#include <gtest/gtest.h>

#include "VRKTestMemento.h"
#include "cls_MetadataRegistrar.h"
#include "typ_ArchCompTable.h"
#include "uti_CmdFailedException.h"
#include "uti_Coord3D.h"
#include "uti_CoordCont3D.h"
#include "uti_IOErrorException.h"
#include "uti_InterruptedException.h"
#include "uti_OdmException.h"
#include "uti_PreCheckFile.h"
#include "uti_Spawn.h"
#include "uti_XypException.h"
#include "utl_RegionMassProps.h"

namespace {

class UtiPackageTest : public VRKStoreTest {
 protected:
  // Raises the error, writes what was caught and reads it back through its read constructor;
  // the copy must have the class, the text and the raise site of the original.
  template <class T>
  void ExpectRoundTrip(T made, const char* text) {
    SCOPED_TRACE(text);
    try {
      made.Throw("uti_site", 42);
    } catch (const T& raised) {
      EXPECT_EQ(raised.UserReport(), text);
      store.WriteField("e", raised);
      const T back = store.ReadField<T>("e");
      EXPECT_EQ(back.DynTypeId(), T::TypeId());
      EXPECT_EQ(back.UserReport(), text);
      EXPECT_EQ(back.FromLine(), 42);
      const std::unique_ptr<nex_Exception> copy(back.Copy());
      EXPECT_EQ(copy->DynTypeId(), T::TypeId());
      EXPECT_THROW(copy->Propagate(), T);
    }
  }
};

TEST_F(UtiPackageTest, TheTypeTableNamesThePackagesClassesUnderFacilityTwo) {
  struct Row {
    unsigned type;
    const char* name;
    unsigned parent;
    int kind;
  };
  // Each class's own id names it, so that no two classes share a row.
  const Row rows[] = {
      {uti_IOErrorException::TypeId(), "uti_IOErrorException", 0x1F0001, 4},
      {uti_OdmException::TypeId(), "uti_OdmException", 0x1F0001, 4},
      {uti_XypException::TypeId(), "uti_XypException", 0x1F0001, 4},
      {uti_Coord3D::TypeId(), "uti_Coord3D", 1, 7},
      {uti_CoordCont3D::TypeId(), "uti_CoordCont3D", 1, 7},
      {utl_RegionMassProps::TypeId(), "utl_RegionMassProps", 1, 7},
      {uti_CmdFailedException::TypeId(), "uti_CmdFailedException", 0x1F0001, 4},
      {uti_InterruptedException::TypeId(), "uti_InterruptedException", 0x1F0001, 4},
      {uti_PreCheckFileException::TypeId(), "uti_PreCheckFileException", 0x1F0001, 4},
      {uti_NotOnPathException::TypeId(), "uti_NotOnPathException", 0x1F0002, 4},
      {uti_NotExecutableException::TypeId(), "uti_NotExecutableException", 0x1F0002, 4},
      {0x20001, nullptr, 1, 0},         // reserved
      {0x20022, "INVALID TYPE", 1, 0},  // past the 34 rows
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.type);
    EXPECT_STREQ(typ_ArchCompTable::GetName(row.type), row.name);
    EXPECT_EQ(typ_ArchCompTable::GetParent(row.type), row.parent);
    EXPECT_EQ(typ_ArchCompTable::GetKind(row.type), row.kind);
  }
  EXPECT_EQ(uti_IOErrorException::TypeId(), 0x20019u);
  EXPECT_EQ(uti_Coord3D::TypeId(), 0x2001Cu);
  EXPECT_EQ(utl_RegionMassProps::TypeId(), 0x2001Eu);
  EXPECT_TRUE(typ_ArchCompTable::IsParent(uti_CmdFailedException::TypeId(), 0x1F0001));
  EXPECT_FALSE(typ_ArchCompTable::IsParent(0x2001C, 2));  // a value class is no typ_any
}

TEST_F(UtiPackageTest, TheSixExceptionClassesAreDeclaredWithTheirPersistentParents) {
  const cls_ClassRegistrar& classes = cls_MetadataRegistrar::Instance().GetWorkingSet();
  const struct {
    unsigned type;
    const char* name;
    unsigned parent;
  } declared[] = {
      {uti_IOErrorException::TypeId(), "uti_IOErrorException", 0x1F0003},
      {uti_OdmException::TypeId(), "uti_OdmException", 0x1F0003},
      {uti_XypException::TypeId(), "uti_XypException", 0x1F0003},
      {uti_CmdFailedException::TypeId(), "uti_CmdFailedException", 0x1F0001},
      {uti_InterruptedException::TypeId(), "uti_InterruptedException", 0x1F0001},
      {uti_PreCheckFileException::TypeId(), "uti_PreCheckFileException", 0x1F0003},
  };
  for (const auto& entry : declared) {
    SCOPED_TRACE(entry.name);
    EXPECT_EQ(classes.GetClassID(entry.name), entry.type);
    const cls_ClassMetadata& metadata = classes.ConstGet(entry.type).GetRef();
    EXPECT_EQ(metadata.BaseClassId(), entry.parent);
    EXPECT_EQ(metadata.Version(), 800);
    EXPECT_TRUE(typ_ArchCompTable::IsParent(entry.type, 0x1F0001));
  }
}

TEST_F(UtiPackageTest, EveryExceptionReportsAndRoundTripsWithItsClass) {
  ExpectRoundTrip(uti_IOErrorException("open", ENOENT, "/x/y"),
                  "IOError: open failed for /x/y: No such file or directory");
  ExpectRoundTrip(uti_IOErrorException("fstat", EBADF),
                  "IOError: fstat failed: Bad file descriptor");
  ExpectRoundTrip(uti_OdmException(nex_Translate("no database")), "OdmError: no database");
  ExpectRoundTrip(uti_XypException(nex_Translate("bad reply")), "XypError: bad reply");
  ExpectRoundTrip(uti_CmdFailedException("/bin/sort", 2), "uti_CmdFailed: /bin/sort returned 2");
  ExpectRoundTrip(uti_InterruptedException(uti_InterruptedException::Keyboard), "uti_Keyboard");
  ExpectRoundTrip(uti_InterruptedException(uti_InterruptedException::Stop), "uti_Stop");
  ExpectRoundTrip(uti_InterruptedException(uti_InterruptedException::Signal), "uti_Signal");
  ExpectRoundTrip(uti_PreCheckFileException(uti_PreCheckFileException::IsDirectory, "/tmp"),
                  "PreCheckFile: /tmp: Is a directory");
}

TEST_F(UtiPackageTest, WritesGoCommandLevelFirstThenTheFieldsInOrder) {
  store.WriteField("e", uti_IOErrorException("open", 13, "f"));
  const std::vector<std::string> calls = store.Take();
  ASSERT_EQ(calls.size(), 8u);
  EXPECT_EQ(calls[1], "20019#1: MakeBaseWriteObj 1f0003#2");
  EXPECT_EQ(calls[2], "1f0003#2: MakeBaseWriteObj 1f0001#3");
  EXPECT_EQ(calls[5], "20019#1: Write(string) m_Function=open");
  EXPECT_EQ(calls[6], "20019#1: Write(int) m_Code=13");
  EXPECT_EQ(calls[7], "20019#1: Write(string) m_Subject=f");
}

}  // namespace
