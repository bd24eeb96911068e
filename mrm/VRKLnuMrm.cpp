#include "VRKLnuMrm.h"

#include "VRKBasCountedPair.h"
#include "aio_ofstream.h"
#include "mrm_Label.h"
#include "mrm_Manager.h"

namespace {
int useCount = 0;
}

void VRKLnuMrm_initialize(int& tally) {
  if (!VRKBasCountedEnter(useCount, tally, "mrm")) return;
  mrm_JobPhaseLabel::RegisterPrinter();
  mrm_TestLabel::RegisterPrinter();
  mrm_StepPhaseLabel::RegisterPrinter();
  mrm_VoidLabel::RegisterPrinter();
}

void VRKLnuMrm_finalize(int& tally) {
  if (!VRKBasCountedLeave(useCount, tally, "mrm")) return;
  mrm_Manager::Finalize();
}

int mrm_test(int, char**) {
  aio_cerr << "Hello world\n";
  aio_cerr << "The label is " << mrm_JobPhaseLabel() << "\n";
  return 0;
}
