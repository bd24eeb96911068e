#include "VRKLnuUti.h"

#include <iterator>

#include "VRKBasCountedPair.h"
#include "cls_MetadataRegistrar.h"
#include "typ_ArchCompTable.h"
#include "uti_CmdFailedException.h"
#include "uti_IOErrorException.h"
#include "uti_InterruptedException.h"
#include "uti_OdmException.h"
#include "uti_PreCheckFile.h"
#include "uti_XypException.h"

namespace {

int useCount = 0;

constexpr unsigned short kFacility = 2;
constexpr int kException = 4;
constexpr int kValueClass = 7;
constexpr unsigned kNoParent = 1;
constexpr unsigned kNexException = 0x1F0001;
constexpr unsigned kNexTextException = 0x1F0002;
constexpr typ_Entry kReserved = {0, kNoParent, nullptr};

// The package's classes by index. The command errors name nex_Exception as their parent, as
// the row of uti_IOErrorException always has; the rows not named are reserved.
const typ_Entry kTypes[34] = {
    kReserved,
    kReserved,
    kReserved,
    kReserved,
    kReserved,
    kReserved,
    kReserved,
    kReserved,
    kReserved,
    kReserved,
    kReserved,
    kReserved,
    kReserved,
    kReserved,
    kReserved,
    kReserved,
    kReserved,
    kReserved,
    kReserved,
    kReserved,
    {kException, kNexTextException, "uti_NotOnPathException"},      // 20
    {kException, kNexTextException, "uti_NotExecutableException"},  // 21
    kReserved,
    kReserved,
    kReserved,
    {kException, kNexException, "uti_IOErrorException"},       // 25
    {kException, kNexException, "uti_OdmException"},           // 26
    {kException, kNexException, "uti_XypException"},           // 27
    {kValueClass, kNoParent, "uti_Coord3D"},                   // 28
    {kValueClass, kNoParent, "uti_CoordCont3D"},               // 29
    {kException, kNexException, "uti_CmdFailedException"},     // 30
    {kException, kNexException, "uti_InterruptedException"},   // 31
    {kException, kNexException, "uti_PreCheckFileException"},  // 32
    kReserved,
};

constexpr cls_MetadataFunction kExceptionMetadata[] = {
    uti_IOErrorException::InitializeMetadata,     uti_OdmException::InitializeMetadata,
    uti_XypException::InitializeMetadata,         uti_CmdFailedException::InitializeMetadata,
    uti_InterruptedException::InitializeMetadata, uti_PreCheckFileException::InitializeMetadata,
};

}  // namespace

void VRKLnuUti_initialize(int& tally) {
  if (!VRKBasCountedEnter(useCount, tally, "uti")) return;
  typ_ArchCompTable::InsertEntry(kFacility, typ_ArchCompEntry(kTypes, std::size(kTypes)));
  cls_MetadataRegistrar& registrar = cls_MetadataRegistrar::Instance();
  for (cls_MetadataFunction declare : kExceptionMetadata) {
    registrar.initClassMetadata(declare, cls_MetadataRegistrar::kWorking);
  }
}

void VRKLnuUti_finalize(int& tally) {
  VRKBasCountedLeave(useCount, tally, "uti");
}

void uti_formalize() {}
