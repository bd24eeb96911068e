// An arithmetic value shared between threads, for int, double and unsigned 64-bit values.
//
//   thr_AtomicType<int> done(0);
//   ++done;                        // from any thread; returns the new value
//   int now = done.Read();
//
// Every change takes the value's mutex and returns the new value; the postfix operators
// return the new value as well, like the prefix ones. Assignment and Read take no lock:
// they see the value whole, as it stands at that moment.
#ifndef THR_ATOMICTYPE_H
#define THR_ATOMICTYPE_H

#include <atomic>

#include "VRKBasAtiThreadingModel.h"
#include "VRKBasExport.h"
#include "thr_Mutex.h"

template <class T>
class thr_AtomicType : public VRKBasAtiAtomicTemplate<T> {
 public:
  explicit thr_AtomicType(T initial) : VRKBasAtiAtomicTemplate<T>(initial), m_Shared(initial) {}

  thr_AtomicType& operator=(T value) override {
    m_Shared.store(value, std::memory_order_relaxed);
    return *this;
  }
  T Add(T value) override { return Change(value, true); }
  T Subtract(T value) override { return Change(value, false); }
  T operator++() override { return Change(1, true); }
  T operator--() override { return Change(1, false); }
  T operator++(int) override { return Change(1, true); }
  T operator--(int) override { return Change(1, false); }
  T operator+=(T value) override { return Change(value, true); }
  T operator-=(T value) override { return Change(value, false); }
  T Read() const override { return m_Shared.load(std::memory_order_relaxed); }
  int id() const override { return 407; }

 private:
  T Change(T value, bool add) {
    m_Lock.Lock();
    const T was = m_Shared.load(std::memory_order_relaxed);
    const T now = add ? was + value : was - value;
    m_Shared.store(now, std::memory_order_relaxed);
    m_Lock.Unlock();
    return now;
  }

  thr_Mutex m_Lock;
  // Read and assigned without the lock.
  std::atomic<T> m_Shared;
};

extern template class VRKLNU_EXPORT thr_AtomicType<int>;
extern template class VRKLNU_EXPORT thr_AtomicType<double>;
extern template class VRKLNU_EXPORT thr_AtomicType<unsigned long long>;

#endif  // THR_ATOMICTYPE_H
