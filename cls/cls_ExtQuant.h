// Named extent sizes for stores, which an environment may override: the size an array asks
// its store to grow a list by (the extent quantum of cls_AgentListPrim) and the table extent
// quantum of a class (cls_ClassMetadata::AddTableExtentQuantum). What a size means for a
// store's layout is the store's business.
//
//   int quantum = cls_ExtQuant::Instance().ExtentQuantumConstLarge();   // 2048 by default
//
// Overrides are off unless the environment variable EXTENT_QUANTUM_OVERRIDE is set (to any
// value). Then the variable of a name (EXTENT_QUANTUM_TINY ...) gives its size, read with
// atoi; an unset variable or a value below 1 gives the default. The first look-up on a
// thread decides whether overrides are on and prints "***** EXTENT_QUANTUM_OVERRIDE
// activated." if they are; each name resolved then prints "***** <name> = <size>" once, on
// standard output. A value once resolved stays for the thread.
//
// A thread singleton: each thread decides and resolves for itself, so the lines print once
// per thread. Destroyed with the thread's singletons, or by the stop of package cls for the
// thread that stops it.
#ifndef CLS_EXTQUANT_H
#define CLS_EXTQUANT_H

#include "VRKBasExport.h"
#include "VRKBasSharedContainers.h"
#include "thr_ThreadSingleton.h"

class cls_ExtQuant;
extern template class VRKLNU_EXPORT thr_ThreadSingletonBase<cls_ExtQuant>;

class VRKLNU_EXPORT cls_ExtQuant : public thr_ThreadSingleton<cls_ExtQuant> {
 public:
  // The size called `name`: the override when overrides are on, else `otherwise`.
  int ExtentQuantum(const cow_String& name, int otherwise);

  int ExtentQuantumConstTiny() { return ExtentQuantum("EXTENT_QUANTUM_TINY", 4); }
  int ExtentQuantumConstSmall() { return ExtentQuantum("EXTENT_QUANTUM_SMALL", 512); }
  int ExtentQuantumConstMedium() { return ExtentQuantum("EXTENT_QUANTUM_MEDIUM", 1024); }
  int ExtentQuantumConstLarge() { return ExtentQuantum("EXTENT_QUANTUM_LARGE", 2048); }
  int ExtentQuantumConstHuge() { return ExtentQuantum("EXTENT_QUANTUM_HUGE", 4096); }

 private:
  friend class thr_ThreadSingletonBase<cls_ExtQuant>;
  enum State { kOff = 0, kOverride = 1, kUndecided = 2 };

  cls_ExtQuant() = default;
  ~cls_ExtQuant() = default;

  int m_State = kUndecided;
  cow_Btree<cow_String, int> m_Resolved;
};

#endif  // CLS_EXTQUANT_H
