// The key of one version of a persistent class: its class identifier and its version.
// Keys order by identifier (unsigned), then by version (signed), so that the versions of a
// class lie together, oldest first:
//
//   omi_Btree<cls_CIDVersion, cls_ClassMetadataHld> versions;
//   versions.Insert(cls_CIDVersion(0x1F0002, 800), metadata);
#ifndef CLS_CIDVERSION_H
#define CLS_CIDVERSION_H

#include "mem_Alloc.h"
#include "omi_Btree.h"

class cls_CIDVersion : public mem_AllocationOperators {
 public:
  cls_CIDVersion() = default;
  cls_CIDVersion(unsigned classId, int version) : m_ClassId(classId), m_Version(version) {}

  unsigned ClassId() const { return m_ClassId; }
  int Version() const { return m_Version; }

  // -1, 0 or 1 as this key lies before, at or after `other`.
  int Compare(const cls_CIDVersion& other) const {
    if (m_ClassId != other.m_ClassId) return m_ClassId < other.m_ClassId ? -1 : 1;
    if (m_Version != other.m_Version) return m_Version < other.m_Version ? -1 : 1;
    return 0;
  }
  bool operator==(const cls_CIDVersion& other) const { return Compare(other) == 0; }
  bool operator<(const cls_CIDVersion& other) const { return Compare(other) < 0; }

 private:
  unsigned m_ClassId = 0;
  int m_Version = 0;
};

template <>
struct omi_BtreeKey<cls_CIDVersion> {
  static int Compare(const cls_CIDVersion& sought, const cls_CIDVersion& node) {
    return sought.Compare(node);
  }
};

#endif  // CLS_CIDVERSION_H
