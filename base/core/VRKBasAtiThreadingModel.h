// The abstract threading types of the base layer and the model that holds the factory of
// their real implementations. The thread package installs its factory at start and removes
// it at stop; while it is up, code of the lower layers makes its mutexes, conditions,
// barriers and atomics through it.
//
//   VRKBasAtiMutex* lock = VRKBasAtiThreadingModel::getBehavior()->NewMutex();
//   lock->Lock(); ...; lock->Unlock();
//   delete lock;
//
// Every class here ends its slot list with id(), a small number naming the implementation.
#ifndef VRKBASATITHREADINGMODEL_H
#define VRKBASATITHREADINGMODEL_H

#include "VRKBasExport.h"
#include "VRKBasModel.h"
#include "mem_Alloc.h"

class VRKLNU_EXPORT VRKBasAtiMutex : public mem_AllocationOperators {
 public:
  virtual ~VRKBasAtiMutex();
  virtual void Lock() = 0;
  virtual void Unlock() = 0;
  // 1 when the lock was taken, 0 when it wasn't.
  virtual int TryLock() = 0;
  virtual int id() const = 0;
};

class VRKLNU_EXPORT VRKBasAtiCondVar : public mem_AllocationOperators {
 public:
  virtual ~VRKBasAtiCondVar();
  virtual void Lock() = 0;
  virtual void Unlock() = 0;
  // Entered with the lock held; waits for a Signal (0 seconds: without limit).
  virtual void WaitForSignal(int seconds) = 0;
  virtual void Signal() = 0;
  virtual int id() const = 0;
};

class VRKLNU_EXPORT VRKBasAtiBarrier : public mem_AllocationOperators {
 public:
  virtual ~VRKBasAtiBarrier();
  // Returns when `count` threads have arrived.
  virtual void BarrierSync(unsigned int count) = 0;
  virtual int id() const = 0;
};

// An arithmetic value shared between threads. This base is unguarded: its operations are
// right for one thread only. The thread package overrides them with guarded ones. Every
// operation returns the new value, the postfix forms included.
template <class T>
class VRKBasAtiAtomicTemplate : public mem_AllocationOperators {
 public:
  explicit VRKBasAtiAtomicTemplate(T value) : m_Value(value) {}
  VRKBasAtiAtomicTemplate(const VRKBasAtiAtomicTemplate&) = delete;
  virtual ~VRKBasAtiAtomicTemplate() {}

  virtual VRKBasAtiAtomicTemplate& operator=(T value) {
    m_Value = value;
    return *this;
  }
  virtual T Add(T value) { return m_Value += value; }
  virtual T Subtract(T value) { return m_Value -= value; }
  virtual T operator++() { return Add(1); }
  virtual T operator--() { return Subtract(1); }
  virtual T operator++(int) { return Add(1); }
  virtual T operator--(int) { return Subtract(1); }
  virtual T operator+=(T value) { return Add(value); }
  virtual T operator-=(T value) { return Subtract(value); }
  virtual T Read() const { return m_Value; }
  virtual int id() const { return 0; }

 protected:
  T m_Value;
};

extern template class VRKLNU_EXPORT VRKBasAtiAtomicTemplate<int>;
extern template class VRKLNU_EXPORT VRKBasAtiAtomicTemplate<double>;
extern template class VRKLNU_EXPORT VRKBasAtiAtomicTemplate<unsigned long long>;

// Work for a thread: the thread calls Run with its slot number, then deletes the task.
class VRKLNU_EXPORT VRKBasAtiThreadTask : public mem_AllocationOperators {
 public:
  virtual ~VRKBasAtiThreadTask();
  virtual void Run(int slot) = 0;
};

// Makes the threading primitives. The slot order is fixed: clients of the lower layers
// call through it.
class VRKLNU_EXPORT VRKBasAtiThreadFactory : public mem_AllocationOperators {
 public:
  virtual ~VRKBasAtiThreadFactory();
  virtual VRKBasAtiAtomicTemplate<int>* NewAtomic(int value) = 0;
  virtual VRKBasAtiMutex* NewMutex() = 0;
  virtual VRKBasAtiCondVar* NewCondVar() = 0;
  virtual VRKBasAtiBarrier* NewBarrier() = 0;
  virtual void MemoryBarrier() = 0;
  virtual void WriteMemoryBarrier() = 0;
  virtual void ReadMemoryBarrier() = 0;
  // A mutex, and a condition, already locked by the calling thread.
  virtual VRKBasAtiMutex* NewLockedMutex() = 0;
  virtual VRKBasAtiCondVar* NewLockedCondVar() = 0;
  // The name of the threading model, in a 30-byte block from mem_Calloc that the caller
  // frees with mem_Free.
  virtual char* AsString();
  // Brings primitives made before the factory was installed up to it; nothing by default.
  virtual void UpgradeAllIssuedPrimitives();
  virtual VRKBasAtiAtomicTemplate<double>* NewAtomicDouble(double value) = 0;
  virtual VRKBasAtiAtomicTemplate<unsigned long long>* NewAtomicUInt64(
      unsigned long long value) = 0;
  // Construct in storage given by the caller (large enough for the implementation's
  // object); a null address gives null.
  virtual VRKBasAtiMutex* ConstructMutex(void* storage) = 0;
  virtual VRKBasAtiCondVar* ConstructCondVar(void* storage) = 0;
  virtual VRKBasAtiBarrier* ConstructBarrier(void* storage) = 0;
  // A number naming the kind of threading.
  virtual int ThreadingKind() const = 0;

 protected:
  // A copy of `name` in a 30-byte block from mem_Calloc, as AsString returns it.
  static char* NameBlock(const char* name);
};

template <>
VRKLNU_EXPORT std::atomic<VRKBasAtiThreadFactory*> VRKBasModel<VRKBasAtiThreadFactory>::s_Factory;

class VRKLNU_EXPORT VRKBasAtiThreadingModel : public VRKBasModel<VRKBasAtiThreadFactory> {};

#endif  // VRKBASATITHREADINGMODEL_H
