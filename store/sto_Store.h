// Object graphs that outlive the process. A graph is an object with everything it refers to,
// written through its DBWrite into bytes of the library's external form (the same on every
// host) and rebuilt through its class's read constructor. A store keeps graphs under names,
// in memory or in a multisection file (one section a graph):
//
//   sto_Store store("results.vst");               // made at the first save if it is new
//   store.Save("mesh", mesh);                     // mesh.DBWrite, shared objects once
//   sto_Object back = store.Load("mesh");         // class and version choose the metadata
//   Mesh* copy = back.As<Mesh>();                 // null if it is no Mesh
//   uti_CoordCont3D points = store.LoadValue<uti_CoordCont3D>("points");
//
// sto_Encode and sto_Decode give and take the bytes themselves, for a pipe or a socket.
//
// Reading goes through a class registrar, the working set of cls_MetadataRegistrar unless one
// is given: an object's class and version must be known there (a newer record than the
// newest registered version is refused), fields a class no longer has are passed over, and
// fields a record lacks take the read constructor's defaults. The persistent arrays page on
// lists held by the store (see cls_ArrayPrim.h): an array written or loaded stays attached to
// its list, one block resident, while it lives.
//
// Failures raise nex_TextException naming what was wrong and at which byte: bytes that are
// no graph, cut short or corrupt, an unknown or abstract class, a newer version, a cycle of
// references, a field read as a type it doesn't hold, a name the store doesn't have. Reading
// never allocates more than the bytes can hold. The file's own failures pass through
// (utl_MultisectionFile.h). A store, its graphs and the objects loaded from them belong to one
// thread at a time.
#ifndef STO_STORE_H
#define STO_STORE_H

#include <optional>
#include <utility>

#include "VRKBasExport.h"
#include "VRKBasSharedContainers.h"
#include "cls_ClassRegistrar.h"
#include "cls_ReadVisitor.h"
#include "cls_WriteVisitor.h"
#include "cow_String.h"
#include "mem_Alloc.h"

class utl_MultisectionFile;

// Writes the object at `object` through `visitor` (its DBWrite).
typedef void (*sto_WriteFunction)(const void* object, const cls_WriteVisitor& visitor);
// Builds an object from `visitor` into `result`.
typedef void (*sto_BuildFunction)(const cls_ReadVisitor& visitor, void* result);

// The bytes of a graph. A null registrar is the working set.
VRKLNU_EXPORT cow_String sto_EncodeWith(sto_WriteFunction write, const void* object,
                                        const cls_ClassRegistrar* registrar);
VRKLNU_EXPORT void sto_DecodeWith(const cow_String& bytes, sto_BuildFunction build, void* result,
                                  const cls_ClassRegistrar* registrar);

template <class T>
cow_String sto_Encode(const T& object, const cls_ClassRegistrar* registrar = nullptr) {
  return sto_EncodeWith(
      [](const void* o, const cls_WriteVisitor& v) { static_cast<const T*>(o)->DBWrite(v); },
      &object, registrar);
}

// An object rebuilt through its class's metadata; owns it and deletes it the same way.
class VRKLNU_EXPORT sto_Object {
 public:
  sto_Object(void* object, const cls_ClassMetadata* metadata, const cls_ClassRegistrar* registrar)
      : m_Object(object), m_Metadata(metadata), m_Registrar(registrar) {}
  sto_Object(sto_Object&& other) noexcept
      : m_Object(std::exchange(other.m_Object, nullptr)),
        m_Metadata(other.m_Metadata),
        m_Registrar(other.m_Registrar) {}
  sto_Object(const sto_Object&) = delete;
  sto_Object& operator=(const sto_Object&) = delete;
  ~sto_Object();

  const cls_ClassMetadata& Metadata() const { return *m_Metadata; }
  unsigned ClassId() const;
  void* Get() const { return m_Object; }
  // The object as a T, null unless its class is T's or derives from it. The classes of a
  // registrar form single-inheritance chains, so a pointer to an object is a pointer to its
  // bases.
  template <class T>
  T* As() const {
    return m_Registrar->InheritanceCheck(ClassId(), T::TypeId()) ? static_cast<T*>(m_Object)
                                                                 : nullptr;
  }
  // Hands the object over: the caller deletes it (Metadata().Delete).
  void* Release() { return std::exchange(m_Object, nullptr); }

 private:
  void* m_Object;
  const cls_ClassMetadata* m_Metadata;
  const cls_ClassRegistrar* m_Registrar;
};

// The graph's object, rebuilt by the metadata of its stored class and version.
VRKLNU_EXPORT sto_Object sto_Decode(const cow_String& bytes,
                                    const cls_ClassRegistrar* registrar = nullptr);

// The graph's object as a T, through T's read constructor.
template <class T>
T sto_DecodeValue(const cow_String& bytes, const cls_ClassRegistrar* registrar = nullptr) {
  std::optional<T> result;
  sto_DecodeWith(
      bytes,
      [](const cls_ReadVisitor& v, void* r) { static_cast<std::optional<T>*>(r)->emplace(v); },
      &result, registrar);
  return std::move(*result);
}

// Pointers in a graph. A pointer field is written as the object it points to, once; later
// pointers to the same object are written as references to it, and read back as pointers to
// the one object built for it:
//
//   sto_WritePointer(visitor, cls_FieldHandle(3, "m_Next"), m_Next);     // in DBWrite
//   m_Next = sto_ReadPointer<Node>(visitor, cls_FieldHandle(3, "m_Next")); // in the read ctor
//
// The objects built belong to the caller, as the pointers of the graph did; the same pointer
// comes back for every reference. A null pointer is written as a field that holds nothing. A
// pointer that leads back to an object still being built raises (a cycle).
template <class T>
void sto_WritePointer(const cls_WriteVisitor& visitor, const cls_FieldHandle& field,
                      const T* object) {
  if (object == nullptr)
    visitor.Memento()->WriteNull(field);
  else
    object->DBWrite(cls_WriteVisitor(visitor, field, nullptr, object));
}
// The object of a memento (an element of a collection of objects, say), which it takes over:
// built by `build` at its first sight in the graph, the same object at every later one.
VRKLNU_EXPORT void* sto_ReadSharedWith(cls_MementoRead* memento,
                                       void* (*build)(const cls_ReadVisitor& visitor));
template <class T>
T* sto_ReadPointer(cls_MementoRead* memento) {
  return static_cast<T*>(
      sto_ReadSharedWith(memento, [](const cls_ReadVisitor& v) -> void* { return new T(v); }));
}
template <class T>
T* sto_ReadPointer(const cls_ReadVisitor& visitor, const cls_FieldHandle& field) {
  return sto_ReadPointer<T>(visitor.MakeReadObj(field));
}

class VRKLNU_EXPORT sto_Store : public mem_AllocationOperators {
 public:
  // A store in memory.
  explicit sto_Store(const cls_ClassRegistrar* registrar = nullptr);
  // A store in a multisection file, opened for update (made empty if it doesn't exist), whose
  // lock it holds while it lives.
  explicit sto_Store(const cow_String& path, const cls_ClassRegistrar* registrar = nullptr);
  sto_Store(const sto_Store&) = delete;
  sto_Store& operator=(const sto_Store&) = delete;
  ~sto_Store();

  // Stores `object` with everything it refers to under `name`, replacing what was there; a
  // file store commits at once.
  template <class T>
  void Save(const cow_String& name, const T& object) {
    Put(name, sto_Encode(object, m_Registrar));
  }
  sto_Object Load(const cow_String& name) const { return sto_Decode(Get(name), m_Registrar); }
  template <class T>
  T LoadValue(const cow_String& name) const {
    return sto_DecodeValue<T>(Get(name), m_Registrar);
  }

  // The names stored, in the order they were first saved.
  const cow_List<cow_String>& Names() const { return m_Names; }
  bool Has(const cow_String& name) const;
  // The bytes of a graph, and stores such bytes under a name.
  cow_String Get(const cow_String& name) const;
  void Put(const cow_String& name, const cow_String& bytes);

 private:
  int Find(const cow_String& name) const;

  const cls_ClassRegistrar* m_Registrar;
  utl_MultisectionFile* m_File = nullptr;
  cow_List<cow_String> m_Names;
  cow_List<cow_String> m_Graphs;  // in memory only
};

#endif  // STO_STORE_H
