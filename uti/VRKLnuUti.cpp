#include "VRKLnuUti.h"

#include "VRKBasCountedPair.h"
#include "cls_MetadataRegistrar.h"
#include "uti_Coord3D.h"
#include "uti_CoordCont3D.h"

namespace {
int useCount = 0;
}

void VRKLnuUti_initialize(int& tally) {
  if (!VRKBasCountedEnter(useCount, tally, "uti")) return;
  cls_MetadataRegistrar& registrar = cls_MetadataRegistrar::Instance();
  registrar.initClassMetadata(uti_Coord3D::InitializeMetadata,
                              cls_MetadataRegistrar::kWorking | cls_MetadataRegistrar::kAuxiliary);
  registrar.initClassMetadata(uti_CoordCont3D::InitializeMetadata,
                              cls_MetadataRegistrar::kStored | cls_MetadataRegistrar::kWorking |
                                  cls_MetadataRegistrar::kAuxiliary);
}

void VRKLnuUti_finalize(int& tally) {
  VRKBasCountedLeave(useCount, tally, "uti");
}

void uti_formalize() {}
