#include "cls_ClassRegistrar.h"

#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <functional>

namespace {

std::atomic<cls_ClassPresentHook> classPresentHook{nullptr};
std::atomic<cls_VersionPresentHook> versionPresentHook{nullptr};
std::atomic<cls_ClassNameHook> classNameHook{nullptr};

constexpr unsigned kNoClass = 1;

template <class K>
cow_List<cls_ClassMetadataHld> ListValues(const omi_Btree<K, cls_ClassMetadataHld>& tree) {
  cow_List<cls_ClassMetadataHld> list;
  for (omi_BtreeIterator<K, cls_ClassMetadataHld> it(tree); !it.IsDone(); it.Next()) {
    list.Append(it.CurrentValue());
  }
  return list;
}

}  // namespace

cls_ClassRegistrar::cls_ClassRegistrar() = default;

cls_ClassRegistrar::~cls_ClassRegistrar() = default;

void cls_ClassRegistrar::SetFailureHooks(cls_ClassPresentHook classPresent,
                                         cls_VersionPresentHook versionPresent,
                                         cls_ClassNameHook className) {
  classPresentHook.store(classPresent, std::memory_order_relaxed);
  versionPresentHook.store(versionPresent, std::memory_order_relaxed);
  classNameHook.store(className, std::memory_order_relaxed);
}

cls_ClassMetadata& cls_ClassRegistrar::CreateClassMD(const cow_String& name, unsigned classId,
                                                     int version, cls_CtorFunction ctor,
                                                     unsigned baseClassId) {
  return AddClassMD(new cls_ClassMetadata(name, classId, version, ctor, baseClassId));
}

cls_ClassMetadata& cls_ClassRegistrar::AddClassMD(cls_ClassMetadata* metadata) {
  const cls_ClassMetadataHld handle(metadata);
  const unsigned classId = metadata->ClassId();
  const cls_CIDVersion key(classId, metadata->Version());
  if (!m_Versions.Insert(key, handle) && std::getenv("LUNARA_SITE") != nullptr) {
    std::fprintf(stderr,
                 "WARNING: Metadata for class %s version %d has been initialized more than once.\n",
                 metadata->Name().c_str(), metadata->Version());
  }
  if (!m_Newest.IsMember(classId)) {
    m_Newest.Insert(classId, handle);
    m_IdByName.InsertUnlessMember(metadata->Name(), classId);
  } else if (metadata->Version() > m_Newest.ConstFind(classId).GetRef().Version()) {
    m_Newest.Remove(classId);
    m_Newest.Insert(classId, handle);
  }
  return m_Versions.ConstFind(key).GetRef();
}

const cls_ClassMetadataHld& cls_ClassRegistrar::ConstGet(const unsigned& classId) const {
  if (cls_ClassPresentHook hook = classPresentHook.load(std::memory_order_relaxed)) {
    hook(*this, classId);
  }
  return m_Newest.ConstFind(classId);
}

const cls_ClassMetadataHld& cls_ClassRegistrar::GetClassMetadata(unsigned classId,
                                                                 int version) const {
  if (cls_VersionPresentHook hook = versionPresentHook.load(std::memory_order_relaxed)) {
    hook(*this, classId, version);
  }
  return m_Versions.ConstFind(cls_CIDVersion(classId, version));
}

unsigned cls_ClassRegistrar::GetClassID(const cow_String& name) const {
  if (cls_ClassNameHook hook = classNameHook.load(std::memory_order_relaxed)) hook(*this, name);
  return m_IdByName.ConstFind(name);
}

int cls_ClassRegistrar::GetLastClassVersionNumber(const unsigned& classId) const {
  const cls_ClassMetadataHld& newest = ConstGet(classId);
  return newest.IsEmpty() ? -1 : newest.GetRef().Version();
}

template <class Qualifies, class Better>
int cls_ClassRegistrar::PickVersion(unsigned classId, Qualifies qualifies, Better better) const {
  bool found = false;
  int best = -1;
  for (omi_BtreeIterator<cls_CIDVersion, cls_ClassMetadataHld> it(m_Versions); !it.IsDone();
       it.Next()) {
    const int version = it.CurrentKey().Version();
    if (it.CurrentKey().ClassId() != classId || !qualifies(version)) continue;
    if (!found || better(version, best)) best = version;
    found = true;
  }
  return best;
}

int cls_ClassRegistrar::GetFirstClassVersionNumberGREQ(const unsigned& classId, int version) const {
  return PickVersion(
      classId, [version](int v) { return v >= version; }, std::less<int>());
}

int cls_ClassRegistrar::GetPreviousClassVersionNumber(const unsigned& classId, int version) const {
  return PickVersion(
      classId, [version](int v) { return v < version; }, std::greater<int>());
}

bool cls_ClassRegistrar::InheritanceCheck(const unsigned& derived, const unsigned& base) const {
  if (derived == base) return true;
  for (unsigned current = derived; ClassIsPresent(current);) {
    current = m_Newest.ConstFind(current).GetRef().BaseClassId();
    if (current == base) return true;
  }
  return false;
}

bool cls_ClassRegistrar::DeleteCow(unsigned classId, cow_COW<int, cow_Direct<int>>* cow) const {
  for (unsigned current = classId; current != kNoClass && ClassIsPresent(current);) {
    const cls_ClassMetadata& metadata = m_Newest.ConstFind(current).GetRef();
    if (metadata.HasCowDelete()) return metadata.DeleteCow(cow) != 0;
    current = metadata.BaseClassId();
  }
  return false;
}

void cls_ClassRegistrar::DeleteClass(const cow_String& name, unsigned classId) {
  m_IdByName.InsertUnlessMember(name, classId);
}

cow_List<cls_ClassMetadataHld> cls_ClassRegistrar::GetMDList() const {
  return ListValues(m_Newest);
}

cow_List<cls_ClassMetadataHld> cls_ClassRegistrar::GetHistoryMDList() const {
  return ListValues(m_Versions);
}

void cls_CheckCollectionType(const cls_ClassRegistrar* registrar, unsigned classId,
                             cls_CollectionType tag, const cow_String& fieldName) {
  if (registrar == nullptr || !registrar->ClassIsPresent(classId)) {
    std::fprintf(stderr, "class not registered  %x \n", classId);
    return;
  }
  const cls_ClassMetadata& metadata = registrar->ConstGet(classId).GetRef();
  const int have = metadata.Attributes().ConstFind(fieldName).Collection();
  if (!cls_CollectionsMatch(have, tag)) {
    std::fprintf(stderr, "Error in collections types have: %d looking for: %d %s\n", have, tag,
                 fieldName.c_str());
  }
}
