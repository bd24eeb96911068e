// A model: the static holder of one behaviour object, the factory through which the lower
// layers reach the library above them. The three models derive from it:
//
//   class VRKBasExceptionModel : public VRKBasModel<VRKBasExceptionFactory> { ... };
//   VRKBasExceptionModel::setBehavior(factory);   // null withdraws it
//
// The model does not own the factory: whoever installs one keeps it valid until it is
// replaced. Installing and reading are safe from any thread.
#ifndef VRKBASMODEL_H
#define VRKBASMODEL_H

#include <atomic>

template <class Factory>
class VRKBasModel {
 public:
  // Stores the factory; null withdraws it. Returns true.
  static bool setBehavior(Factory* factory) {
    s_Factory.store(factory);
    return true;
  }
  // The factory installed, null while there is none.
  static Factory* getBehavior() { return s_Factory.load(); }

 private:
  // Defined once, in the library of the model that uses it.
  static std::atomic<Factory*> s_Factory;
};

#endif  // VRKBASMODEL_H
