// One declared field of a persistent class, as the class registrar keeps it: the field's
// identifier and name, its kind, and for objects and collections their class and tag.
#ifndef CLS_ATTRIBUTEMETADATA_H
#define CLS_ATTRIBUTEMETADATA_H

#include "cls_CollectionType.h"
#include "cow_String.h"
#include "mem_Alloc.h"

// The kind of a field. The values are part of every stored schema and must not move.
enum cls_AttributeType : int {
  cls_AttrNone = 0,
  cls_AttrBool = 1,
  cls_AttrChar = 2,
  cls_AttrUChar = 3,
  cls_AttrShort = 4,
  cls_AttrInt = 5,
  cls_AttrUShort = 6,
  cls_AttrUInt = 7,
  cls_AttrLong = 8,
  cls_AttrFloat = 9,
  cls_AttrDouble = 10,
  cls_AttrString = 11,    // cow_String
  cls_AttrTrString = 12,  // atr_String
  cls_AttrCollection = 15,
  cls_AttrObject = 16,  // an embedded object
};

class cls_AttributeMetadata : public mem_AllocationOperators {
 public:
  cls_AttributeMetadata() = default;
  cls_AttributeMetadata(int fieldId, const cow_String& name, cls_AttributeType type,
                        unsigned typeId, cls_CollectionType collection)
      : m_FieldId(fieldId),
        m_Name(name),
        m_Type(type),
        m_TypeId(typeId),
        m_Collection(collection) {}

  int FieldId() const { return m_FieldId; }
  const cow_String& Name() const { return m_Name; }
  cls_AttributeType Type() const { return m_Type; }
  // The class of an object or collection field; 1 for other fields.
  unsigned TypeId() const { return m_TypeId; }
  // The tag of a collection field; 0 for other fields.
  cls_CollectionType Collection() const { return m_Collection; }

 private:
  int m_FieldId = -1;
  cow_String m_Name;
  cls_AttributeType m_Type = cls_AttrNone;
  unsigned m_TypeId = 1;
  cls_CollectionType m_Collection = cls_CollNone;
};

#endif  // CLS_ATTRIBUTEMETADATA_H
