// The store's agent for one stored list of values, on which the persistent arrays
// (cls_ArrayPrim, cls_2dArrayPrim, cls_SimpleArrayPrim) page their elements in and out. A
// memento hands it out (MakeAgentList); unlike a cursor it outlives the memento and gives
// random access to a sequence that may be far larger than memory.
//
// Ownership: an agent is counted. It comes from the store with a count of 0; each array that
// attaches calls AddRef and Link(itself), and on leaving calls Release, then RefCount, and
// when that is 0 flushes its blocks, deletes the agent and forgets it. Link puts the array in
// the agent's ring of owners (cls_PC), so that a store can reach every array that shares it.
//
// Everything is abstract: the store implements it. Indices and counts are in elements; a
// Read past the end reads what there is. Store exceptions pass through. An agent and the
// arrays sharing it belong to one thread at a time.
#ifndef CLS_AGENTLISTPRIM_H
#define CLS_AGENTLISTPRIM_H

#include "VRKBasExport.h"
#include "cow_String.h"
#include "mem_Alloc.h"

class cls_PC;

template <class T>
class cls_AgentListPrim : public mem_AllocationOperators {
 public:
  virtual ~cls_AgentListPrim() {}
  // The number of stored elements.
  virtual int Size() const = 0;
  // The extent size the agent was made with.
  virtual int ExtentQuantum() const = 0;
  // Non-zero when the stored contents changed since the last call; owners must then drop
  // the blocks they hold.
  virtual int Refresh() = 0;
  // Completes pending writes.
  virtual void Flush() = 0;
  // Stores `count` elements from `values` at `index`, extending the list when they reach past
  // its end.
  virtual void Write(int index, int count, const T* values) = 0;
  // Reads up to `count` elements at `index` into `values`; returns the number read.
  virtual int Read(int index, int count, T* values) = 0;
  virtual void AddRef() = 0;
  virtual void Release() = 0;
  // The count after the last Release; 0 means that the last owner left.
  virtual int RefCount() const = 0;
  // Non-zero: the list can't be written, and owners skip flushing.
  virtual int IsReadOnly() const = 0;
  // Adds `owner` to the agent's ring of owners.
  virtual void Link(cls_PC* owner) = 0;
};

extern template class VRKLNU_EXPORT cls_AgentListPrim<bool>;
extern template class VRKLNU_EXPORT cls_AgentListPrim<int>;
extern template class VRKLNU_EXPORT cls_AgentListPrim<unsigned>;
extern template class VRKLNU_EXPORT cls_AgentListPrim<float>;
extern template class VRKLNU_EXPORT cls_AgentListPrim<double>;
extern template class VRKLNU_EXPORT cls_AgentListPrim<cow_String>;

#endif  // CLS_AGENTLISTPRIM_H
