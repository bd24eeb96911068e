#include "mrm_Schedule.h"

#include "internal/mrm_ScheduleI.h"

mrm_Schedule::mrm_Schedule() : m_Impl(new mrm_ScheduleI) {}

mrm_Schedule::~mrm_Schedule() {
  if (m_Owned) delete m_Impl;
}

void mrm_Schedule::BeginPhase(const mrm_Label& phase) {
  m_Impl->BeginPhase(phase);
}

void mrm_Schedule::EndPhase() {
  m_Impl->EndPhase();
}

void mrm_Schedule::AddLargeBlockPool(const mrm_Label& pool, const mrm_Capacity& capacity, int alt) {
  m_Impl->AddLargeBlockPool(pool, capacity, alt);
}

void mrm_Schedule::AddPool(const mrm_Label& pool, const mrm_SmallBlockCapacity& capacity, int alt) {
  m_Impl->AddPool(pool, capacity, alt);
}

void mrm_Schedule::NameMilestone(int milestone, const char* tag) {
  m_Impl->NameMilestone(milestone, tag);
}

void mrm_Schedule::DefMilestone(int milestone, const mrm_Label& pool, int alt) {
  m_Impl->DefMilestone(milestone, pool, alt);
}

void mrm_Schedule::DefHigherMilestone(int milestone, int source) {
  m_Impl->DefHigherMilestone(milestone, source);
}

void mrm_Schedule::Analyze() {
  m_Impl->Analyze();
}

const mrm_Capacity& mrm_Schedule::GetMilestoneCapacity(int milestone) const {
  return m_Impl->GetMilestoneCapacity(milestone);
}

void mrm_Schedule::Finalize(int milestone) {
  m_Impl->Finalize(milestone);
}

void mrm_Schedule::XFinalize(int milestone) {
  m_Impl->XFinalize(milestone);
}

void mrm_Schedule::Print(aio_ostream& os) const {
  m_Impl->Print(os);
}

const char* mrm_Schedule::GetMilestoneName(int milestone) const {
  return m_Impl->GetMilestoneName(milestone);
}

void mrm_Schedule::SetPrintUnits(double unit) {
  m_Impl->SetPrintUnits(unit);
}

double mrm_Schedule::InPrintUnits(double value) const {
  return m_Impl->InPrintUnits(value);
}
