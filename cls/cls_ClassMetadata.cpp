#include "cls_ClassMetadata.h"

#include <cstdio>
#include <cstdlib>

cls_ClassMetadata::cls_ClassMetadata(const cow_String& name, unsigned classId, int version,
                                     cls_CtorFunction ctor, unsigned baseClassId)
    : m_Name(name),
      m_ClassId(classId),
      m_BaseClassId(baseClassId),
      m_Ctor(ctor),
      m_Version(version) {
  if (classId != baseClassId) return;
  // A class that is its own base would make every walk up the chain endless.
  std::fprintf(stderr, "ODB metadat for class: %s\n", name.c_str());
  std::fprintf(stderr, "  Is incorrectly defined.  The base class ID is\n");
  std::fprintf(stderr, "  the same as the class ID.  Please correct this.\n");
  std::abort();
}

cls_ClassMetadata::~cls_ClassMetadata() = default;

void cls_ClassMetadata::DBWrite(const void*, const cls_WriteVisitor&) const {}

void cls_ClassMetadata::Delete(void*) const {}

int cls_ClassMetadata::DeleteCow(cow_COW<int, cow_Direct<int>>* cow) const {
  if (m_CowDelete == nullptr) return 0;
  m_CowDelete(cow);
  return 1;
}

// The slot takes the visitor as const and the constructor function without const; both
// shapes are fixed for clients, so the function gets the caller's visitor as it is.
void* cls_ClassMetadata::Ctor(const cls_ReadVisitor& visitor) const {
  return m_Ctor ? m_Ctor(const_cast<cls_ReadVisitor&>(visitor)) : nullptr;
}

cls_ClassMetadata& cls_ClassMetadata::AddDtor(cls_CowDeleteFunction cowDelete) {
  m_CowDelete = cowDelete;
  return *this;
}

cls_ClassMetadata& cls_ClassMetadata::AddTableExtentQuantum(int quantum) {
  m_ExtentQuantum = quantum;
  return *this;
}

cls_ClassMetadata& cls_ClassMetadata::AddAttribute(const cls_FieldHandle& field,
                                                   cls_AttributeType type, unsigned typeId,
                                                   cls_CollectionType collection) {
  m_Attributes.Insert(field.Name(),
                      cls_AttributeMetadata(field.Id(), field.Name(), type, typeId, collection));
  return *this;
}

int cls_ClassMetadata::MaxFieldID() const {
  int largest = -1;
  for (omi_BtreeIterator<cow_String, cls_AttributeMetadata> it(m_Attributes); !it.IsDone();
       it.Next()) {
    if (it.CurrentValue().FieldId() > largest) largest = it.CurrentValue().FieldId();
  }
  return largest;
}
