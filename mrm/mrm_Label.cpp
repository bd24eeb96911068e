#include "mrm_Label.h"

#include "aio_ostream.h"
#include "mrm_Manager.h"

namespace {

// Labels built while no printer was loaded for their kind; once non-zero, no more lookups.
int labelsWithoutPrinter = 0;

}  // namespace

mrm_Label::mrm_Label(const short& key) : m_TypeKey(key) {
  if (labelsWithoutPrinter == 0 && mrm_Manager::Instance().GetPrinterPtr(key) == nullptr)
    ++labelsWithoutPrinter;
}

void mrm_Label::ReadFrom(const int* source) {
  const uint32_t first = static_cast<uint32_t>(source[0]);
  m_TypeKey = static_cast<short>(first & 0xffff);
  m_UShortField = static_cast<short>(first >> 16);
  for (int i = 0; i < 3; ++i)
    m_UField[i] = source[i + 1];
}

void mrm_Label::WriteTo(int* destination) const {
  for (int i = 0; i < 4; ++i)
    destination[i] = static_cast<int>(Word(i));
}

void mrm_Label::GenericPrint(aio_ostream& os) const {
  os << static_cast<int>(m_TypeKey) << "/" << static_cast<int>(m_UShortField) << "/" << m_UField[0]
     << "/" << m_UField[1] << "/" << m_UField[2];
}

aio_ostream& operator<<(aio_ostream& os, const mrm_Label& label) {
  const mrm_LabelPrinter printer = mrm_Manager::Instance().GetPrinterPtr(label.ConstGetTypeKey());
  if (printer != nullptr) {
    printer(os, label);
    return os;
  }
  os << "[?noLabelPrinterLoaded:";
  label.GenericPrint(os);
  return os << "]";
}

void mrm_VoidLabel::Print(aio_ostream& os, const mrm_Label& label) {
  os << "VOID" << label.ConstGetUField(0);
}

void mrm_VoidLabel::RegisterPrinter() {
  mrm_Manager::Instance().RegisterLabelPrinter(TypeKey(), Print);
}

void mrm_JobPhaseLabel::Print(aio_ostream& os, const mrm_Label&) {
  os << "mrm_JobPhase";
}

void mrm_JobPhaseLabel::RegisterPrinter() {
  mrm_Manager::Instance().RegisterLabelPrinter(TypeKey(), Print);
}

mrm_TestLabel::mrm_TestLabel(const int& first, const int& second, const int& third)
    : mrm_Label(TypeKey()) {
  UField(0) = first;
  UField(1) = second;
  UField(2) = third;
}

void mrm_TestLabel::Print(aio_ostream& os, const mrm_Label& label) {
  os << "mrm_Test/" << label.ConstGetUField(0) << "/" << label.ConstGetUField(1) << "/"
     << label.ConstGetUField(2);
}

void mrm_TestLabel::RegisterPrinter() {
  mrm_Manager::Instance().RegisterLabelPrinter(TypeKey(), Print);
}

void mrm_StepPhaseLabel::Print(aio_ostream& os, const mrm_Label& label) {
  os << "mrm_Step/" << label.ConstGetUField(0);
}

void mrm_StepPhaseLabel::RegisterPrinter() {
  mrm_Manager::Instance().RegisterLabelPrinter(TypeKey(), Print);
}
