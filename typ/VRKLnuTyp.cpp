#include "VRKLnuTyp.h"

#include "VRKBasCountedPair.h"
#include "internal/typ_Setup.h"
#include "mem_Alloc.h"

namespace {
int useCount = 0;
// Facilities of the architecture compatibility table.
constexpr unsigned kFacilities = 1024;
}  // namespace

void VRKLnuTyp_initialize(int& tally) {
  if (!VRKBasCountedEnter(useCount, tally, "typ")) return;
  typ_ArchCompTableSetUp(kFacilities);
  typ_DebugFlagsSetUp();
  VRKBasMem_formalize();
}

void VRKLnuTyp_finalize(int& tally) {
  if (!VRKBasCountedLeave(useCount, tally, "typ")) return;
  typ_ArchCompTableTearDown();
}
