#include "VRKLnuLifecycle.h"

#include <iterator>

#include "KT0GROUP.h"
#include "VRKBasCoreUtils.h"
#include "VRKBasCountedPair.h"
#include "VRKBasShared.h"
#include "VRKLnuBio.h"
#include "VRKLnuCls.h"
#include "VRKLnuMrm.h"
#include "VRKLnuNex.h"
#include "VRKLnuPdc.h"
#include "VRKLnuPnt.h"
#include "VRKLnuThr.h"
#include "VRKLnuTyp.h"
#include "VRKLnuUti.h"
#include "VRKLnuUtl.h"
#include "mem_Alloc.h"

namespace {

struct Layer {
  void (*initialize)(int&);
  void (*finalize)(int&);
};

// The start order; stop runs it backwards. Each package must come after what it uses:
// typ before every package that fills the type table, thr before cls (whose singletons
// need the global lock), cls before nex, mrm and uti (which register class metadata).
constexpr Layer kLayers[] = {
    {KT0GROUP_initialize, KT0GROUP_finalize},
    {VRKBasAlloc_initialize, VRKBasAlloc_finalize},
    {VRKBasCoreUtils_initialize, VRKBasCoreUtils_finalize},
    {VRKBasShared_initialize, VRKBasShared_finalize},
    {VRKLnuBio_initialize, VRKLnuBio_finalize},
    {VRKLnuTyp_initialize, VRKLnuTyp_finalize},
    {VRKLnuThr_initialize, VRKLnuThr_finalize},
    {VRKLnuPnt_initialize, VRKLnuPnt_finalize},
    {VRKLnuCls_initialize, VRKLnuCls_finalize},
    {VRKLnuNex_initialize, VRKLnuNex_finalize},
    {VRKLnuMrm_initialize, VRKLnuMrm_finalize},
    {VRKLnuPdc_initialize, VRKLnuPdc_finalize},
    {VRKLnuUtl_initialize, VRKLnuUtl_finalize},
    {VRKLnuUti_initialize, VRKLnuUti_finalize},
};

int useCount = 0;

}  // namespace

void VRKLnuBasicUtils_initialize(int& tally) {
  if (!VRKBasCountedEnter(useCount, tally, "VRKLnuBasicUtils")) return;
  for (const Layer& layer : kLayers)
    layer.initialize(tally);
}

void VRKLnuBasicUtils_finalize(int& tally) {
  if (!VRKBasCountedLeave(useCount, tally, "VRKLnuBasicUtils")) return;
  for (auto layer = std::rbegin(kLayers); layer != std::rend(kLayers); ++layer) {
    layer->finalize(tally);
  }
}
