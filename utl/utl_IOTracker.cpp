#include "utl_IOTracker.h"

#include <cstdlib>

#include "internal/utl_IOTracker_Lvl0.h"

template class thr_GlobalSingletonBase<utl_IOTracker_Container>;

utl_IOTracker::~utl_IOTracker() = default;

utl_IOTracker_Container::utl_IOTracker_Container() {
  const char* track = std::getenv("LUN_IO_TRACK");
  if (track != nullptr && std::atoi(track) >= 1) m_Tracker = new utl_IOTracker_Lvl0;
}

utl_IOTracker_Container::~utl_IOTracker_Container() {
  delete m_Tracker;
}

void utl_IOTracker_Mark(const char* text) {
  if (utl_IOTracker* tracker = utl_IOTracker_Container::Instance().GetTracker())
    tracker->Mark(text);
}
