#include "VRKLnuCls.h"

#include "VRKBasCountedPair.h"
#include "cls_ExtQuant.h"
#include "cls_MetadataRegistrar.h"
#include "cls_Static.h"
#include "cls_UidCatalog.h"
#include "cls_xpString.h"
#include "typ_ArchCompTable.h"

namespace {

int useCount = 0;

// Persistent value classes: kind 7 with no parent.
constexpr int kValueClass = 7;
constexpr unsigned kNoParent = 1;

// Facility 35: the shapes under which stores keep collections and blobs.
constexpr unsigned short kCollectionFacility = 35;
const typ_Entry kCollectionTypes[] = {
    {kValueClass, kNoParent, nullptr},
    {kValueClass, kNoParent, "cls_InternalList"},
    {kValueClass, kNoParent, "cls_InternalMap"},
    {kValueClass, kNoParent, "cls_InternalCow"},
    {kValueClass, kNoParent, "cls_InternalDblCol"},
    {kValueClass, kNoParent, "cls_Blob"},
    {kValueClass, kNoParent, "cls_Ado"},
    {kValueClass, kNoParent, "cls_StdStm"},
};

// Facility 26: the library's value types stored as objects.
constexpr unsigned short kValueFacility = 26;
const typ_Entry kValueTypes[] = {
    {kValueClass, kNoParent, nullptr},          {kValueClass, kNoParent, "cow_String"},
    {kValueClass, kNoParent, "cow_ListFloat"},  {kValueClass, kNoParent, "cow_ListUint"},
    {kValueClass, kNoParent, "cow_ListInt"},    {kValueClass, kNoParent, "cow_ListString"},
    {kValueClass, kNoParent, "cow_ListDouble"}, {kValueClass, kNoParent, "atr_String"},
};

template <size_t N>
void InsertTable(unsigned short facility, const typ_Entry (&rows)[N]) {
  typ_ArchCompTable::InsertEntry(facility, typ_ArchCompEntry(rows, N));
}

}  // namespace

void VRKLnuCls_initialize(int& tally) {
  if (!VRKBasCountedEnter(useCount, tally, "cls")) return;
  InsertTable(kCollectionFacility, kCollectionTypes);
  cls_MetadataRegistrar& registrar = cls_MetadataRegistrar::Instance();
  registrar.initClassMetadata(cls_xpTrString::InitializeMetadata, cls_MetadataRegistrar::kWorking);
  registrar.initClassMetadata(cls_xpString::InitializeMetadata, cls_MetadataRegistrar::kWorking);
  InsertTable(kValueFacility, kValueTypes);
}

void VRKLnuCls_finalize(int& tally) {
  if (!VRKBasCountedLeave(useCount, tally, "cls")) return;
  cls_Static::Finalize();
  cls_UidCatalog::Finalize();
  cls_ExtQuant::Finalize();
  cls_MetadataRegistrar::Finalize();
}
