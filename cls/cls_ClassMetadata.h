// What one version of a persistent class declares about itself: name, class identifier,
// base class, version, the constructor from a read visitor, and its named fields. The
// registrar (cls_ClassRegistrar) keeps one per (class, version) through counted handles.
//
// A class normally declares itself through an adapter, which also knows how to write,
// delete and (for a concrete class) rebuild its objects:
//
//   registrar.AddClassMD(new cls_TypeAdapter<Shape>("Shape", Shape::TypeId(), 800, 1))
//       .AddAttribute(cls_FieldHandle(0, "m_Sides"), cls_AttrInt, 1, cls_CollNone);
//   Shape* s = static_cast<Shape*>(registrar.ConstGet(Shape::TypeId()).GetRef().Ctor(visitor));
//
// A class that names itself as its own base is a fault of its declaration: the constructor
// prints why and calls abort.
#ifndef CLS_CLASSMETADATA_H
#define CLS_CLASSMETADATA_H

#include "VRKBasExport.h"
#include "cls_AttributeMetadata.h"
#include "cls_FieldHandle.h"
#include "cow_COW.h"
#include "cow_CountedHld.h"
#include "cow_String.h"
#include "mem_Alloc.h"
#include "omi_Btree.h"

class cls_ReadVisitor;
class cls_WriteVisitor;

// Builds an object of the class from a read visitor.
typedef void* (*cls_CtorFunction)(cls_ReadVisitor& visitor);
// Releases a cow_COW of the class, given as the library's generic shared value.
typedef void (*cls_CowDeleteFunction)(cow_COW<int, cow_Direct<int>>* cow);

class VRKLNU_EXPORT cls_ClassMetadata : public mem_AllocationOperators {
 public:
  static constexpr int kDefaultExtentQuantum = 4;

  cls_ClassMetadata(const cow_String& name, unsigned classId, int version, cls_CtorFunction ctor,
                    unsigned baseClassId);
  cls_ClassMetadata(const cls_ClassMetadata&) = delete;
  cls_ClassMetadata& operator=(const cls_ClassMetadata&) = delete;
  virtual ~cls_ClassMetadata();

  // Writes an object of the class; nothing here, adapters do it.
  virtual void DBWrite(const void* object, const cls_WriteVisitor& visitor) const;
  // Destroys an object of the class; nothing here, adapters do it.
  virtual void Delete(void* object) const;
  // Releases a shared value of the class through the cow-delete function: 1 when there is
  // one, 0 otherwise.
  virtual int DeleteCow(cow_COW<int, cow_Direct<int>>* cow) const;
  // A new object from the visitor through the constructor function; null when there is none.
  virtual void* Ctor(const cls_ReadVisitor& visitor) const;

  // Declarations, each returning the metadata so that they chain. A field name declared
  // again keeps its first declaration.
  cls_ClassMetadata& AddDtor(cls_CowDeleteFunction cowDelete);
  cls_ClassMetadata& AddTableExtentQuantum(int quantum);
  cls_ClassMetadata& AddAttribute(const cls_FieldHandle& field, cls_AttributeType type,
                                  unsigned typeId, cls_CollectionType collection);

  // The largest field identifier among the attributes, -1 when there is none.
  int MaxFieldID() const;

  const cow_String& Name() const { return m_Name; }
  unsigned ClassId() const { return m_ClassId; }
  unsigned BaseClassId() const { return m_BaseClassId; }
  int Version() const { return m_Version; }
  int TableExtentQuantum() const { return m_ExtentQuantum; }
  bool HasCowDelete() const { return m_CowDelete != nullptr; }
  // The fields by name.
  const omi_Btree<cow_String, cls_AttributeMetadata>& Attributes() const { return m_Attributes; }

 private:
  cow_String m_Name;
  unsigned m_ClassId;
  unsigned m_BaseClassId;
  cls_CtorFunction m_Ctor;
  cls_CowDeleteFunction m_CowDelete = nullptr;
  int m_ExtentQuantum = kDefaultExtentQuantum;
  int m_Version;
  omi_Btree<cow_String, cls_AttributeMetadata> m_Attributes;
};

// The metadata of a class T whose objects can be written and deleted but not rebuilt: an
// abstract class.
template <class T>
class cls_AbsTypeAdapter : public cls_ClassMetadata {
 public:
  cls_AbsTypeAdapter(const cow_String& name, unsigned classId, int version, unsigned baseClassId)
      : cls_ClassMetadata(name, classId, version, nullptr, baseClassId) {}
  ~cls_AbsTypeAdapter() override = default;

  void DBWrite(const void* object, const cls_WriteVisitor& visitor) const override {
    static_cast<const T*>(object)->DBWrite(visitor);
  }
  void Delete(void* object) const override { delete static_cast<T*>(object); }
};

// The metadata of a concrete class T, which Ctor rebuilds through T's read constructor. The
// result is a T*.
template <class T>
class cls_TypeAdapter : public cls_AbsTypeAdapter<T> {
 public:
  using cls_AbsTypeAdapter<T>::cls_AbsTypeAdapter;

  void* Ctor(const cls_ReadVisitor& visitor) const override { return new T(visitor); }
};

// A counted handle to heap metadata; the registrar owns metadata only through these. The
// default handle is empty: what a failed look-up gives.
class cls_ClassMetadataHld : public cow_CountedHld<cls_ClassMetadata> {
 public:
  cls_ClassMetadataHld() : cow_CountedHld<cls_ClassMetadata>(nullptr) {}
  explicit cls_ClassMetadataHld(cls_ClassMetadata* metadata)
      : cow_CountedHld<cls_ClassMetadata>(metadata) {}

  bool IsEmpty() const { return GetPtr() == nullptr; }
  bool operator==(const cls_ClassMetadataHld& other) const { return GetPtr() == other.GetPtr(); }
};

#endif  // CLS_CLASSMETADATA_H
