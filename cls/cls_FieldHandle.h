// Names one field of a persistent object at a point of use: an identifier (-1 when the class
// gives none) and the field's name, which is the member's name as text. Handles are built on
// the stack where a field is written or read:
//
//   visitor.Write(cls_FieldHandle(1, "m_FromLine"), m_FromLine);
//
// A store keys fields on the name; the identifier is a hint it may keep.
#ifndef CLS_FIELDHANDLE_H
#define CLS_FIELDHANDLE_H

#include "cow_String.h"
#include "mem_Alloc.h"

class cls_FieldHandle : public mem_AllocationOperators {
 public:
  cls_FieldHandle() = default;
  cls_FieldHandle(int id, const cow_String& name) : m_Id(id), m_Name(name) {}

  int Id() const { return m_Id; }
  const cow_String& Name() const { return m_Name; }

 private:
  int m_Id = -1;
  cow_String m_Name;
};

#endif  // CLS_FIELDHANDLE_H
