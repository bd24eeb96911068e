#include "thr_EliCondVar.h"

#include "internal/thr_Event.h"

thr_EliCondVar::thr_EliCondVar() : m_Event(new thr_Event) {}

thr_EliCondVar::~thr_EliCondVar() {
  delete m_Event;
}

void thr_EliCondVar::WaitForSignal(int seconds) {
  m_Event->Wait(thr_Event::Milliseconds(seconds));
}

void thr_EliCondVar::Signal() {
  m_Event->Set();
}

void thr_EliCondVar::ResetSignal() {
  m_Event->Reset();
}
