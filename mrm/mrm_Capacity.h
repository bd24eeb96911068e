// The quantities of the memory resource manager: a capacity is what a pool is planned to hold,
// a consumption what it holds now. Large-block pools count in blocks of 64 KiB; a small-block
// pool hands its client small pieces and has an overhead on top of what it hands out.
//
//   mrm_SmallBlockCapacity plan;
//   plan.SetOutToClientLoHi(1e5, 4e5).SetOverheadFactor(0.25);   // stored as 1.25
//   mrm_Capacity backing = plan.LargeBlockCapacity();            // what the plan reserves
//
// All amounts are doubles holding bytes; block sizes are ints, so a conversion of 2 GiB or more
// gives no meaningful figure. These are plain values: copy them freely, one thread at a time.
#ifndef MRM_CAPACITY_H
#define MRM_CAPACITY_H

#include "VRKBasExport.h"

// The number rounded up to whole blocks of 64 KiB: 0 stays 0, 1 gives 65536.
inline int mrm_RoundToBlock(int n) {
  return static_cast<int>((static_cast<unsigned>(n) + 65535u) & ~65535u);
}

// The amount cut to a 32-bit int, fraction dropped. An amount outside the int range gives
// INT_MIN, the processor's own answer, rather than undefined behaviour.
inline int mrm_TruncateToInt(double amount) {
  return amount > -2147483649.0 && amount < 2147483648.0 ? static_cast<int>(amount)
                                                         : -2147483647 - 1;
}

// The budget of a large-block pool. Only `hi` enters the analysis; `lo` and `unlimited` are
// carried and printed.
class VRKLNU_EXPORT mrm_Capacity {
 public:
  constexpr mrm_Capacity() = default;

  mrm_Capacity& SetUnlimited() {
    unlimited = true;
    return *this;
  }
  // Sets both estimates, with no check of their order; `unlimited` stays as it is.
  mrm_Capacity& SetLoHi(const double& low, const double& high) {
    lo = low;
    hi = high;
    return *this;
  }
  bool operator==(const mrm_Capacity& other) const {
    return unlimited == other.unlimited && lo == other.lo && hi == other.hi;
  }
  bool operator!=(const mrm_Capacity& other) const { return !(*this == other); }

  bool unlimited = false;
  double lo = 0;
  double hi = 0;
};

// The budget of a small-block pool: the bytes handed to the client, and the overhead on top.
class VRKLNU_EXPORT mrm_SmallBlockCapacity {
 public:
  mrm_SmallBlockCapacity& SetUnlimited() {
    unlimited = true;
    return *this;
  }
  mrm_SmallBlockCapacity& SetOutToClientLoHi(const double& low, const double& high) {
    outToClientLo = low;
    outToClientHi = high;
    return *this;
  }
  // The estimates `middle` divided and multiplied by 1 + `spread`.
  mrm_SmallBlockCapacity& SetOutToClientSpread(const double& middle, const double& spread) {
    return SetOutToClientLoHi(middle / (spread + 1.0), middle * (spread + 1.0));
  }
  // Takes the overhead as a fraction and stores 1 + `fraction`; reports subtract the 1 again.
  mrm_SmallBlockCapacity& SetOverheadFactor(const double& fraction) {
    overheadFactor = fraction + 1.0;
    return *this;
  }
  mrm_SmallBlockCapacity& SetOverheadMin(const double& minimum) {
    overheadMin = minimum;
    return *this;
  }

  // The large-block capacity that backs this pool, in whole blocks. The high estimate adds
  // the client's bytes to an overhead allowance that already contains them (factor above 1),
  // so it is about 2.15 times `outToClientHi` by default. That double count is intended: plans
  // stand well above what mrm_Pool charges at run time. Keep it.
  mrm_Capacity LargeBlockCapacity() const;

  // Compares the four amounts, not `unlimited`.
  bool operator==(const mrm_SmallBlockCapacity& other) const {
    return outToClientLo == other.outToClientLo && outToClientHi == other.outToClientHi &&
           overheadFactor == other.overheadFactor && overheadMin == other.overheadMin;
  }
  bool operator!=(const mrm_SmallBlockCapacity& other) const { return !(*this == other); }

  bool unlimited = false;
  double outToClientLo = 0;
  double outToClientHi = 0;
  double overheadFactor = 1.15;
  double overheadMin = 0;
};

// What a large-block pool, or the whole job, holds now.
class VRKLNU_EXPORT mrm_Consumption {
 public:
  // All figures but the peak are 0.
  bool IsZero() const;
  // Compares all figures but the peak.
  bool operator==(const mrm_Consumption& other) const;
  bool operator!=(const mrm_Consumption& other) const { return !(*this == other); }
  // Adds all figures but the peak, which stays 0: the peak of a sum can't be known.
  mrm_Consumption operator+(const mrm_Consumption& other) const;

  int numBlocks = 0;           // declared and not yet released
  int numPinned = 0;           // pinned now
  double pinnedBytes = 0;      // bytes of the pinned blocks
  double peakPinnedBytes = 0;  // the largest pinnedBytes so far
  double unpinnedBytes1 = 0;   // unpinned with release type 1, not pinned again
  double unpinnedBytes0 = 0;   // unpinned with release type 0, not pinned again
};

// What a small-block pool has handed out and not yet taken back.
class VRKLNU_EXPORT mrm_SmallBlockConsumption {
 public:
  double outToClient = 0;
  int numAllocs = 0;
};

#endif  // MRM_CAPACITY_H
