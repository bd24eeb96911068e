// A numbered kind of store, handed to cls_AgentProxy::Transfer. Numbers come from one
// process-wide counter, from 1 up:
//
//   static const cls_StorageTypeId kArchive(cls_StorageTypeId::AllocateId());
#ifndef CLS_STORAGETYPEID_H
#define CLS_STORAGETYPEID_H

#include "VRKBasExport.h"

class VRKLNU_EXPORT cls_StorageTypeId {
 public:
  explicit cls_StorageTypeId(int id) : m_Id(id) {}

  int Id() const { return m_Id; }
  bool operator==(const cls_StorageTypeId& other) const { return m_Id == other.m_Id; }

  // The next number; safe from any thread.
  static int AllocateId();

 private:
  int m_Id;
};

#endif  // CLS_STORAGETYPEID_H
