// How the exception classes declare themselves to a class registrar: an adapter under the
// class's name, with version 800 unless given, and the parent's type id.
#ifndef NEX_METADATA_H
#define NEX_METADATA_H

#include "cls_ClassMetadata.h"
#include "cls_ClassRegistrar.h"

constexpr int kNexVersion = 800;

template <class T>
cls_ClassMetadata& nex_DeclareAbstract(cls_ClassRegistrar& registrar, const char* name,
                                       unsigned parentId, int version = kNexVersion) {
  return registrar.AddClassMD(new cls_AbsTypeAdapter<T>(name, T::TypeId(), version, parentId));
}

template <class T>
cls_ClassMetadata& nex_DeclareConcrete(cls_ClassRegistrar& registrar, const char* name,
                                       unsigned parentId, int version = kNexVersion) {
  return registrar.AddClassMD(new cls_TypeAdapter<T>(name, T::TypeId(), version, parentId));
}

#endif  // NEX_METADATA_H
