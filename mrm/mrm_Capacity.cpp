#include "mrm_Capacity.h"

mrm_Capacity mrm_SmallBlockCapacity::LargeBlockCapacity() const {
  mrm_Capacity large;
  if (unlimited) return large.SetUnlimited();
  double allowance = overheadFactor * outToClientHi;
  if (overheadMin > allowance) allowance = overheadMin;
  // No overhead on the low estimate; the high one counts the client's bytes twice (see header).
  return large.SetLoHi(mrm_RoundToBlock(mrm_TruncateToInt(outToClientLo)),
                       mrm_RoundToBlock(mrm_TruncateToInt(outToClientHi + allowance)));
}

bool mrm_Consumption::IsZero() const {
  return numBlocks == 0 && numPinned == 0 && pinnedBytes == 0 && unpinnedBytes1 == 0 &&
         unpinnedBytes0 == 0;
}

bool mrm_Consumption::operator==(const mrm_Consumption& other) const {
  return numBlocks == other.numBlocks && numPinned == other.numPinned &&
         pinnedBytes == other.pinnedBytes && unpinnedBytes1 == other.unpinnedBytes1 &&
         unpinnedBytes0 == other.unpinnedBytes0;
}

mrm_Consumption mrm_Consumption::operator+(const mrm_Consumption& other) const {
  mrm_Consumption sum;
  sum.numBlocks = numBlocks + other.numBlocks;
  sum.numPinned = numPinned + other.numPinned;
  sum.pinnedBytes = pinnedBytes + other.pinnedBytes;
  sum.unpinnedBytes1 = unpinnedBytes1 + other.unpinnedBytes1;
  sum.unpinnedBytes0 = unpinnedBytes0 + other.unpinnedBytes0;
  return sum;
}
