#include "cls_AgentBlob.h"

cls_AgentBlob::~cls_AgentBlob() = default;

bool cls_AgentBlob::NeedsDeletion() const {
  return true;
}
