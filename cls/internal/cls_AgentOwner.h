// How an array joins and leaves the agent it pages through: an owner counts itself in and
// stands in the agent's ring; the last owner to leave flushes and deletes the agent.
#ifndef CLS_AGENTOWNER_H
#define CLS_AGENTOWNER_H

#include "cls_AgentListPrim.h"
#include "cls_MementoRead.h"
#include "cls_PC.h"
#include "cls_ReadVisitor.h"

// The agent of the stored list that the visitor reads; null with no memento or no list.
template <class T>
cls_AgentListPrim<T>* cls_StoredAgent(const cls_ReadVisitor& visitor) {
  cls_MementoRead* memento = visitor.Memento();
  return memento ? memento->MakeAgentList(T()) : nullptr;
}

template <class T>
void cls_JoinAgent(cls_AgentListPrim<T>* agent, const cls_PC& owner) {
  agent->AddRef();
  agent->Link(const_cast<cls_PC*>(&owner));
}

// Clears `agent`; true when `owner` was the last one, which flushed and deleted it.
template <class T>
bool cls_LeaveAgent(cls_AgentListPrim<T>*& agent, const cls_PC& owner) {
  agent->Release();
  const bool last = agent->RefCount() == 0;
  if (last) {
    owner.Flush();
    delete agent;
  }
  agent = nullptr;
  return last;
}

#endif  // CLS_AGENTOWNER_H
