#include "omi_Timer.h"

#include <time.h>

namespace {

double Seconds(clockid_t clock) {
  timespec now;
  clock_gettime(clock, &now);
  return static_cast<double>(now.tv_sec) + now.tv_nsec * 1e-9;
}

}  // namespace

void omi_Timer::Start() {
  if (m_Running) return;
  m_StartedAt = Seconds(CLOCK_MONOTONIC);
  m_Running = true;
}

void omi_Timer::Stop() {
  if (!m_Running) return;
  m_Elapsed += Seconds(CLOCK_MONOTONIC) - m_StartedAt;
  m_Running = false;
}

void omi_Timer::Reset() {
  m_Elapsed = 0.0;
  m_Running = false;
}

double omi_Timer::GetElapsedTime() const {
  return m_Running ? m_Elapsed + Seconds(CLOCK_MONOTONIC) - m_StartedAt : m_Elapsed;
}

double omi_gettimestamp() {
  return Seconds(CLOCK_REALTIME);
}
