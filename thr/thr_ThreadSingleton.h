// The thread singleton: one object of a class per thread, made at the thread's first
// Instance and destroyed by the thread's finalization (thr_ThrSingletonRegistry) or by
// Finalize in that thread. A class becomes one by deriving from the template, giving its
// destruct level to the base (0 when it gives none):
//
//   class Scratch : public thr_ThreadSingleton<Scratch> {
//     friend class thr_ThreadSingletonBase<Scratch>;  // makes and destroys the object
//     Scratch() : thr_ThreadSingleton<Scratch>(5) {}
//   };
//   Scratch::Instance().Use();    // this thread's object
//
// The objects live in a thread-local slot, allocated when the first object of the class
// comes into being in any thread and freed when the last one goes; a count of live
// objects over all threads tells when. Instance and Finalize concern only the calling
// thread's object and may be called from any thread. The object is the thread's as soon as
// its base is built, so a constructor that asks for Instance gets the object under way.
// A constructor that throws leaves no object behind.
//
// A class exported from the library declares the base's instantiation, where the slot
// lives, as exported (`extern template class VRKLNU_EXPORT thr_ThreadSingletonBase<Scratch>;`)
// and instantiates it in its source, so that the library and its clients share one slot.
#ifndef THR_THREADSINGLETON_H
#define THR_THREADSINGLETON_H

#include <atomic>
#include <cstdlib>

#include "VRKBasExport.h"
#include "mem_Alloc.h"
#include "thr_ThrSingletonRegistry.h"

// The per-class state of thread singletons: the thread-local slot's index (-1 while there
// is none) and the count of live objects.
class VRKLNU_EXPORT thr_ThreadLocalSlot {
 public:
  constexpr thr_ThreadLocalSlot() = default;
  thr_ThreadLocalSlot(const thr_ThreadLocalSlot&) = delete;
  thr_ThreadLocalSlot& operator=(const thr_ThreadLocalSlot&) = delete;

  // The calling thread's object, null when there is none.
  void* Get() const;
  // Counts a new object and makes it the calling thread's, allocating the slot for the
  // first one under thr_GlobalLock. Raises omi_FatalError when the system has no slot left.
  void Attach(void* object);
  // Clears the calling thread's slot and counts its object out; the last one frees the
  // slot.
  void Detach();

  int Index() const { return m_Index.load(std::memory_order_relaxed); }
  int LiveCount() const { return m_Live.load(std::memory_order_acquire); }

 private:
  std::atomic<int> m_Index{-1};
  std::atomic<int> m_Live{0};
};

template <class T>
class thr_ThreadSingletonBase : public mem_AllocationOperators {
 public:
  thr_ThreadSingletonBase(const thr_ThreadSingletonBase&) = delete;
  thr_ThreadSingletonBase& operator=(const thr_ThreadSingletonBase&) = delete;

  // Destroys the calling thread's object; 1 when there was one, 0 otherwise. This is the
  // finalizer that the registry calls.
  static int Finalize() {
    T* object = Instance();
    if (object == nullptr) return 0;
    delete object;
    s_Slot.Detach();
    return 1;
  }

  // The slot's index, -1 while no object of the class lives.
  static int TlsIndex() { return s_Slot.Index(); }
  // Objects of the class alive in all threads.
  static int LiveCount() { return s_Slot.LiveCount(); }

 protected:
  explicit thr_ThreadSingletonBase(thr_ThreadObjectDestructLevel level) {
    s_Slot.Attach(this);
    thr_ThrSingletonRegistry::Instance().SetDestructLevel(&Finalize, level);
  }

  // The calling thread's object, null when there is none.
  static T* Instance() {
    return static_cast<T*>(static_cast<thr_ThreadSingletonBase*>(s_Slot.Get()));
  }

  // Makes the calling thread's object.
  static T& Make() {
    thr_ThrSingletonRegistry::Instance().Register(&Finalize);
    T* made;
    try {
      made = new T;
    } catch (...) {
      // A constructor that failed after the base had recorded the object.
      if (Instance()) s_Slot.Detach();
      throw;
    }
    if (made != Instance()) std::abort();
    return *made;
  }

 private:
  static thr_ThreadLocalSlot s_Slot;
};

template <class T>
thr_ThreadLocalSlot thr_ThreadSingletonBase<T>::s_Slot;

template <class T>
class thr_ThreadSingleton : public thr_ThreadSingletonBase<T> {
 public:
  // The calling thread's object, made if there is none.
  static T& Instance() {
    T* existing = thr_ThreadSingletonBase<T>::Instance();
    return existing ? *existing : thr_ThreadSingletonBase<T>::Make();
  }

 protected:
  explicit thr_ThreadSingleton(thr_ThreadObjectDestructLevel level = 0)
      : thr_ThreadSingletonBase<T>(level) {}
};

#endif  // THR_THREADSINGLETON_H
