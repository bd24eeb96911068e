// The plain singleton: one object of a class, made at the first Instance and destroyed by
// Finalize. There is no lock, so the first Instance must come from start-up code, before
// other threads can ask for it. A class becomes one by deriving from the template:
//
//   class Catalog : public omi_Singleton<Catalog> {
//     friend class omi_SingletonBase<Catalog>;  // makes and destroys the object
//     Catalog();
//     ~Catalog();
//   };
//   Catalog::Instance().Add(...);
//   Catalog::Finalize();              // at stop; the next Instance makes a new one
//
// The object's own constructor records it; should Instance then find another object
// recorded, it aborts. A constructor that throws leaves no object behind.
//
// A class exported from the library declares the base's instantiation, where the object's
// pointer lives, as exported (`extern template class VRKLNU_EXPORT omi_SingletonBase<Catalog>;`)
// and instantiates it in its source, so that the library and its clients share one pointer.
#ifndef OMI_SINGLETON_H
#define OMI_SINGLETON_H

#include <atomic>
#include <cstdlib>

#include "mem_Alloc.h"

template <class T>
class omi_SingletonBase : public mem_AllocationOperators {
 public:
  omi_SingletonBase(const omi_SingletonBase&) = delete;
  omi_SingletonBase& operator=(const omi_SingletonBase&) = delete;

  // Destroys the object, if there is one.
  static void Finalize() {
    T* object = Instance();
    if (object == nullptr) return;
    delete object;
    s_Instance.store(nullptr, std::memory_order_release);
  }

 protected:
  omi_SingletonBase() { s_Instance.store(this, std::memory_order_release); }

  // The object, null while there is none.
  static T* Instance() { return static_cast<T*>(s_Instance.load(std::memory_order_acquire)); }

  // Makes the object.
  static T& Make() {
    T* made;
    try {
      made = new T;
    } catch (...) {
      // The base had recorded the object before the class's own constructor failed.
      s_Instance.store(nullptr, std::memory_order_release);
      throw;
    }
    if (made != Instance()) std::abort();
    return *made;
  }

 private:
  static std::atomic<omi_SingletonBase*> s_Instance;
};

template <class T>
std::atomic<omi_SingletonBase<T>*> omi_SingletonBase<T>::s_Instance{nullptr};

template <class T>
class omi_Singleton : public omi_SingletonBase<T> {
 public:
  // The object, made if there is none.
  static T& Instance() {
    T* existing = omi_SingletonBase<T>::Instance();
    return existing ? *existing : omi_SingletonBase<T>::Make();
  }
};

#endif  // OMI_SINGLETON_H
