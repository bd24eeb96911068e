#include "cls_MetadataRegistrar.h"

template class omi_SingletonBase<cls_MetadataRegistrar>;

namespace {

void RunAll(const cow_List<cls_MetadataFunction>& functions, cls_ClassRegistrar& target) {
  for (int i = 0; i < functions.Count(); ++i)
    functions[i](target);
}

}  // namespace

cls_MetadataRegistrar::cls_MetadataRegistrar() = default;

cls_MetadataRegistrar::~cls_MetadataRegistrar() = default;

void cls_MetadataRegistrar::initClassMetadata(cls_MetadataFunction function, unsigned mask) {
  if (mask & kStored) {
    m_StoredFunctions.Append(function);
    function(m_Stored);
  }
  if (mask & kWorking) function(m_Working);
  if (mask & kAuxiliary) {
    m_AuxiliaryFunctions.Append(function);
    function(m_Auxiliary);
  }
}

void cls_MetadataRegistrar::initMetadata(cls_ClassRegistrar* target, unsigned mask) const {
  if (mask & kStored) RunAll(m_StoredFunctions, *target);
  if (mask & kAuxiliary) RunAll(m_AuxiliaryFunctions, *target);
}
