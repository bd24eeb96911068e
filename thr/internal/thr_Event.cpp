#include "thr_Event.h"

void thr_Event::Set() {
  std::lock_guard<std::mutex> hold(m_Lock);
  m_Signalled = true;
  m_Changed.notify_all();
}

void thr_Event::Reset() {
  std::lock_guard<std::mutex> hold(m_Lock);
  m_Signalled = false;
}

void thr_Event::Pulse() {
  std::lock_guard<std::mutex> hold(m_Lock);
  ++m_Generation;
}
