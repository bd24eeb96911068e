#include "VRKLnuUti.h"

#include "VRKBasCountedPair.h"
#include "cls_MetadataRegistrar.h"
#include "typ_ArchCompTable.h"
#include "uti_CmdFailedException.h"
#include "uti_Coord3D.h"
#include "uti_CoordCont3D.h"
#include "uti_IOErrorException.h"
#include "uti_InterruptedException.h"
#include "uti_OdmException.h"
#include "uti_PreCheckFile.h"
#include "uti_WebBrowser.h"
#include "uti_XypException.h"

namespace {

int useCount = 0;

constexpr unsigned short kFacility = 2;
constexpr int kException = 4;
constexpr int kValueClass = 7;
constexpr unsigned kNoParent = 1;
constexpr unsigned kNexException = 0x1F0001;
constexpr unsigned kNexTextException = 0x1F0002;
constexpr int kRows = 34;

struct TypeTable {
  typ_Entry rows[kRows];
};

// The package's classes by index (utl_RegionMassProps, a value of utl, is numbered here too);
// the rows not named are reserved. The command errors name
// nex_Exception as their parent, as the row of uti_IOErrorException always has.
constexpr TypeTable MakeTypes() {
  TypeTable table{};
  for (typ_Entry& row : table.rows)
    row = typ_Entry{0, kNoParent, nullptr};
  table.rows[20] = {kException, kNexTextException, "uti_NotOnPathException"};
  table.rows[21] = {kException, kNexTextException, "uti_NotExecutableException"};
  table.rows[25] = {kException, kNexException, "uti_IOErrorException"};
  table.rows[26] = {kException, kNexException, "uti_OdmException"};
  table.rows[27] = {kException, kNexException, "uti_XypException"};
  table.rows[28] = {kValueClass, kNoParent, "uti_Coord3D"};
  table.rows[29] = {kValueClass, kNoParent, "uti_CoordCont3D"};
  table.rows[30] = {kValueClass, kNoParent, "utl_RegionMassProps"};
  table.rows[31] = {kException, kNexException, "uti_CmdFailedException"};
  table.rows[32] = {kException, kNexException, "uti_InterruptedException"};
  table.rows[33] = {kException, kNexException, "uti_PreCheckFileException"};
  return table;
}

constexpr TypeTable kTypes = MakeTypes();

constexpr cls_MetadataFunction kExceptionMetadata[] = {
    uti_IOErrorException::InitializeMetadata,     uti_OdmException::InitializeMetadata,
    uti_XypException::InitializeMetadata,         uti_CmdFailedException::InitializeMetadata,
    uti_InterruptedException::InitializeMetadata, uti_PreCheckFileException::InitializeMetadata,
};

}  // namespace

void VRKLnuUti_initialize(int& tally) {
  if (!VRKBasCountedEnter(useCount, tally, "uti")) return;
  typ_ArchCompTable::InsertEntry(kFacility, typ_ArchCompEntry(kTypes.rows, kRows));
  cls_MetadataRegistrar& registrar = cls_MetadataRegistrar::Instance();
  for (cls_MetadataFunction declare : kExceptionMetadata) {
    registrar.initClassMetadata(declare, cls_MetadataRegistrar::kWorking);
  }
  registrar.initClassMetadata(uti_Coord3D::InitializeMetadata,
                              cls_MetadataRegistrar::kWorking | cls_MetadataRegistrar::kAuxiliary);
  registrar.initClassMetadata(uti_CoordCont3D::InitializeMetadata,
                              cls_MetadataRegistrar::kStored | cls_MetadataRegistrar::kWorking |
                                  cls_MetadataRegistrar::kAuxiliary);
}

void VRKLnuUti_finalize(int& tally) {
  if (!VRKBasCountedLeave(useCount, tally, "uti")) return;
  uti_WebBrowser::Finalize();
}

void uti_formalize() {}
