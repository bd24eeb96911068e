// The common base of the persistent arrays (cls_ArrayPrim, cls_2dArrayPrim,
// cls_SimpleArrayPrim): a place in a circular, doubly linked ring. All copies of one array
// that share a store's agent stand in one ring, which the agent keeps (its Link), so that a
// store can reach every array that pages through it, to flush or detach them all.
//
// A lone object points at itself. Destruction leaves the ring. The ring holds no ownership:
// it only links. A class that can stand in a ring overrides Flush and Detach; the base's
// own print why they can't work and call abort, since an object that reaches them is a
// fault of its class. Not for sharing between threads.
#ifndef CLS_PC_H
#define CLS_PC_H

#include "VRKBasExport.h"
#include "mem_Alloc.h"

class VRKLNU_EXPORT cls_PC : public mem_AllocationOperators {
 public:
  cls_PC() { Reset(); }
  // A copy is lone: rings are formed by Link, not by copying.
  cls_PC(const cls_PC&) : cls_PC() {}
  cls_PC& operator=(const cls_PC&) { return *this; }
  virtual ~cls_PC();

  // Writes what the object holds to its store.
  virtual void Flush() const;
  // Lets go of the object's store.
  virtual void Detach();

  // Makes the object lone, whatever ring it was in (which then still points at it).
  void Reset() { m_Next = m_Previous = this; }
  // Leaves the ring and becomes lone.
  void Unlink();
  // Takes `other` out of any ring and puts it directly before this object.
  void Link(cls_PC* other);

  cls_PC* Next() const { return m_Next; }
  cls_PC* Previous() const { return m_Previous; }
  bool IsLone() const { return m_Next == this; }

 private:
  cls_PC* m_Next;
  cls_PC* m_Previous;
};

#endif  // CLS_PC_H
