// The counted start and stop protocol shared by every layer and package.
//
// Each layer owns a plain use counter. Its initializer moves the counter and does real work
// only on the 0 -> 1 step; its finalizer only on the 1 -> 0 step. The caller's tally moves
// by one at the moment a layer really starts or stops, before the layer's work:
//
//   static int useCount = 0;
//   void VRKLnuPdc_initialize(int& tally) {
//     if (!VRKBasCountedEnter(useCount, tally, "pdc")) return;
//     ...first-start work...
//   }
//
// A finalizer called with its counter at 0 leaves it at -1, and the next initializer then
// only brings it back to 0 without work. That is accepted behaviour, not guarded against.
// Start and stop are single-threaded by contract: the counters take no lock.
#ifndef VRKBASCOUNTEDPAIR_H
#define VRKBASCOUNTEDPAIR_H

#include "VRKBasExport.h"

// Called with a layer's name each time that layer really starts (up = true) or stops.
typedef void (*VRKBasLifecycleObserver)(const char* layer, bool up);

// Installs the observer (null removes it) and returns the previous one. Programs use it to
// show or check which layers start and stop, and in which order.
VRKLNU_EXPORT VRKBasLifecycleObserver VRKBasSetLifecycleObserver(VRKBasLifecycleObserver);

// Counted entry: returns true when the caller must do its first-start work.
VRKLNU_EXPORT bool VRKBasCountedEnter(int& useCount, int& tally, const char* layer);

// Counted exit: returns true when the caller must do its last-stop work.
VRKLNU_EXPORT bool VRKBasCountedLeave(int& useCount, int& tally, const char* layer);

#endif  // VRKBASCOUNTEDPAIR_H
