// The name of a class in the record printer's registry; null when the registry doesn't know it.
#ifndef PDC_CLASSNAME_H
#define PDC_CLASSNAME_H

#include "cls_ClassRegistrar.h"

inline const char* pdc_ClassName(const cls_ClassRegistrar* registry, unsigned classId) {
  if (registry == nullptr || !registry->ClassIsPresent(classId)) return nullptr;
  return registry->ConstGet(classId).GetRef().Name().c_str();
}

#endif  // PDC_CLASSNAME_H
