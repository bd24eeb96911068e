// A stopwatch on the monotonic clock, and the wall-clock time stamp.
//
//   omi_Timer timer;           // stopped, at 0
//   timer.Start(); work(); timer.Stop();
//   double seconds = timer.GetElapsedTime();
//
// Start and Stop may alternate any number of times: the elapsed time adds up the running
// spans, including the current one while the timer runs. Start on a running timer and Stop
// on a stopped one change nothing.
#ifndef OMI_TIMER_H
#define OMI_TIMER_H

#include "VRKBasExport.h"

class VRKLNU_EXPORT omi_Timer {
 public:
  omi_Timer() = default;

  void Start();
  void Stop();
  // Stops the timer and sets the elapsed time to 0.
  void Reset();
  // Seconds.
  double GetElapsedTime() const;
  bool IsRunning() const { return m_Running; }

 private:
  double m_Elapsed = 0.0;
  double m_StartedAt = 0.0;
  bool m_Running = false;
};

// Seconds since the Unix epoch, with sub-microsecond resolution.
VRKLNU_EXPORT double omi_gettimestamp();

#endif  // OMI_TIMER_H
