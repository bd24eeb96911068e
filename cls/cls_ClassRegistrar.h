// The register of persistent classes: every declared version of every class, the newest
// version of each, and class identifiers by name. Classes declare themselves at package
// start through registration functions (see cls_MetadataRegistrar); stores then ask which
// versions exist and rebuild objects through the metadata's Ctor:
//
//   registrar.CreateClassMD("Shape", kShapeId, 800, nullptr, 1)
//       .AddAttribute(cls_FieldHandle(0, "m_Sides"), cls_AttrInt, 1, cls_CollNone);
//   int newest = registrar.GetLastClassVersionNumber(kShapeId);
//
// A registration of a (class, version) pair already present keeps the first metadata and
// returns it; with the environment variable LUNARA_SITE set the repeat is reported on
// standard error, otherwise it is silent on purpose.
//
// Failures: a look-up miss returns an empty handle (or 0, or -1). ConstGet, GetClassMetadata
// and GetClassID first run a failure hook, which package nex installs to raise its
// nex_TextException. Registration is for start-up, on one thread; look-ups are reads and
// may then run on any thread, except GetMDList and GetHistoryMDList, whose copies of the
// shared metadata change its plain use counts.
#ifndef CLS_CLASSREGISTRAR_H
#define CLS_CLASSREGISTRAR_H

#include "VRKBasExport.h"
#include "VRKBasSharedContainers.h"
#include "cls_CIDVersion.h"
#include "cls_ClassMetadata.h"
#include "mem_Alloc.h"
#include "omi_Btree.h"

class cls_ClassRegistrar;

// Failure hooks: each runs the registrar's presence test and returns 1 when it passes;
// otherwise it raises.
typedef int (*cls_ClassPresentHook)(const cls_ClassRegistrar& registrar, unsigned classId);
typedef int (*cls_VersionPresentHook)(const cls_ClassRegistrar& registrar, unsigned classId,
                                      int version);
typedef int (*cls_ClassNameHook)(const cls_ClassRegistrar& registrar, const cow_String& name);

class VRKLNU_EXPORT cls_ClassRegistrar : public mem_AllocationOperators {
 public:
  cls_ClassRegistrar();
  cls_ClassRegistrar(const cls_ClassRegistrar&) = delete;
  cls_ClassRegistrar& operator=(const cls_ClassRegistrar&) = delete;
  ~cls_ClassRegistrar();

  // Builds metadata for (classId, version) and registers it; returns the metadata that
  // stands for the pair, which is the first one registered.
  cls_ClassMetadata& CreateClassMD(const cow_String& name, unsigned classId, int version,
                                   cls_CtorFunction ctor, unsigned baseClassId);
  // The same for a ready object, normally an adapter; the registrar takes it over.
  cls_ClassMetadata& AddClassMD(cls_ClassMetadata* metadata);

  // Presence tests; they run no hook.
  bool ClassIsPresent(const unsigned& classId) const { return m_Newest.IsMember(classId); }
  bool ClassVersionIsPresent(unsigned classId, int version) const {
    return m_Versions.IsMember(cls_CIDVersion(classId, version));
  }
  bool ClassNameIsPresent(const cow_String& name) const { return m_IdByName.IsMember(name); }

  // The newest metadata of the class; empty on a miss.
  const cls_ClassMetadataHld& ConstGet(const unsigned& classId) const;
  // The metadata of that version; empty on a miss.
  const cls_ClassMetadataHld& GetClassMetadata(unsigned classId, int version) const;
  // The identifier of the class name; 0 on a miss.
  unsigned GetClassID(const cow_String& name) const;

  // The newest version of the class (runs the ConstGet hook); -1 on a miss.
  int GetLastClassVersionNumber(const unsigned& classId) const;
  // The smallest registered version not below `version`, or -1.
  int GetFirstClassVersionNumberGREQ(const unsigned& classId, int version) const;
  // The largest registered version below `version`, or -1.
  int GetPreviousClassVersionNumber(const unsigned& classId, int version) const;

  // Whether `base` is `derived` or lies on its chain of registered base classes.
  bool InheritanceCheck(const unsigned& derived, const unsigned& base) const;
  // Releases a shared value of the class through the cow-delete function of the class or of
  // its nearest base class that has one; false when none has (always for class 1).
  bool DeleteCow(unsigned classId, cow_COW<int, cow_Direct<int>>* cow) const;
  // Adds the name for the identifier unless the name is known. It removes nothing.
  void DeleteClass(const cow_String& name, unsigned classId);

  // The newest metadata of each class, by identifier; and every version, by (identifier,
  // version).
  cow_List<cls_ClassMetadataHld> GetMDList() const;
  cow_List<cls_ClassMetadataHld> GetHistoryMDList() const;

  // Installs the failure hooks for all registrars; null removes one.
  static void SetFailureHooks(cls_ClassPresentHook classPresent,
                              cls_VersionPresentHook versionPresent, cls_ClassNameHook className);

 private:
  // The best of the registered versions of the class that `qualifies`: the first found,
  // replaced by each one that is `better` than the best so far. -1 when none qualifies;
  // versions are signed, so a version -1 is found like any other.
  template <class Qualifies, class Better>
  int PickVersion(unsigned classId, Qualifies qualifies, Better better) const;

  omi_Btree<unsigned, cls_ClassMetadataHld> m_Newest;
  omi_Btree<cls_CIDVersion, cls_ClassMetadataHld> m_Versions;
  cow_Btree<cow_String, unsigned> m_IdByName;
};

// What a store's memento does in CheckCollectionType: compares the tag of the collection
// written in `fieldName` with the tag that class `classId` declares for it
// (cls_CollectionsMatch) and prints on standard error when they differ or when the class is
// not registered (a null registrar registers nothing). The write goes on either way.
VRKLNU_EXPORT void cls_CheckCollectionType(const cls_ClassRegistrar* registrar, unsigned classId,
                                           cls_CollectionType tag, const cow_String& fieldName);

#endif  // CLS_CLASSREGISTRAR_H
