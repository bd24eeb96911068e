// The global singleton: one object of a class for the whole process, made at the first
// Instance from whichever thread comes first. A class becomes one by deriving from the
// template:
//
//   class Tracker : public thr_GlobalSingleton<Tracker> {
//     friend class thr_GlobalSingletonBase<Tracker>;  // makes and destroys the object
//     Tracker();
//     ~Tracker();
//   };
//   Tracker::Instance().Count();        // any thread
//   Tracker::Finalize();                // the next Instance makes a new one
//
// Instance is double-checked: a look without lock, then under the class's guard, a mutex
// that is itself made on demand under thr_GlobalLock. The object is published to the
// unlocked look only once its constructor has finished. Finalize must not run while
// another thread is in Instance or uses the object. Should the object's constructor ask
// for Instance, which would make a second object, Instance aborts.
//
// A class exported from the library declares the base's instantiation, where the object's
// pointer and guard live, as exported
// (`extern template class VRKLNU_EXPORT thr_GlobalSingletonBase<Tracker>;`) and instantiates
// it in its source, so that the library and its clients share one object.
#ifndef THR_GLOBALSINGLETON_H
#define THR_GLOBALSINGLETON_H

#include <atomic>
#include <cstdlib>

#include "mem_Alloc.h"
#include "thr_GlobalLock.h"
#include "thr_Mutex.h"

template <class T>
class thr_GlobalSingletonBase : public mem_AllocationOperators {
 public:
  thr_GlobalSingletonBase(const thr_GlobalSingletonBase&) = delete;
  thr_GlobalSingletonBase& operator=(const thr_GlobalSingletonBase&) = delete;

  // Destroys the object, if there is one, and its guard.
  static void Finalize();

 protected:
  thr_GlobalSingletonBase() { s_Made = this; }

  // The object, null while there is none.
  static T* Instance() { return static_cast<T*>(s_Instance.load(std::memory_order_acquire)); }
  // The guard, made if there is none.
  static thr_Mutex& Guard();
  // Makes the object under the guard, unless another thread was first.
  static T& Make();

 private:
  static std::atomic<thr_GlobalSingletonBase*> s_Instance;
  // Recorded by the object's constructor; read and written under the guard.
  static thr_GlobalSingletonBase* s_Made;
  static std::atomic<thr_Mutex*> s_Guard;
};

template <class T>
std::atomic<thr_GlobalSingletonBase<T>*> thr_GlobalSingletonBase<T>::s_Instance{nullptr};
template <class T>
thr_GlobalSingletonBase<T>* thr_GlobalSingletonBase<T>::s_Made = nullptr;
template <class T>
std::atomic<thr_Mutex*> thr_GlobalSingletonBase<T>::s_Guard{nullptr};

template <class T>
void thr_GlobalSingletonBase<T>::Finalize() {
  T* object = Instance();
  if (object == nullptr) return;
  thr_Mutex* guard = s_Guard.load(std::memory_order_acquire);
  guard->Lock();
  delete object;
  s_Instance.store(nullptr, std::memory_order_release);
  s_Made = nullptr;
  thr_GlobalLock& global = thr_GlobalLock::Instance();
  global.Lock();
  guard->Unlock();
  delete guard;
  s_Guard.store(nullptr, std::memory_order_release);
  global.Unlock();
}

template <class T>
thr_Mutex& thr_GlobalSingletonBase<T>::Guard() {
  thr_Hold<thr_GlobalLock> hold(thr_GlobalLock::Instance());
  thr_Mutex* guard = s_Guard.load(std::memory_order_acquire);
  if (guard == nullptr) {
    guard = new thr_Mutex;
    s_Guard.store(guard, std::memory_order_release);
  }
  return *guard;
}

template <class T>
T& thr_GlobalSingletonBase<T>::Make() {
  thr_Hold<thr_Mutex> hold(Guard());
  if (T* existing = Instance()) return *existing;
  // The guard is the owner's again: only the constructor, asking for its own object, can
  // find one under way.
  if (s_Made != nullptr) std::abort();
  T* made;
  try {
    made = new T;
  } catch (...) {
    s_Made = nullptr;
    throw;
  }
  s_Instance.store(made, std::memory_order_release);
  return *made;
}

template <class T>
class thr_GlobalSingleton : public thr_GlobalSingletonBase<T> {
 public:
  // The object, made if there is none.
  static T& Instance() {
    T* existing = thr_GlobalSingletonBase<T>::Instance();
    return existing ? *existing : thr_GlobalSingletonBase<T>::Make();
  }
};

#endif  // THR_GLOBALSINGLETON_H
