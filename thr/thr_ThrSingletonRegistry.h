// The registry of thread singletons' finalizers, which destroys a thread's objects in a
// fixed order when the thread ends.
//
//   thr_ThrSingletonRegistry::Instance().FinalizeThread(0);   // before a thread leaves
//
// Each thread's first use of a thread singleton class adds an entry with that class's
// finalizer (see thr_ThreadSingleton.h); the class's constructor then gives its destruct
// level to all of its entries. FinalizeThread calls the finalizers for the calling thread,
// higher levels first and, within a level, later entries first. An entry whose finalizer
// released an object is cleared; the others stay for other threads. Levels 0 and 1 are
// never called: such objects live until their class's Finalize is called by the thread.
//
// Levels in use: thr_ThreadId 30, uti_FormatMap 17, RedirectorMap 16, cls_Static 4,
// cls_ExtQuant 3, cls_UidCatalog 2.
//
// The pool's threads call FinalizeThread as they end; other threads must call it
// themselves. All members are safe to call from any thread. The registry's mutex is held
// while finalizers run, and finalizers take thr_GlobalLock.
#ifndef THR_THRSINGLETONREGISTRY_H
#define THR_THRSINGLETONREGISTRY_H

#include <exception>

#include "VRKBasExport.h"
#include "thr_GlobalSingleton.h"
#include "thr_Mutex.h"

// Destroys the calling thread's object of one class; nonzero when there was one.
typedef int (*thr_ThreadObjectFinalizer)();
// Order of destruction at a thread's end: higher first, 0 and 1 never.
typedef int thr_ThreadObjectDestructLevel;

class thr_ThrSingletonRegistry;
extern template class VRKLNU_EXPORT thr_GlobalSingletonBase<thr_ThrSingletonRegistry>;

class VRKLNU_EXPORT thr_ThrSingletonRegistry
    : public thr_GlobalSingleton<thr_ThrSingletonRegistry> {
 public:
  // Appends an entry at level 0.
  void Register(thr_ThreadObjectFinalizer finalizer);
  // Sets the level of every entry with this finalizer.
  void SetDestructLevel(thr_ThreadObjectFinalizer finalizer, thr_ThreadObjectDestructLevel level);
  // Runs the finalizers for the calling thread; the argument is not used. A finalizer that
  // throws counts as done: the others still run, and the first exception is raised again
  // at the end.
  void FinalizeThread(int unused);
  // FinalizeThread for the calling thread if the registry is up, with a failure reported
  // on aio_cerr instead of raised: for the ends of threads and of the package, where
  // nobody could catch it.
  static void FinalizeCallingThread();

  // Entries, cleared ones included.
  int Count() const { return m_Count; }

 private:
  friend class thr_GlobalSingletonBase<thr_ThrSingletonRegistry>;
  thr_ThrSingletonRegistry() = default;
  ~thr_ThrSingletonRegistry();

  void Grow();
  // Calls entry `index` and clears it when it is done; stores the first failure.
  void CallEntry(int index, std::exception_ptr& failure);

  int m_Capacity = 0;
  int m_Count = 0;
  thr_ThreadObjectFinalizer* m_Finalizers = nullptr;
  int* m_Levels = nullptr;
  thr_Mutex m_Lock;
};

#endif  // THR_THRSINGLETONREGISTRY_H
