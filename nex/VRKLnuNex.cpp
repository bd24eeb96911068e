#include "VRKLnuNex.h"

#include "VRKBasCountedPair.h"
#include "VRKBasExceptionModel.h"
#include "cls_MetadataRegistrar.h"
#include "internal/nex_Setup.h"
#include "nex_AssertException.h"
#include "nex_BadCastException.h"
#include "nex_CommandException.h"
#include "nex_ExceptionFactory.h"
#include "nex_ExitException.h"
#include "nex_InvalidObjException.h"
#include "nex_OutOfMemoryException.h"
#include "nex_SystemErrorException.h"
#include "nex_TextException.h"

namespace {

int useCount = 0;
VRKBasInstalledFactory<VRKBasExceptionModel, nex_ExceptionFactory> factory;

constexpr cls_MetadataFunction kMetadata[] = {
    nex_AssertException::InitializeMetadata,     nex_BadCastException::InitializeMetadata,
    nex_CommandException::InitializeMetadata,    nex_Exception::InitializeMetadata,
    nex_ExitException::InitializeMetadata,       nex_OutOfMemoryException::InitializeMetadata,
    nex_InvalidObjException::InitializeMetadata, nex_SystemErrorException::InitializeMetadata,
    nex_TextException::InitializeMetadata,
};

}  // namespace

void VRKLnuNex_initialize(int& tally) {
  if (!VRKBasCountedEnter(useCount, tally, "nex")) return;
  factory.Install();
  nex_TypeTableSetUp();
  for (cls_MetadataFunction declare : kMetadata) {
    cls_MetadataRegistrar::Instance().initClassMetadata(declare, cls_MetadataRegistrar::kWorking);
  }
  nex_OutOfMemorySetUp();
}

void VRKLnuNex_finalize(int& tally) {
  if (!VRKBasCountedLeave(useCount, tally, "nex")) return;
  nex_OutOfMemoryTearDown();
  factory.Remove();
  nex_TypeTableTearDown();
}

void nex_formalize() {}

bool nex_assertFormalize() {
  return false;
}
