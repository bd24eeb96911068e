#include "cls_AgentProxy.h"

cls_AgentProxy::~cls_AgentProxy() = default;

bool cls_AgentProxy::Transfer(const cls_StorageTypeId&, cls_MementoWrite*, const cls_FieldHandle&) {
  return false;
}
