#include "cls_AgentRequest.h"

cls_AgentRequest::~cls_AgentRequest() = default;
