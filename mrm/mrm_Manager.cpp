#include "mrm_Manager.h"

#include "internal/mrm_ManagerI.h"

template class omi_SingletonBase<mrm_Manager>;

// The print table is ready before the implementation is built, since building it registers
// and prints labels through this object.
mrm_Manager::mrm_Manager() {
  m_Impl = new mrm_ManagerI;
}

mrm_Manager::~mrm_Manager() {
  delete m_Impl;
}

void mrm_Manager::BeginPhase(const mrm_Label& phase) {
  m_Impl->BeginPhase(phase);
}

void mrm_Manager::SpotBeginPhase(const mrm_Label& phase) {
  m_Impl->SpotBeginPhase(phase);
}

void mrm_Manager::EndPhase(const mrm_Label& phase) {
  m_Impl->EndPhase(phase);
}

void mrm_Manager::Adopt(mrm_Schedule& schedule) {
  m_Impl->Adopt(schedule.m_Impl);
  schedule.m_Owned = false;
}

const mrm_Consumption mrm_Manager::ConstGetJobConsumption() const {
  return m_Impl->JobConsumption();
}

void mrm_Manager::RegisterLabelPrinter(const short& key, mrm_LabelPrinter const& printer) {
  if (key >= 0 && key < kPrinterSlots) m_Printers[key] = printer;  // guard: outside the table
}

mrm_LabelPrinter mrm_Manager::GetPrinterPtr(const short& key) const {
  return key >= 0 && key < kPrinterSlots ? m_Printers[key] : nullptr;  // guard as above
}

void mrm_Manager::TestReboot() {
  delete m_Impl;
  m_Impl = nullptr;
  m_Impl = new mrm_ManagerI;
}

void mrm_Manager::TestResetSchedule() {
  m_Impl->ResetSchedule();
}
